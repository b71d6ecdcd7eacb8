// Comparison into a mask, counting in a range, maximum and sum, against the models and the contract's numbers.
#include "float_bits.h"
#include "model/compare.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(Compare, "compare");

// Few values, so that equal ones meet often; NaN of both kinds among them.
static void fewFloats(Random& random, float* row, int count)
{
    static constexpr uint32_t values[] = {0, 0x80000000, 0x3F800000, 0xBF800000, 0x7F800000, 0xFF800000,
                                          0x7FC00001, 0xFFA00000, 0x00000001, 0x3F800001};
    for (int i = 0; i < count; i++) std::memcpy(row + i, &values[random.below(10)], sizeof *row);
}

static FloatBits fewFloat(Random& random)
{
    float value;
    fewFloats(random, &value, 1);
    uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return FloatBits{bits};
}

// Numbers of all sizes, without NaN and without minus zero.
static void numbers(Random& random, float* row, int count)
{
    anyBits(random, row, count);
    for (int i = 0; i < count; i++) {
        uint32_t bits;
        std::memcpy(&bits, row + i, sizeof bits);
        if ((bits & 0x7F800000) == 0x7F800000) bits &= 0xFF800000;   // infinity
        if (bits == 0x80000000) bits = 0;
        std::memcpy(row + i, &bits, sizeof bits);
    }
}

TEST_P(Compare, ruxiCompare_32f_C1R)
{
    sweep(RUX_OPERATION(ruxiCompare_32f_C1R), imageSweep(), [](Case& c, const auto& compare) {
        const auto src1 = c.image<float>(1, fewFloats);
        const auto src2 = c.image<float>(1, fewFloats);
        const auto dst = c.image<uint8_t>();
        compare(src1, src1.step(), src2, src2.step(), dst, dst.step(), c.roi(), c.random.between(0, 4));
    });
}

TEST_P(Compare, ruxiCompareC_32f_C1R)
{
    sweep(RUX_OPERATION(ruxiCompareC_32f_C1R), imageSweep(), [](Case& c, const auto& compare) {
        const auto src = c.image<float>(1, fewFloats);
        const auto dst = c.image<uint8_t>();
        const FloatBits value = fewFloat(c.random);
        compare(src, src.step(), value, dst, dst.step(), c.roi(), c.random.between(0, 4));
    });
}

TEST_P(Compare, ruxiCompareC_8u_C1R)
{
    sweep(RUX_OPERATION(ruxiCompareC_8u_C1R), imageSweep(), [](Case& c, const auto& compare) {
        const auto src = c.image<uint8_t>();
        const auto dst = c.image<uint8_t>();
        const uint8_t value = src.get(c.random.between(0, c.width - 1));
        compare(src, src.step(), value, dst, dst.step(), c.roi(), c.random.between(0, 4));
    });
}

TEST_P(Compare, everyOperatorOnEachPairOfBytes)
{
    const Image<uint8_t> src(Shape{256, 1});
    for (int x = 0; x < 256; x++) src.row(0)[x] = static_cast<uint8_t>(x);
    const Image<uint8_t> dst(Shape{256, 1});
    for (int value = 0; value < 256; value++) {
        for (int32_t op = 0; op < 5; op++)
            agree(RUX_OPERATION(ruxiCompareC_8u_C1R), src, 256, static_cast<uint8_t>(value), dst, 256, src.roi(), op);
        if (HasFailure()) return;
    }
}

TEST_P(Compare, ruxiCountInRange_8u_C1R)
{
    sweep(RUX_OPERATION(ruxiCountInRange_8u_C1R), imageSweep(), [](Case& c, const auto& compare) {
        const auto src = c.image<uint8_t>();
        const auto counts = c.vector<int32_t>(1);
        uint8_t lower = src.get(0), upper = static_cast<uint8_t>(c.random.below(256));
        if (lower > upper && !c.random.oneIn(8)) std::swap(lower, upper);
        compare(src, src.step(), c.roi(), counts, lower, upper);
    });
}

TEST_P(Compare, ruxiCountInRange_32f_C1R)
{
    sweep(RUX_OPERATION(ruxiCountInRange_32f_C1R), imageSweep(), [](Case& c, const auto& compare) {
        const auto src = c.image<float>(1, fewFloats);
        const auto counts = c.vector<int32_t>(1);
        const FloatBits lower = fewFloat(c.random), upper = fewFloat(c.random);
        compare(src, src.step(), c.roi(), counts, lower, upper);
        compare(src, src.step(), c.roi(), counts, FloatBits{0xBF800000}, FloatBits{0x3F800000});
    });
}

