// Thresholds of floats: comparisons by bits and by value, NaN, zeros of both signs, the host's modes, and which stores
// go past the caches.
#include "float_bits.h"
#include "model/threshold.h"
#include "ruxlib.h"
#include "support/family.h"
#include "support/trace.h"
#include "threshold_band.h"

namespace rux::test {

class ThresholdFloats : public FamilyTest {
protected:
    ThresholdFloats() : FamilyTest("threshold_floats") {}

    static bool isScalar() { return level() == px || level() == m6; }

    static constexpr uint32_t valueLT = 0x7FA00001, valueGT = 0xFFA00002;   // values are moved as bits

    // What a row of one element becomes in the form with scalars; the status must be 0.
    static uint32_t result(uint32_t element, uint32_t thresholdLT, uint32_t thresholdGT)
    {
        const Image<float> src(Shape{21, 1}, 1, allOf(element)), dst(Shape{21, 1}, 2);
        EXPECT_EQ(call(ruxiThreshold_LTValGTVal_32f_C1R, src.data(), src.step(), dst.data(), dst.step(), dst.roi(),
                       FloatBits{thresholdLT}, FloatBits{valueLT}, FloatBits{thresholdGT}, FloatBits{valueGT}), 0);
        for (int x = 1; x < 21; x++) EXPECT_EQ(bitsOf(dst, x), bitsOf(dst, 0)) << x;
        return bitsOf(dst, 0);
    }
    static uint32_t lowerResult(uint32_t element, uint32_t threshold)
    {
        const Image<float> srcDst(Shape{21, 1}, 1, allOf(element));
        EXPECT_EQ(call(ruxiThreshold_LTVal_32f_C1IR, srcDst.data(), srcDst.step(), srcDst.roi(), FloatBits{threshold},
                       FloatBits{valueLT}), 0);
        for (int x = 1; x < 21; x++) EXPECT_EQ(bitsOf(srcDst, x), bitsOf(srcDst, 0)) << x;
        return bitsOf(srcDst, 0);
    }
};
RUX_AT_EACH_LEVEL(ThresholdFloats);

constexpr uint32_t nan = 0x7FC00000, negativeNan = 0xFFC00000;
constexpr uint32_t minusOne = 0xBF800000, minusTwo = 0xC0000000, minusFive = 0xC0A00000;

// Every pair of thresholds out of the few, over all of them as elements: each loop and each departure from the
// comparison of floats.
TEST_P(ThresholdFloats, everyPairOfThresholds)
{
    static constexpr uint32_t thresholds[] = {0, minusZero, 1, 0x80000001, one, minusOne, two, minusTwo, largest,
                                              infinity, minusInfinity, nan, negativeNan, 0x7F800001, 0xFF800001};
    const Image<float> src(Shape{331, 1}, 1, fewFloats), dst(Shape{331, 1}, 2);
    for (uint32_t lower : thresholds) {
        for (uint32_t upper : thresholds) {
            agree(RUX_OPERATION(ruxiThreshold_LTValGTVal_32f_C1R), src, src.step(), dst, dst.step(), dst.roi(),
                  FloatBits{lower}, FloatBits{valueLT}, FloatBits{upper}, FloatBits{valueGT});
            const Image<float> arrays[] = {Image<float>(vectorOf(3), 3, allOf(lower)),
                                           Image<float>(vectorOf(3), 4, allOf(valueLT)),
                                           Image<float>(vectorOf(3), 5, allOf(upper)),
                                           Image<float>(vectorOf(3), 6, allOf(valueGT))};
            agree(RUX_OPERATION(ruxiThreshold_LTValGTVal_32f_C3R), src, src.step(), dst, dst.step(), ruxiSize{110, 1},
                  arrays[0], arrays[1], arrays[2], arrays[3]);
        }
        const auto srcDst = src.clone();
        agree(RUX_OPERATION(ruxiThreshold_LTVal_32f_C1IR), srcDst, srcDst.step(), srcDst.roi(), FloatBits{lower},
              FloatBits{valueGT});
        if (HasFailure()) return;
    }
}

TEST_P(ThresholdFloats, minusZeroAgainstZero)
{
    EXPECT_EQ(result(minusZero, 0, one), isScalar() ? valueLT : minusZero);
    EXPECT_EQ(lowerResult(minusZero, 0), isScalar() ? valueLT : minusZero);
}

TEST_P(ThresholdFloats, thresholdOfMinusZeroCountsAsNotBelowZero)
{
    EXPECT_EQ(result(minusFive, minusZero, one), isScalar() ? minusFive : valueLT);
    if (!isScalar()) return;
    for (uint32_t element : {uint32_t(0), one, minusFive, minusTwo, nan, minusInfinity})
        EXPECT_EQ(result(element, minusTwo, minusZero), valueGT) << element;
    EXPECT_EQ(result(minusZero, minusTwo, minusZero), minusZero);
}

TEST_P(ThresholdFloats, elementsThatAreNoNumbers)
{
    EXPECT_EQ(result(nan, one, two), isScalar() ? valueGT : valueLT);
    EXPECT_EQ(result(negativeNan, one, two), valueLT);
    EXPECT_EQ(lowerResult(nan, one), isScalar() ? nan : valueLT);
    EXPECT_EQ(lowerResult(negativeNan, one), valueLT);
    EXPECT_EQ(lowerResult(negativeNan, minusOne), valueLT);
}

TEST_P(ThresholdFloats, arraysCompareNumbersAtEveryLevel)
{
    const Image<float> lower(vectorOf(3), 3, allOf(0)), upper(vectorOf(3), 4, allOf(one));
    const Image<float> values(vectorOf(3), 5, allOf(valueLT)), others(vectorOf(3), 6, allOf(valueGT));
    for (const auto& [element, expected] : {std::pair(nan, valueLT), {negativeNan, valueLT}, {minusZero, minusZero},
                                            {two, valueGT}, {minusOne, valueLT}}) {
        const Image<float> src(Shape{15, 1, 4}, 1, allOf(element)), dst(Shape{15, 1, 4}, 2, allOf(minusTwo));
        EXPECT_EQ(call(ruxiThreshold_LTValGTVal_32f_AC4R, src.data(), src.step(), dst.data(), dst.step(), dst.roi(),
                       lower.data(), values.data(), upper.data(), others.data()), 0);
        for (int i = 0; i < 60; i++) EXPECT_EQ(bitsOf(dst, i), i % 4 == 3 ? minusTwo : expected) << i;
    }
}

TEST_P(ThresholdFloats, thresholdsThatAreNoNumbers)
{
    const Image<float> src(Shape{30, 2, 3}, 1), dst(Shape{30, 2, 3}, 2);
    for (const auto& [lower, upper] : {std::pair(one, nan), {nan, one}, {nan, nan}, {minusOne, negativeNan}}) {
        const auto before = dst.clone();
        EXPECT_EQ(call(ruxiThreshold_LTValGTVal_32f_C1R, src.data(), src.step(), dst.data(), dst.step(), dst.roi(),
                       FloatBits{lower}, 1.0f, FloatBits{upper}, 2.0f), isScalar() ? 0 : -18);
        if (!isScalar()) {
            EXPECT_TRUE(dst.equals(before));
        }
        const Image<float> lowers(vectorOf(3), 3, allOf(lower)), uppers(vectorOf(3), 4, allOf(upper));
        EXPECT_EQ(call(ruxiThreshold_LTValGTVal_32f_C3R, src.data(), src.step(), dst.data(), dst.step(), ruxiSize{30, 2},
                       lowers.data(), lowers.data(), uppers.data(), uppers.data()), -18);
        EXPECT_EQ(call(ruxiThreshold_LTValGTVal_32f_AC4IR, dst.data(), dst.step(), ruxiSize{20, 2},
                       lowers.data(), lowers.data(), uppers.data(), uppers.data()), -18);
    }
}

// The host's modes change no comparison; denormal numbers are left out, for a host may have them taken for zero.
TEST_P(ThresholdFloats, bearsEveryHostState)
{
    const Image<float> src(Shape{90, 2, 3}, 1, uniform<float>(-3, 3)), dst(Shape{90, 2, 3}, 2);
    const Image<float> lower(vectorOf(3), 3, allOf(minusOne)), upper(vectorOf(3), 4, allOf(one));
    for (const HostState& state : hostStates()) {
        agreeUnder(state, RUX_OPERATION(ruxiThreshold_LTValGTVal_32f_C1R), src, src.step(), dst, dst.step(), dst.roi(),
                   -1.0f, FloatBits{valueLT}, 1.0f, FloatBits{valueGT});
        agreeUnder(state, RUX_OPERATION(ruxiThreshold_LTValGTVal_32f_C3R), src, src.step(), dst, dst.step(), dst.roi(),
                   lower, upper, upper, lower);
        agreeUnder(state, RUX_OPERATION(ruxiThreshold_LTVal_32f_C1IR), dst, dst.step(), dst.roi(), 0.5f, -7.0f);
    }
}

// At w7 blocks go past the caches where source and destination reach 16-byte boundaries together.
TEST_P(ThresholdFloats, pastTheCaches)
{
    for (int apart : {0, 4, 8}) {
        for (int offset : {0, 4, 12}) {
            const Image<float> src(Shape{40, 1}.at({Edge::start, 16 + offset}), 1);
            const Image<float> dst(Shape{40, 1}.at({Edge::start, 16 + offset + apart}), 2);
            Trace way;
            EXPECT_EQ(call(ruxiThreshold_LTValGTVal_32f_C1R, src.data(), src.step(), dst.data(), dst.step(), dst.roi(),
                           0.0f, 1.0f, 2.0f, 3.0f), 0);
            if (!way.works()) GTEST_SKIP() << "no single steps here";
            if (level() == w7) {
                EXPECT_EQ(way.streaming16 > 0, apart == 0);
                EXPECT_EQ(way.fences, 1);
            } else if (isScalar()) {
                EXPECT_EQ(way.streaming8 + way.streaming16 + way.fences, 0);
            }
        }
    }
}

TEST_P(ThresholdFloats, lowerThresholdPastTheCaches)
{
    for (int offset : {0, 4, 8, 16, 28}) {
        const Image<float> srcDst(Shape{300, 1}.at({Edge::start, offset}), 1);
        Trace way;
        EXPECT_EQ(call(ruxiThreshold_LTVal_32f_C1IR, srcDst.data(), 1200, srcDst.roi(), 0.0f, 1.0f), 0);
        if (!way.works()) GTEST_SKIP() << "no single steps here";
        if (level() == w7) {
            EXPECT_GT(way.streaming16, 0);
            EXPECT_EQ(way.fences, 1);
        } else if (isScalar()) {
            EXPECT_EQ(way.streaming8 + way.streaming16 + way.fences, 0);
        }
    }
}

}
