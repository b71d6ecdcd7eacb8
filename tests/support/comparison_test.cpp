// Operations beside their models: each way of being wrong is found.
#include <gtest/gtest-spi.h>

#include <cstdlib>
#include <set>

#include "ruxlib/status.h"
#include "support/family.h"

namespace rux::test {
namespace {

// A model, an operation that follows it, and operations that do not.
using Move = ruxStatus(RUXCALL*)(const uint8_t*, int32_t, uint8_t*, int32_t, ruxiSize);

ruxStatus model(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize size)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (size.width < 1 || size.height < 1) return ruxStatusSizeError;
    if (srcStep < 1 || dstStep < 1) return ruxStatusStepError;
    for (int y = 0; y < size.height; y++) {
        for (int x = 0; x < size.width; x++) dst[y * dstStep + x] = src[y * srcStep + x];
    }
    return ruxStatusOk;
}

ruxStatus RUXCALL right(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize size)
{
    return model(px, src, srcStep, dst, dstStep, size);
}

ruxStatus RUXCALL wrongByte(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize size)
{
    const ruxStatus status = right(src, srcStep, dst, dstStep, size);
    if (status == 0) dst[dstStep * (size.height - 1) + size.width - 1] ^= 1;
    return status;
}

ruxStatus RUXCALL wrongStatus(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize size)
{
    return right(src, srcStep, dst, dstStep, size) + 1;
}

ruxStatus RUXCALL writesSource(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize size)
{
    const ruxStatus status = right(src, srcStep, dst, dstStep, size);
    if (status == 0) const_cast<uint8_t*>(src)[0] ^= 1;
    return status;
}

ruxStatus RUXCALL writesGap(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize size)
{
    const ruxStatus status = right(src, srcStep, dst, dstStep, size);
    if (status == 0) dst[size.width] ^= 1;
    return status;
}

ruxStatus RUXCALL writesBeforeItRefuses(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        ruxiSize size)
{
    if (dst) dst[0] ^= 1;
    return right(src, srcStep, dst, dstStep, size);
}

ruxStatus RUXCALL checksStepsFirst(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize size)
{
    if (srcStep < 1) return ruxStatusStepError;
    return right(src, srcStep, dst, dstStep, size);
}

ruxStatus RUXCALL wrongAtOneAlignment(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize size)
{
    const bool here = reinterpret_cast<uintptr_t>(src) % 16 == 12 && reinterpret_cast<uintptr_t>(dst) % 16 == 3;
    return here ? wrongByte(src, srcStep, dst, dstStep, size) : right(src, srcStep, dst, dstStep, size);
}

ruxStatus RUXCALL readsBeyond(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize size)
{
    const volatile uint8_t* const beyond = src + (size.height - 1) * srcStep + size.width;
    static_cast<void>(*beyond);
    return right(src, srcStep, dst, dstStep, size);
}

auto operation(Move function)
{
    return operationOf("move", function, &model);
}

class Compared : public FamilyTest {
protected:
    Compared() : FamilyTest("support") {}

    Image<uint8_t> src{Shape{20, 3, 1, 25}, 1}, dst{Shape{20, 3, 1, 31}, 2};

