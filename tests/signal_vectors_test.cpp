// Vectors of samples, against the models and the contract's numbers.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include "model/signal_vectors.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(SignalVectors, "signal_vectors");

TEST_P(SignalVectors, ruxsCopy_8u)
{
    sweep(RUX_OPERATION(ruxsCopy_8u), vectorSweep(), [](Case& c, const auto& compare) {
        const auto src = c.image<uint8_t>();
        const auto dst = c.image<uint8_t>();
        compare(src, dst, c.width);
    });
}

TEST_P(SignalVectors, ruxsConvert_16s32f)
{
    sweep(RUX_OPERATION(ruxsConvert_16s32f), vectorSweep(), [](Case& c, const auto& compare) {
        const auto src = c.image<int16_t>();
        const auto dst = c.image<float>();
        compare(src, dst, c.width);
    });
}

TEST_P(SignalVectors, everySampleConverts)
{
    Image<int16_t> src(vectorOf(65536));
    for (int i = 0; i < 65536; i++) src.set(i, 0, static_cast<int16_t>(i));
    const Image<float> dst(vectorOf(65536));
    agree(RUX_OPERATION(ruxsConvert_16s32f), src, dst, 65536);
}

TEST_P(SignalVectors, ruxsThreshold_32f_I)
{
    sweep(RUX_OPERATION(ruxsThreshold_32f_I), vectorSweep(), [](Case& c, const auto& compare) {
        const auto srcDst = c.image<float>();
        const int32_t relOp = c.random.oneIn(2) ? 4 : c.random.between(-1, 8);
        float level = 0;
        if (c.random.oneIn(2)) level = srcDst.get(static_cast<int>(c.random.below(static_cast<uint32_t>(c.width))));
        else mixture<float>(c.random, &level, 1);
        compare(srcDst, c.width, level, relOp);
    });
}

// Every pair of extremes, zeros of both signs and NaN of both kinds among them.
TEST_P(SignalVectors, thresholdOfExtremes)
{
    for (uint64_t seed = 1; seed < 40; seed++) {
        Random random(seed);
        const Image<float> srcDst(vectorOf(200), seed, extremes<float>);
        float level = 0;
        extremes<float>(random, &level, 1);
        agree(RUX_OPERATION(ruxsThreshold_32f_I), srcDst, 200, level, 4);
        agree(RUX_OPERATION(ruxsThreshold_32f_I), srcDst, 200, level, 0);
    }
}

TEST_P(SignalVectors, thresholdOfThreeValues)
{
    const struct { int32_t relOp; float expected[3]; } numbers[] = {
        {0, {1, 1, 2}}, {4, {0.5f, 1, 1}}, {7, {1, 1, 2}}};
    for (const auto& number : numbers) {
        for (int i = 0; i < 3; i++) {   // at the place of a vector and of a rest
            Image<float> x(vectorOf(11), 1, constant(std::array<float, 3>{0.5f, 1, 2}[static_cast<size_t>(i)]));
            EXPECT_EQ(call(ruxsThreshold_32f_I, x.data(), 11, 1.0f, number.relOp), 0);
            for (int k = 0; k < 11; k++) EXPECT_EQ(x.get(k), number.expected[i]) << "relOp " << number.relOp;
        }
    }
}

// Sums of multiples of 1/256 are exact in double: every order of additions gives the model's.
static Fill<float> summands(Level level, int32_t hint)
{
    const bool single = hint == 1 && (level == a6 || level == w7);
    return single ? ordinary<float> : uniform<float>(-100000, 100000);
}

template <class Op>
static void sweepSum(FamilyTest& test, const Op& operation, int32_t hint, const char* label)
{
    test.sweep(operation, vectorSweep().labelled(label), [&](Case& c, const auto& compare) {
        const auto src = c.image<float>(1, summands(test.level(), hint));
        const auto result = c.vector<float>(1);
        compare(src, c.width, result, hint);
    });
}

TEST_P(SignalVectors, ruxsSum_32f)
{
    sweepSum(*this, RUX_OPERATION(ruxsSum_32f), 0, "");
    sweepSum(*this, RUX_OPERATION(ruxsSum_32f), 1, ":fast");
    sweepSum(*this, RUX_OPERATION(ruxsSum_32f), 2, ":accurate");
}

TEST_P(SignalVectors, ruxsMean_32f)
{
    sweepSum(*this, RUX_OPERATION(ruxsMean_32f), 0, "");
    sweepSum(*this, RUX_OPERATION(ruxsMean_32f), 1, ":fast");
    sweepSum(*this, RUX_OPERATION(ruxsMean_32f), 2, ":accurate");
}

