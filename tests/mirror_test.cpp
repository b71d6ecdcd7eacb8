// Mirroring in place about each axis.
#include "model/mirror.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(Mirror, "mirror");

// Each axis in turn, on what the one before has left.
template <class T>
auto mirrors(int channels)
{
    return [=](Case& c, const auto& compare) {
        const auto srcDst = c.image<T>(channels, anyBits<T>);
        for (int32_t flip = 0; flip < 3; flip++) compare(srcDst, srcDst.step(), c.roi(), flip);
    };
}

TEST_P(Mirror, ruxiMirror_8u_C3IR)
{
    sweep(RUX_OPERATION(ruxiMirror_8u_C3IR), imageSweep(), mirrors<uint8_t>(3));
}

TEST_P(Mirror, ruxiMirror_8u_AC4IR)
{
    sweep(RUX_OPERATION(ruxiMirror_8u_AC4IR), imageSweep(), mirrors<uint8_t>(4));
}

TEST_P(Mirror, ruxiMirror_16u_C1IR)
{
    sweep(RUX_OPERATION(ruxiMirror_16u_C1IR), imageSweep(), mirrors<uint16_t>(1));
}

// Rows of odd and even number that are long beside any block, so that both ends of a row meet in each way.
TEST_P(Mirror, longRows)
{
    for (int width : {1999, 2000, 4093}) {
        for (int height : {1, 2, 3}) {
            for (int32_t flip = 0; flip < 3; flip++) {
                const Image<uint8_t> three(Shape{width, height, 3}, 1), four(Shape{width, height, 4}, 2);
                const Image<uint16_t> wide(Shape{width, height}, 3);
                agree(RUX_OPERATION(ruxiMirror_8u_C3IR), three, three.step(), three.roi(), flip);
                agree(RUX_OPERATION(ruxiMirror_8u_AC4IR), four, four.step(), four.roi(), flip);
                agree(RUX_OPERATION(ruxiMirror_16u_C1IR), wide, wide.step(), wide.roi(), flip);
            }
        }
    }
}

TEST_P(Mirror, whereEachPixelGoes)
{
    for (int32_t flip = 0; flip < 3; flip++) {
        for (const ruxiSize size : {ruxiSize{37, 5}, ruxiSize{38, 4}}) {
            const Image<uint16_t> image(Shape{size.width, size.height}, 1);
            const auto before = image.clone();
            EXPECT_EQ(call(ruxiMirror_16u_C1IR, image.data(), image.step(), size, flip), 0);
            for (int y = 0; y < size.height; y++) {
                for (int x = 0; x < size.width; x++) {
                    const int fromX = flip == ruxAxsHorizontal ? x : size.width - 1 - x;
                    const int fromY = flip == ruxAxsVertical ? y : size.height - 1 - y;
                    ASSERT_EQ(image.get(x, y), before.get(fromX, fromY)) << x << ", " << y << ", flip " << flip;
                }
            }
        }
    }
}

TEST_P(Mirror, fourthByteStaysWhereItStands)
{
    for (int32_t flip = 0; flip < 3; flip++) {
        const Image<uint8_t> image(Shape{45, 5, 4}, 1, anyBits<uint8_t>);
        const auto before = image.clone();
        EXPECT_EQ(call(ruxiMirror_8u_AC4IR, image.data(), image.step(), image.roi(), flip), 0);
        EXPECT_FALSE(image.equals(before));
        for (int y = 0; y < 5; y++) {
            for (int x = 0; x < 45; x++) ASSERT_EQ(image.get(4 * x + 3, y), before.get(4 * x + 3, y));
        }
    }
}

TEST_P(Mirror, oneRowOrColumnStays)
{
    const auto staysThree = [](const Shape& shape, int32_t flip) {
        const Image<uint8_t> image(shape, 1);
        const auto before = image.clone();
        EXPECT_EQ(call(ruxiMirror_8u_C3IR, image.data(), image.step(), image.roi(), flip), 0);
        EXPECT_TRUE(image.equals(before));
    };
    staysThree(Shape{33, 1, 3}, ruxAxsHorizontal);
    staysThree(Shape{1, 9, 3}, ruxAxsVertical);
    staysThree(Shape{1, 1, 3}, ruxAxsBoth);
}

TEST_P(Mirror, refusesWrongArguments)
{
    const Image<uint8_t> three(Shape{17, 3, 3}, 1), four(Shape{17, 3, 4}, 2);
    const Image<uint16_t> wide(Shape{17, 3}, 3);
    for (int32_t right = 0; right < 3; right++) {
        const auto flip = wrongly<int32_t>(right, {3, -1, INT32_MAX, INT32_MIN, 256});
        refuse(RUX_OPERATION(ruxiMirror_8u_C3IR), three, three.step(), three.roi(), flip);
        refuse(RUX_OPERATION(ruxiMirror_8u_AC4IR), four, four.step(), four.roi(), flip);
        refuse(RUX_OPERATION(ruxiMirror_16u_C1IR), wide, wide.step(), wide.roi(), flip);
    }
}

TEST_P(Mirror, looksAtStrideThenSizeThenAxis)
{
    const Image<uint8_t> image(Shape{8, 2, 4}, 1);
    uint8_t* const none = nullptr;
    for (const auto mirror : {ruxiMirror_8u_C3IR, ruxiMirror_8u_AC4IR}) {
        EXPECT_EQ(call(mirror, none, 0, ruxiSize{0, 2}, 3), -8);
        EXPECT_EQ(call(mirror, image.data(), 0, ruxiSize{0, 2}, 3), -14);
        EXPECT_EQ(call(mirror, image.data(), 0, ruxiSize{8, 2}, 3), -14);
        EXPECT_EQ(call(mirror, image.data(), 32, ruxiSize{0, 2}, 3), -6);
        EXPECT_EQ(call(mirror, image.data(), 32, ruxiSize{8, 2}, 3), -21);
    }
}

}
