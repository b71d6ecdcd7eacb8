// Guarded memory and images: they fault where they should, and no changed byte escapes the comparison.
#include <gtest/gtest.h>

#include "support/digest.h"
#include "support/image.h"

namespace rux::test {
namespace {

void touch(volatile uint8_t* byte)
{
    *byte = *byte;
}

TEST(Guarded, faultsBesideItsPages)
{
    const Guarded atEnd(100, {Edge::end, Place::touching}), atStart(100, {Edge::start, Place::touching});
    touch(atEnd.data());
    touch(atEnd.data() + 99);
    touch(atStart.data() + 99);
    EXPECT_DEATH(touch(atEnd.data() + 100), "");
    EXPECT_DEATH(touch(atStart.data() - 1), "");
}

TEST(Guarded, standsAtItsOffset)
{
    for (Edge edge : {Edge::start, Edge::end}) {
        for (int offset = 0; offset < 64; offset++) {
            for (size_t bytes : {1u, 63u, 4096u, 5000u}) {
                const Guarded memory(bytes, {edge, offset});
                EXPECT_EQ(reinterpret_cast<uintptr_t>(memory.data()) % 64, static_cast<uintptr_t>(offset));
                EXPECT_GE(memory.data(), memory.begin());
                EXPECT_LE(memory.data() + bytes, memory.end());
                if (edge == Edge::end) {
                    EXPECT_LT(memory.end() - memory.data(), static_cast<ptrdiff_t>(bytes) + 64);
                }
            }
        }
    }
}

TEST(Image, findsEveryChangedByte)
{
    const Shape shapes[] = {Shape{7, 3, 3}, Shape{7, 3, 3, 29, {Edge::start, 5}}, Shape{7, 3, 1, -16},
                            Shape{9, 4, 1, 2}, Shape{5, 2}.margins(1, 2, 3, 1).withStep(50)};
    for (const Shape& shape : shapes) {
        const Image<int16_t> image(shape, 11);
        const auto clone = image.clone();
        ASSERT_TRUE(clone.equals(image));
        for (const uint8_t* at = image.memoryBegin(); at < image.memoryEnd(); at++) {
            auto* byte = const_cast<uint8_t*>(at);
            *byte ^= 0x10;
            ASSERT_FALSE(image.equals(clone)) << at - image.memoryBegin();
            *byte ^= 0x10;
        }
        ASSERT_TRUE(clone.equals(image));
    }
}

TEST(Image, tellsWhereTheFirstDifferenceIs)
{
    const Image<int16_t> image(Shape{4, 3, 2, 20, {Edge::start, 8}}, 1);
    const auto clone = image.clone();
    const auto message = [&](ptrdiff_t offset) {
        image.row(0)[offset] ^= 1;
        const std::string text = image.equals(clone).message();
        image.row(0)[offset] ^= 1;
        return text;
    };
    EXPECT_NE(message(2 * 20 + 7).find("x 1, y 2, channel 1, byte 1"), std::string::npos) << message(47);
    EXPECT_NE(message(20 + 16).find("36 bytes from the region's first, in a gap"), std::string::npos) << message(36);
    EXPECT_NE(message(-1).find("1 bytes before the image"), std::string::npos) << message(-1);
    EXPECT_NE(message(2 * 20 + 16).find("1 bytes behind the image's last"), std::string::npos) << message(56);
    EXPECT_NE(message(0).find("seed 1"), std::string::npos);
}

TEST(Image, hasItsLastByteAtTheEdge)
{
    const Image<uint8_t> end(Shape{5, 3, 3, 19}, 1);
    EXPECT_EQ(end.row(2) + 15, end.memoryEnd());
    const Image<uint8_t> around(Shape{5, 3}.margins(1, 1, 2, 2), 1);
    EXPECT_EQ(around.row(2) + 2 * around.step() + 5 + 2, around.memoryEnd());
    const Image<uint8_t> start(Shape{5, 3, 1, -9, {Edge::start, Place::touching}}, 1);
    EXPECT_EQ(start.row(2), start.memoryBegin());
    EXPECT_EQ(start.row(0), start.memoryBegin() + 18);
}

// Golden digests rest on contents that every build makes alike.
TEST(Image, hasTheSameContentsOnEveryBuild)
{
    Digest digest;
    digest.addMemory(Image<uint8_t>(Shape{50, 5, 3, 157}, 1));
    digest.addMemory(Image<int16_t>(Shape{50, 5, 1, 131}, 2));
    digest.addMemory(Image<float>(Shape{50, 5}, 3));
    digest.addMemory(Image<float>(Shape{50, 5}, 4, ordinary<float>));
    digest.addMemory(Image<int32_t>(Shape{50, 5}, 5, uniform<int32_t>(-7, 9)));
    EXPECT_EQ(digest.value(), 0x12A40FF1DBD942D9u);
}

}
}