TEST_P(Compare, ruxiMax_32f_C1R)
{
    sweep(RUX_OPERATION(ruxiMax_32f_C1R), imageSweep(), [](Case& c, const auto& compare) {
        const auto src = c.image<float>(1, numbers);
        const auto max = c.vector<float>(1);
        compare(src, src.step(), c.roi(), max);
    });
}

TEST_P(Compare, ruxiSum_8u_C1R)
{
    sweep(RUX_OPERATION(ruxiSum_8u_C1R), imageSweep(), [](Case& c, const auto& compare) {
        const auto src = c.image<uint8_t>();
        const auto sum = c.vector<double>(1);
        compare(src, src.step(), c.roi(), sum);
    });
}

TEST_P(Compare, refusesWrongArguments)
{
    const Image<float> floats(Shape{9, 3}, 1, ordinary<float>);
    const Image<uint8_t> bytes(Shape{9, 3}), mask(Shape{9, 3}, 2);
    const Image<int32_t> counts(vectorOf(1));
    const Image<float> max(vectorOf(1));
    const Image<double> sum(vectorOf(1));
    const ruxiSize roi = floats.roi();
    const auto op = wrongly<int32_t>(ruxCmpLess, {5, -1, INT32_MAX, INT32_MIN});
    refuse(RUX_OPERATION(ruxiCompare_32f_C1R), floats, floats.step(), floats, floats.step(), mask, mask.step(), roi, op);
    refuse(RUX_OPERATION(ruxiCompareC_32f_C1R), floats, floats.step(), 1.0f, mask, mask.step(), roi, op);
    refuse(RUX_OPERATION(ruxiCompareC_8u_C1R), bytes, bytes.step(), uint8_t(7), mask, mask.step(), roi, op);
    refuse(RUX_OPERATION(ruxiCountInRange_8u_C1R), bytes, bytes.step(), roi, counts, wrongly<uint8_t>(10, {21, 255}),
           uint8_t(20));
    refuse(RUX_OPERATION(ruxiCountInRange_32f_C1R), floats, floats.step(), roi, counts, wrongly<float>(1.0f, {3.0f}),
           2.0f);
    refuse(RUX_OPERATION(ruxiMax_32f_C1R), floats, floats.step(), roi, max);
    refuse(RUX_OPERATION(ruxiSum_8u_C1R), bytes, bytes.step(), roi, sum);
}

TEST_P(Compare, strideBeforeSizeInComparisons)
{
    const Image<float> src(Shape{4, 1});
    uint8_t* const none = nullptr;
    const Image<uint8_t> dst(Shape{4, 1});
    EXPECT_EQ(call(ruxiCompareC_32f_C1R, src.data(), 0, 1.0f, none, 4, ruxiSize{0, 1}, 0), -8);
    EXPECT_EQ(call(ruxiCompareC_32f_C1R, src.data(), 0, 1.0f, dst.data(), 4, ruxiSize{0, 1}, 0), -14);
    EXPECT_EQ(call(ruxiCompareC_32f_C1R, src.data(), 16, 1.0f, dst.data(), 4, ruxiSize{0, 1}, 0), -6);
}

TEST_P(Compare, unknownOperatorWritesNothing)
{
    const Image<float> src(Shape{40, 2}, 1, ordinary<float>);
    const Image<uint8_t> dst(Shape{40, 2}, 2);
    const auto before = dst.clone();
    for (const int32_t op : {5, -1, 255, INT32_MIN}) {
        EXPECT_EQ(call(ruxiCompareC_32f_C1R, src.data(), 160, 1.0f, dst.data(), 40, src.roi(), op), 0);
        EXPECT_TRUE(dst.equals(before));
    }
}

TEST_P(Compare, equalImages)
{
    const Image<float> src(Shape{77, 2}, 1, ordinary<float>);
    const Image<uint8_t> dst(Shape{77, 2}, 2);
    for (int32_t op = 0; op < 5; op++) {
        EXPECT_EQ(call(ruxiCompare_32f_C1R, src.data(), src.step(), src.data(), src.step(), dst.data(), dst.step(),
                       src.roi(), op), 0);
        const uint8_t expected = op >= ruxCmpLessEq && op <= ruxCmpGreaterEq ? 255 : 0;
        for (int x = 0; x < 77; x++) EXPECT_EQ(dst.get(x, 1), expected) << op;
    }
}