static float sumOf(const std::vector<float>& values, int32_t hint, bool mean = false)
{
    Image<float> src(vectorOf(static_cast<int>(values.size())).at({Edge::start, 0}));
    for (size_t i = 0; i < values.size(); i++) src.set(static_cast<int>(i), 0, values[i]);
    float result = -77;
    EXPECT_EQ(call(mean ? ruxsMean_32f : ruxsSum_32f, src.data(), src.width(), &result, hint), 0);
    return result;
}

// Great values that cancel: the order decides whether what is small is kept or lost.
TEST_P(SignalVectors, orderOfTheSum)
{
    for (uint64_t seed = 1; seed < 300; seed++) {
        const int length = static_cast<int>(seed % 40) + 1;
        const Image<float> src(vectorOf(length), seed, [](Random& random, float* row, int count) {
            for (int i = 0; i < count; i++) {
                const bool isGreat = random.oneIn(3), isNegative = random.oneIn(2);
                row[i] = isGreat ? (isNegative ? -0x1p60f : 0x1p60f) : static_cast<float>(random.between(-100, 100));
            }
        });
        const Image<float> sum(vectorOf(1));
        for (const int32_t hint : {0, 1, 2}) {
            agree(RUX_OPERATION(ruxsSum_32f), src, src.width(), sum, hint);
            agree(RUX_OPERATION(ruxsMean_32f), src, src.width(), sum, hint);
        }
    }
}

TEST_P(SignalVectors, smallValuesBesideALargeOne)
{
    std::vector<float> values(1001, 1);
    values[0] = 16777216;
    EXPECT_EQ(sumOf(values, 0), 16778216);
    EXPECT_EQ(sumOf(values, 2), 16778216);
}

// Four single-precision lanes: the ones in the lane of the large value are lost.
TEST_P(SignalVectors, lanesOfTheFastSum)
{
    std::vector<float> values(1000, 1);
    values[0] = 16777216;
    const bool lanes = level() == a6 || level() == w7;
    EXPECT_EQ(sumOf(values, 1), lanes ? 16777216 + 750 : 16777216 + 1000);
    EXPECT_EQ(sumOf(values, 0), 16777216 + 1000);   // 999, rounded to even
}

// After 32768 values the lanes are emptied: the ones that follow are not lost.
TEST_P(SignalVectors, blocksOfTheFastSum)
{
    std::vector<float> values(65536, 1);
    std::fill_n(values.begin(), 32768, 2048.0f);
    EXPECT_EQ(sumOf(values, 1), 2049.0f * 32768);
}

TEST_P(SignalVectors, sumOfOneValueIsTheValue)
{
    for (const float value : {1.0f, -3.25f, 1e30f, 1e-40f}) {
        for (const int32_t hint : {0, 1, 2}) {
            EXPECT_EQ(sumOf({value}, hint), value);
            EXPECT_EQ(sumOf({value}, hint, true), value);
        }
    }
    for (const int32_t hint : {0, 1, 2}) EXPECT_FALSE(std::signbit(sumOf({-0.0f}, hint)));
}

// The sum is not rounded before it is divided.
TEST_P(SignalVectors, meanOfTheUnroundedSum)
{
    const std::vector<float> values = {16777216, 1, 0};   // the float of the sum is 16777216
    for (const int32_t hint : {0, 2}) EXPECT_EQ(sumOf(values, hint, true), static_cast<float>(16777217 / 3.0));
}

TEST_P(SignalVectors, ruxsSignChangeRate_16s)
{
    sweep(RUX_OPERATION(ruxsSignChangeRate_16s), vectorSweep(), [](Case& c, const auto& compare) {
        const auto src = c.image<int16_t>(1, c.random.oneIn(3) ? Fill<int16_t>(uniform<int16_t>(-1, 1))
                                                               : Fill<int16_t>(mixture<int16_t>));
        const auto count = c.vector<int32_t>(1);
        compare(src, c.width, count);
    });
}

// Any values; every NaN has its sign set.
static void crossings(Random& random, float* row, int count)
{
    if (random.oneIn(3)) return uniform<float>(-1, 1)(random, row, count);
    mixture<float>(random, row, count);
    for (int i = 0; i < count; i++) {
        uint32_t bits;
        std::memcpy(&bits, row + i, 4);
        if ((bits & 0x7FFFFFFF) > 0x7F800000) bits |= 0x80000000;
        std::memcpy(row + i, &bits, 4);
    }
}