    void compare(Move function) { agree(operation(function), src, src.step(), dst, dst.step(), dst.roi()); }
    void refuseAll(Move function) { refuse(operation(function), src, src.step(), dst, dst.step(), dst.roi()); }
};
RUX_AT_EACH_LEVEL(Compared);

TEST_P(Compared, findsEachOffender)
{
    compare(right);
    EXPECT_NONFATAL_FAILURE(compare(wrongByte), "x 19, y 2, channel 0");
    EXPECT_NONFATAL_FAILURE(compare(wrongByte), std::string("move at ") + nameOf(level()));
    EXPECT_NONFATAL_FAILURE(compare(wrongStatus), "is the status, and not the model's");
    EXPECT_NONFATAL_FAILURE(compare(writesSource), "x 0, y 0");
    EXPECT_NONFATAL_FAILURE(compare(writesGap), "in a gap");
}

TEST_P(Compared, tellsTheCallThatFaults)
{
    EXPECT_DEATH(compare(readsBeyond), "fault in");
}

// A model with the same fault: then only the memory itself can tell.
ruxStatus modelThatWrites(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize size)
{
    return writesBeforeItRefuses(src, srcStep, dst, dstStep, size);
}

// Collects the failures of an action that may have many.
std::string failuresOf(const std::function<void()>& action)
{
    testing::TestPartResultArray results;
    {
        testing::ScopedFakeTestPartResultReporter reporter(
            testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
        action();
    }
    std::string messages;
    for (int i = 0; i < results.size(); i++) messages += results.GetTestPartResult(i).message();
    return messages;
}

TEST_P(Compared, findsWritesOfARefusedCall)
{
    refuseAll(right);
    EXPECT_NE(failuresOf([&] { refuseAll(writesBeforeItRefuses); }).find("x 0, y 0"), std::string::npos);
    const auto both = operationOf("move", Move(writesBeforeItRefuses), &modelThatWrites);
    const auto message = failuresOf([&] { refuse(both, src, src.step(), dst, dst.step(), dst.roi()); });
    EXPECT_NE(message.find("a refused call of move wrote"), std::string::npos) << message;
}

TEST_P(Compared, findsChecksInAnotherOrder)
{
    const auto message = failuresOf([&] { refuseAll(checksStepsFirst); });
    EXPECT_NE(message.find("is the status, and not the model's"), std::string::npos) << message;
}

// Three planes: a null array, a null plane, a bad stride of one of them; and an operation that writes a plane it reads.
ruxStatus joinModel(Level, const uint8_t* src[3], int32_t steps[3], uint8_t* dst, int32_t dstStep, ruxiSize size)
{
    if (!src || !steps || !dst) return ruxStatusNullPointer;
    if (size.width < 1 || size.height < 1) return ruxStatusSizeError;
    if (!src[0] || !src[1] || !src[2]) return ruxStatusNullPointer;
    if (steps[0] < 1 || steps[1] < 1 || steps[2] < 1 || dstStep < 1) return ruxStatusStepError;
    for (int y = 0; y < size.height; y++) {
        for (int x = 0; x < 3 * size.width; x++) dst[y * dstStep + x] = src[x % 3][y * steps[x % 3] + x / 3];
    }
    return ruxStatusOk;
}

ruxStatus RUXCALL join(const uint8_t* src[3], int32_t steps[3], uint8_t* dst, int32_t dstStep, ruxiSize size)
{
    return joinModel(px, src, steps, dst, dstStep, size);
}

ruxStatus RUXCALL writesThirdPlane(const uint8_t* src[3], int32_t steps[3], uint8_t* dst, int32_t dstStep,
                                   ruxiSize size)
{
    const ruxStatus status = join(src, steps, dst, dstStep, size);
    const_cast<uint8_t*>(src[2])[1] ^= 1;
    return status;
}

TEST_P(Compared, takesThreePlanes)
{
    const Planes<uint8_t> planes(Image<uint8_t>(Shape{20, 3}, 1), Image<uint8_t>(Shape{20, 3, 1, 23}, 2),
                                 Image<uint8_t>(Shape{20, 3, 1, 21}, 3));
    const Image<uint8_t> joined(Shape{20, 3, 3}, 4);
    const auto right = operationOf("join", &join, &joinModel);
    agree(right, planes, planes.steps(), joined, joined.step(), joined.roi());
    EXPECT_EQ(joined.get(3 * 7 + 1, 2), planes[1].get(7, 2));
    refuse(right, planes, planes.steps(), joined, joined.step(), joined.roi());
    const auto wrong = operationOf("join", &writesThirdPlane, &joinModel);
    EXPECT_NONFATAL_FAILURE(agree(wrong, planes, planes.steps(), joined, joined.step(), joined.roi()), "plane 2");
}

ruxStatus RUXCALL accepts(int32_t)
{
    return 0;
}

TEST_P(Compared, doesNotBearThatNothingIsRefused)
{
    const auto operation = operationOf("accepts", &accepts, +[](Level, int32_t) -> ruxStatus { return 0; });
    EXPECT_NONFATAL_FAILURE(refuse(operation, wrongly(1, {2, 3})), "no combination was refused");
}

TEST_P(Compared, sweepFindsTheOneWrongAlignment)
{
    const auto message = failuresOf([&] {
        sweep(operation(wrongAtOneAlignment), imageSweep(), [](Case& c, const auto& compare) {
            const auto from = c.image<uint8_t>();
            const auto to = c.image<uint8_t>();
            compare(from, from.step(), to, to.step(), c.roi());
        });
    });
    EXPECT_NE(message.find("bytes differ"), std::string::npos) << message;
}

TEST(Sweep, coversSizesStridesAndPlaces)
{
    if (std::getenv("RUX_SWEEP")) GTEST_SKIP() << "only a part of the cases runs";
    std::set<int> widths, heights, gaps, offsets;
    std::set<std::pair<int, int>> pairs;
    int faultsBehind = 0, faultsBefore = 0;
    for (Case& c : casesOf(imageSweep())) {
        const auto first = c.image<uint8_t>();
        const auto second = c.image<uint8_t>();
        const auto modulo = [](const Image<uint8_t>& image, unsigned by) {
            return static_cast<int>(reinterpret_cast<uintptr_t>(image.data()) % by);
        };
        widths.insert(c.width);
        heights.insert(c.height);
        gaps.insert(first.step() - c.width);
        offsets.insert(modulo(first, 64));
        pairs.insert({modulo(first, 16), modulo(second, 16)});
        faultsBehind += first.row(c.height - 1) + c.width == first.memoryEnd();
        faultsBefore += first.data() == first.memoryBegin();
    }
    for (int width = 1; width <= 73; width++) EXPECT_TRUE(widths.count(width)) << width;
    EXPECT_GE(*widths.rbegin(), 1024);
    EXPECT_GE(heights.size(), 5u);
    EXPECT_TRUE(gaps.count(0) && gaps.count(1) && gaps.count(32));
    EXPECT_EQ(offsets.size(), 64u);
    EXPECT_EQ(pairs.size(), 256u);
    EXPECT_GT(faultsBehind, 100);
    EXPECT_GT(faultsBefore, 50);
}

TEST(Sweep, keepsStridesToTheirMultiple)
{
    for (Case& c : casesOf(imageSweep().strides(4))) {
        const auto image = c.image<float>(3);
        EXPECT_EQ(image.step() % 4, 0);
    }
    for (Case& c : casesOf(vectorSweep().tightRows())) EXPECT_EQ(c.height, 1);
}

TEST(Combinations, areAllWhileFewAndPairsBeyond)
{
    EXPECT_EQ(combinations({2, 4, 1, 7}).size(), 56u);
    const std::vector<int> many(12, 4);
    EXPECT_EQ(combinations(many).size(), 1u + 12 * 3 + 66 * 9);
}

}
}