TEST_P(Compare, zerosOfBothSignsAreEqual)
{
    const Image<float> src(Shape{20, 1}, 1, constant(-0.0f));
    const Image<uint8_t> dst(Shape{20, 1});
    EXPECT_EQ(call(ruxiCompareC_32f_C1R, src.data(), 80, 0.0f, dst.data(), 20, src.roi(), int32_t(ruxCmpEq)), 0);
    for (int x = 0; x < 20; x++) EXPECT_EQ(dst.get(x), 255);
}

TEST_P(Compare, boundsOfARange)
{
    const Image<uint8_t> src(Shape{50, 4}, 1, uniform<uint8_t>(8, 12));
    const Image<int32_t> counts(vectorOf(1));
    EXPECT_EQ(call(ruxiCountInRange_8u_C1R, src.data(), 50, src.roi(), counts.data(), uint8_t(10), uint8_t(9)), -7);
    EXPECT_EQ(call(ruxiCountInRange_8u_C1R, src.data(), 50, src.roi(), counts.data(), uint8_t(10), uint8_t(10)), 0);
    int expected = 0;
    for (int i = 0; i < 200; i++) expected += src.get(i % 50, i / 50) == 10;
    EXPECT_EQ(counts.get(0), expected);
}

TEST_P(Compare, nanBounds)
{
    const Image<float> src(Shape{33, 2}, 1, ordinary<float>);
    const Image<int32_t> counts(vectorOf(1));
    const FloatBits nan{0x7FC00000};
    const bool refused = level() == Level::px || level() == Level::m6;
    for (int which = 0; which < 2; which++) {
        counts.row(0)[0] = 99;
        const ruxStatus status =
            which ? call(ruxiCountInRange_32f_C1R, src.data(), 132, src.roi(), counts.data(), nan, FloatBits{one})
                  : call(ruxiCountInRange_32f_C1R, src.data(), 132, src.roi(), counts.data(), FloatBits{one}, nan);
        EXPECT_EQ(status, refused ? -7 : 0);
        if (!refused) {
            EXPECT_EQ(counts.get(0), 0);
        }
    }
}

// A long row: counts within a row are exact up to 524287 pixels.
TEST_P(Compare, longRows)
{
    const Image<uint8_t> src(Shape{524287, 1}, 1, constant(uint8_t(255)));
    const Image<int32_t> counts(vectorOf(1));
    EXPECT_EQ(call(ruxiCountInRange_8u_C1R, src.data(), 524287, src.roi(), counts.data(), uint8_t(255), uint8_t(255)), 0);
    EXPECT_EQ(counts.get(0), 524287);
}

TEST_P(Compare, sumOfAMillion)
{
    const Image<uint8_t> src(Shape{1000, 1000}, 1, constant(uint8_t(255)));
    const Image<double> sum(vectorOf(1));
    EXPECT_EQ(call(ruxiSum_8u_C1R, src.data(), 1000, src.roi(), sum.data()), 0);
    EXPECT_EQ(sum.get(0), 255000000.0);
}

TEST_P(Compare, maximumOfMinusInfinity)
{
    const Image<float> src(Shape{37, 3}, 1, constant(-std::numeric_limits<float>::infinity()));
    const Image<float> max(vectorOf(1));
    EXPECT_EQ(call(ruxiMax_32f_C1R, src.data(), src.step(), src.roi(), max.data()), 0);
    const bool lanes = level() == Level::a6 || level() == Level::w7;
    EXPECT_EQ(max.get(0), lanes ? -3.4028234663852886e+38f : -std::numeric_limits<float>::infinity());
}

// A NaN in the middle is passed over by the scalar levels; one in the first element stays; at m6 one that begins a
// later row hides that row, for the maximum is of row results.
TEST_P(Compare, maximumAndNanAtTheScalarLevels)
{
    if (level() == Level::a6 || level() == Level::w7) return;
    Image<float> src(Shape{5, 3}, 1, constant(1.0f));
    const Image<float> max(vectorOf(1));
    const float nan = std::numeric_limits<float>::quiet_NaN();
    src.set(2, 1, nan);
    src.set(4, 1, 7.0f);
    EXPECT_EQ(call(ruxiMax_32f_C1R, src.data(), src.step(), src.roi(), max.data()), 0);
    EXPECT_EQ(max.get(0), 7.0f);
    src.set(0, 1, nan);
    EXPECT_EQ(call(ruxiMax_32f_C1R, src.data(), src.step(), src.roi(), max.data()), 0);
    EXPECT_EQ(max.get(0), level() == Level::m6 ? 1.0f : 7.0f);
    src.set(0, 0, nan);
    EXPECT_EQ(call(ruxiMax_32f_C1R, src.data(), src.step(), src.roi(), max.data()), 0);
    EXPECT_NE(max.get(0), max.get(0));
}

}