TEST_P(SignalVectors, ruxsSignChangeRate_32f)
{
    sweep(RUX_OPERATION(ruxsSignChangeRate_32f), vectorSweep(), [](Case& c, const auto& compare) {
        const auto src = c.image<float>(1, crossings);
        const auto count = c.vector<float>(1);
        compare(src, c.width, count);
    });
}

static int32_t crossingsOf(const std::vector<int16_t>& values)
{
    int32_t count = -77;
    EXPECT_EQ(call(ruxsSignChangeRate_16s, values.data(), static_cast<int32_t>(values.size()), &count), 0);
    return count;
}

static float crossingsOf(const std::vector<float>& values)
{
    float count = -77;
    EXPECT_EQ(call(ruxsSignChangeRate_32f, values.data(), static_cast<int32_t>(values.size()), &count), 0);
    return count;
}

TEST_P(SignalVectors, countedCrossings)
{
    const struct { std::vector<int16_t> values; int count; } numbers[] = {
        {{1, -1, 1, -1}, 3}, {{0, 0, 0}, 0}, {{-1, 0, 1}, 0}, {{1, 0, -1}, 0}, {{-32768, 32767}, 1}, {{5}, 0}};
    for (const auto& number : numbers) {
        EXPECT_EQ(crossingsOf(number.values), number.count);
        EXPECT_EQ(crossingsOf(std::vector<float>(number.values.begin(), number.values.end())), number.count);
        std::vector<int16_t> longer(40, number.values[0]);   // where vectors see it
        longer.insert(longer.end(), number.values.begin(), number.values.end());
        longer.insert(longer.end(), 40, number.values.back());
        EXPECT_EQ(crossingsOf(longer), number.count);
        EXPECT_EQ(crossingsOf(std::vector<float>(longer.begin(), longer.end())), number.count);
    }
}

TEST_P(SignalVectors, tinyCrossings)
{
    const bool wide = level() == px || level() == m6;
    std::vector<float> values(64, 0.0f);
    values[30] = 1e-30f, values[31] = -1e-30f;
    EXPECT_EQ(crossingsOf(std::vector<float>{1e-30f, -1e-30f}), wide ? 1 : 0);
    EXPECT_EQ(crossingsOf(values), wide ? 1 : 0);
    values[30] = 1e-20f, values[31] = -1e-20f;   // the product is subnormal, not zero
    EXPECT_EQ(crossingsOf(values), 1);
}

TEST_P(SignalVectors, crossingsOfNaN)
{
    const float positive = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(crossingsOf(std::vector<float>{1.0f, positive, 1.0f}), 2);
    std::vector<float> values(64, 1.0f);
    values[30] = positive;
    EXPECT_EQ(crossingsOf(values), level() == w7 ? 0 : 2);
    values[30] = -positive;
    EXPECT_EQ(crossingsOf(values), 2);
    values[31] = positive;
    EXPECT_EQ(crossingsOf(values), level() == w7 ? 2 : 3);
    values[30] = positive, values[31] = -positive;
    EXPECT_EQ(crossingsOf(values), level() == w7 ? 1 : 3);
}

TEST_P(SignalVectors, ruxsFilterMedian_16s)
{
    sweep(RUX_OPERATION(ruxsFilterMedian_16s), vectorSweep(), [](Case& c, const auto& compare) {
        const auto src = c.image<int16_t>(1, c.random.oneIn(2) ? Fill<int16_t>(uniform<int16_t>(-5, 5))
                                                               : Fill<int16_t>(mixture<int16_t>));
        const auto dst = c.image<int16_t>();
        const int32_t mask = c.random.oneIn(2) ? c.random.between(1, 8) : c.random.between(1, 150);
        compare(src, dst, c.width, mask);
    });
}

// All orders of values in a mask of 3 and of 5.
TEST_P(SignalVectors, medianOfEveryOrder)
{
    std::vector<int16_t> order = {-32768, -1, 0, 0, 7, 32767};
    do {
        Image<int16_t> src(vectorOf(6)), dst(vectorOf(6));
        for (int i = 0; i < 6; i++) src.set(i, 0, order[static_cast<size_t>(i)]);
        for (const int32_t mask : {3, 5, 7}) agree(RUX_OPERATION(ruxsFilterMedian_16s), src, dst, 6, mask);
    } while (std::next_permutation(order.begin(), order.end()));
}

static std::vector<int16_t> medianOf(const std::vector<int16_t>& src, int32_t mask, ruxStatus expected)
{
    std::vector<int16_t> dst(src.size(), -77);
    EXPECT_EQ(call(ruxsFilterMedian_16s, src.data(), dst.data(), static_cast<int32_t>(src.size()), mask), expected);
    return dst;
}

TEST_P(SignalVectors, mediansByHand)
{
    const std::vector<int16_t> ramp = {9, 1, 8, 2, 7, 3};
    EXPECT_EQ(medianOf(ramp, 3, 0), (std::vector<int16_t>{9, 8, 2, 7, 3, 3}));
    EXPECT_EQ(medianOf(ramp, 4, 5), (std::vector<int16_t>{9, 8, 2, 7, 3, 3}));
    EXPECT_EQ(medianOf(ramp, 2, 5), ramp);
    EXPECT_EQ(medianOf(ramp, 1, 0), ramp);
    EXPECT_EQ(medianOf({4, -9}, 9, 0), (std::vector<int16_t>{4, -9}));
    EXPECT_EQ(medianOf({4, -9}, 8, 5), (std::vector<int16_t>{4, -9}));
    EXPECT_EQ(medianOf({1, 5, 3}, 5, 0), (std::vector<int16_t>{1, 3, 3}));   // of 1, 1, 5, 3, 3
}

// At 50 a mask of 101 holds all 100 samples and the last once more.
TEST_P(SignalVectors, maskWiderThanTheVector)
{
    std::vector<int16_t> src(100);
    for (size_t i = 0; i < 100; i++) src[i] = static_cast<int16_t>(i * 37 % 100);
    std::vector<int16_t> window = src;
    window.push_back(src[99]);
    std::sort(window.begin(), window.end());
    EXPECT_EQ(medianOf(src, 101, 0)[50], window[50]);
}

TEST_P(SignalVectors, medianOutOfMemory)
{
    const Image<int16_t> src(vectorOf(20), 1), copy(vectorOf(20), 2);
    for (const int32_t mask : {7, 8, 101}) {
        forEachRefusal(1, [&](bool refused) {
            const Image<int16_t> dst(vectorOf(20), 3);
            const ruxStatus even = mask % 2 == 0 ? ruxStatusEvenMedianMask : ruxStatusOk;
            EXPECT_EQ(call(ruxsFilterMedian_16s, src.data(), dst.data(), 20, mask),
                      refused ? ruxStatusMemoryAllocated : even);
            for (int i = 0; refused && i < 20; i++) EXPECT_EQ(dst.get(i), src.get(i));
        });
    }
    for (const int32_t mask : {1, 2, 3, 5, 6}) {
        forgetBlocks();
        call(ruxsFilterMedian_16s, src.data(), copy.data(), 20, mask);
        EXPECT_EQ(allocationsAsked(), 0) << mask;
    }
}

// Sizes that leave 32 bits.
TEST_P(SignalVectors, masksOfImpossibleSize)
{
    for (const int32_t mask : {0x7FFFFFFF, 0x7FFFFFFE, 0x40000001, 0x20000001}) {
        const Image<int16_t> src(vectorOf(20), 1), dst(vectorOf(20), 3);
        EXPECT_EQ(call(ruxsFilterMedian_16s, src.data(), dst.data(), 20, mask), ruxStatusMemoryAllocated) << mask;
        for (int i = 0; i < 20; i++) EXPECT_EQ(dst.get(i), src.get(i));
    }
}

TEST_P(SignalVectors, refusesWrongArguments)
{
    const Image<uint8_t> bytes(vectorOf(9)), otherBytes(vectorOf(9));
    const Image<int16_t> samples(vectorOf(9), 1), others(vectorOf(9), 2);
    const Image<float> floats(vectorOf(9), 3), result(vectorOf(1), 4);
    const Image<int32_t> count(vectorOf(1), 5);
    const auto len = wrongly<int32_t>(9, {0, -1, INT_MIN});
    refuse(RUX_OPERATION(ruxsCopy_8u), bytes, otherBytes, len);
    refuse(RUX_OPERATION(ruxsConvert_16s32f), samples, floats, len);
    refuse(RUX_OPERATION(ruxsThreshold_32f_I), floats, len, 1.0f, 4);
    refuse(RUX_OPERATION(ruxsSum_32f), floats, len, result, 1);
    refuse(RUX_OPERATION(ruxsMean_32f), floats, len, result, 0);
    refuse(RUX_OPERATION(ruxsFilterMedian_16s), samples, others, len, wrongly<int32_t>(3, {0, -1, INT_MIN}));
    refuse(RUX_OPERATION(ruxsSignChangeRate_16s), samples, len, count);
    refuse(RUX_OPERATION(ruxsSignChangeRate_32f), floats, len, result);
}

}
