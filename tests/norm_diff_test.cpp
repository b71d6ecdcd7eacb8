// L1 norms of differences, against the models and the contract's numbers.
#include <cmath>
#include <limits>

#include "float_bits.h"
#include "model/norm_diff.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(NormDiff, "norm_diff");

constexpr int32_t hintAccurate = 2;

// Finite floats of many sizes: sums of them need rounding, so their order shows.
static void manySizes(Random& random, float* row, int count)
{
    for (int i = 0; i < count; i++) {
        const uint32_t bits = (random.below(1u << 31) & 0x807FFFFF) | (110 + random.below(30)) << 23;
        std::memcpy(row + i, &bits, sizeof bits);
    }
}

template <class T>
static auto integerCase(int channels, int results)
{
    return [=](Case& c, const auto& compare) {
        const auto src1 = c.image<T>(channels);
        const auto src2 = c.image<T>(channels);
        const auto norm = c.vector<double>(results);
        compare(src1, src1.step(), src2, src2.step(), c.roi(), norm);
    };
}

#define RUX_INTEGER_NORM(type, T, layout, channels, results)                                       \
    TEST_P(NormDiff, ruxiNormDiff_L1_##type##_##layout)                                            \
    {                                                                                              \
        sweep(RUX_OPERATION(ruxiNormDiff_L1_##type##_##layout), imageSweep(),                      \
              integerCase<T>(channels, results));                                            \
    }

RUX_INTEGER_NORM(8u, uint8_t, C1R, 1, 1)
RUX_INTEGER_NORM(8u, uint8_t, C3R, 3, 3)
RUX_INTEGER_NORM(8u, uint8_t, C4R, 4, 4)
RUX_INTEGER_NORM(8u, uint8_t, AC4R, 4, 3)
RUX_INTEGER_NORM(16s, int16_t, C1R, 1, 1)
RUX_INTEGER_NORM(16s, int16_t, C3R, 3, 3)
RUX_INTEGER_NORM(16s, int16_t, C4R, 4, 4)
RUX_INTEGER_NORM(16s, int16_t, AC4R, 4, 3)

// Accurate on all levels, and the fast form where it is in double too; then the fast form on numbers that it sums
// without rounding.
static auto floatCase(Level level, int channels, int results)
{
    return [=](Case& c, const auto& compare) {
        const bool fastIsDouble = level == px || level == m6;
        const auto src1 = c.image<float>(channels, manySizes);
        const auto src2 = c.image<float>(channels, manySizes);
        const auto norm = c.vector<double>(results);
        compare(src1, src1.step(), src2, src2.step(), c.roi(), norm, hintAccurate);
        if (fastIsDouble) compare(src1, src1.step(), src2, src2.step(), c.roi(), norm, int32_t(0));
        const auto whole1 = c.image<float>(channels, wholeNumbers(-500, 500));
        const auto whole2 = c.image<float>(channels, wholeNumbers(-500, 500));
        const int32_t hint = c.random.oneIn(2) ? 1 : static_cast<int32_t>(c.random.next()) & ~2;
        compare(whole1, whole1.step(), whole2, whole2.step(), c.roi(), norm, hint);
    };
}

#define RUX_FLOAT_NORM(layout, channels, results)                                                       \
    TEST_P(NormDiff, ruxiNormDiff_L1_32f_##layout)                                                      \
    {                                                                                                   \
        sweep(RUX_OPERATION(ruxiNormDiff_L1_32f_##layout), imageSweep(), floatCase(level(), channels, results)); \
    }

RUX_FLOAT_NORM(C1R, 1, 1)
RUX_FLOAT_NORM(C3R, 3, 3)
RUX_FLOAT_NORM(C4R, 4, 4)
RUX_FLOAT_NORM(AC4R, 4, 3)

static Image<uint8_t> maskOf(Case& c)
{
    auto mask = c.image<uint8_t>(1);
    for (int y = 0; y < mask.height(); y++) {
        for (int x = 0; x < mask.width(); x++) {
            if (c.random.oneIn(2)) mask.set(x, y, 0);
        }
    }
    return mask;
}

TEST_P(NormDiff, ruxiNormDiff_L1_8u_C1MR)
{
    sweep(RUX_OPERATION(ruxiNormDiff_L1_8u_C1MR), imageSweep(), [](Case& c, const auto& compare) {
        const auto src1 = c.image<uint8_t>();
        const auto src2 = c.image<uint8_t>();
        const auto mask = maskOf(c);
        const auto norm = c.vector<double>(1);
        compare(src1, src1.step(), src2, src2.step(), mask, mask.step(), c.roi(), norm);
    });
}

TEST_P(NormDiff, ruxiNormDiff_L1_32f_C1MR)
{
    const bool isDouble = level() == px || level() == m6;
    sweep(RUX_OPERATION(ruxiNormDiff_L1_32f_C1MR), imageSweep().strides(4), [&](Case& c, const auto& compare) {
        const Fill<float> contents = isDouble ? Fill<float>(manySizes) : wholeNumbers(-100, 100);
        const auto src1 = c.image<float>(1, contents);
        const auto src2 = c.image<float>(1, contents);
        const auto mask = maskOf(c);
        const auto norm = c.vector<double>(1);
        compare(src1, src1.step(), src2, src2.step(), mask, mask.step(), c.roi(), norm);
    });
}

TEST_P(NormDiff, refusesWrongArguments)
{
    const Image<uint8_t> bytes1(Shape{7, 2, 4}), bytes2(Shape{7, 2, 4}, 2), mask(Shape{7, 2}, 3);
    const Image<int16_t> words1(Shape{7, 2, 4}), words2(Shape{7, 2, 4}, 2);
    const Image<float> floats1(Shape{7, 2, 4}, 1, wholeNumbers(0, 9)), floats2(Shape{7, 2, 4}, 2, wholeNumbers(0, 9));
    const Image<double> norm(vectorOf(4));
    const ruxiSize roi = mask.roi();
    const Step b = bytes1.step(), w = words1.step(), f = floats1.step();
    refuse(RUX_OPERATION(ruxiNormDiff_L1_8u_C1R), bytes1, b, bytes2, b, roi, norm);
    refuse(RUX_OPERATION(ruxiNormDiff_L1_8u_C3R), bytes1, b, bytes2, b, roi, norm);
    refuse(RUX_OPERATION(ruxiNormDiff_L1_8u_C4R), bytes1, b, bytes2, b, roi, norm);
    refuse(RUX_OPERATION(ruxiNormDiff_L1_8u_AC4R), bytes1, b, bytes2, b, roi, norm);
    refuse(RUX_OPERATION(ruxiNormDiff_L1_16s_C1R), words1, w, words2, w, roi, norm);
    refuse(RUX_OPERATION(ruxiNormDiff_L1_16s_C3R), words1, w, words2, w, roi, norm);
    refuse(RUX_OPERATION(ruxiNormDiff_L1_16s_C4R), words1, w, words2, w, roi, norm);
    refuse(RUX_OPERATION(ruxiNormDiff_L1_16s_AC4R), words1, w, words2, w, roi, norm);
    refuse(RUX_OPERATION(ruxiNormDiff_L1_32f_C1R), floats1, f, floats2, f, roi, norm, hintAccurate);
    refuse(RUX_OPERATION(ruxiNormDiff_L1_32f_C3R), floats1, f, floats2, f, roi, norm, 0);
    refuse(RUX_OPERATION(ruxiNormDiff_L1_32f_C4R), floats1, f, floats2, f, roi, norm, 1);
    refuse(RUX_OPERATION(ruxiNormDiff_L1_32f_AC4R), floats1, f, floats2, f, roi, norm, hintAccurate);
    refuse(RUX_OPERATION(ruxiNormDiff_L1_8u_C1MR), bytes1, b, bytes2, b, mask, mask.step(), roi, norm);
    const auto odd = wrongly<int32_t>(f, {0, -4, 113, 114, 111, 6});
    refuse(RUX_OPERATION(ruxiNormDiff_L1_32f_C1MR), floats1, odd, floats2, odd, mask, mask.step(), roi, norm);
}

TEST_P(NormDiff, aStrideThatIsNoWholeNumberOfFloats)
{
    const Image<float> src(Shape{1, 1}, 1, wholeNumbers(1, 9));
    const Image<uint8_t> mask(Shape{1, 1}), bytes(Shape{1, 1});
    const Image<double> norm(vectorOf(1));
    const ruxiSize roi = {1, 1};
    EXPECT_EQ(call(ruxiNormDiff_L1_32f_C1MR, src.data(), 6, src.data(), 4, mask.data(), 1, roi, norm.data()), -108);
    EXPECT_EQ(call(ruxiNormDiff_L1_32f_C1MR, src.data(), 6, src.data(), 4, mask.data(), 0, roi, norm.data()), -14);
    EXPECT_EQ(call(ruxiNormDiff_L1_8u_C1MR, bytes.data(), 3, bytes.data(), 1, mask.data(), 1, roi, norm.data()), 0);
    EXPECT_EQ(call(ruxiNormDiff_L1_32f_C1R, src.data(), 7, src.data(), 5, roi, norm.data(), 0), 0);
}

TEST_P(NormDiff, sixteenBitDifferencesCountInFull)
{
    for (const int width : {1, 7, 8, 40, 16385, 40000}) {
        const Image<int16_t> low(Shape{width, 1}, 1, constant(int16_t(-32768)));
        const Image<int16_t> high(Shape{width, 1}, 1, constant(int16_t(32767)));
        const Image<double> norm(vectorOf(1));
        // px adds a row in 32-bit integers: exact while the row's sum stays below 2^31.
        if (level() == px && width > 32768) continue;
        EXPECT_EQ(call(ruxiNormDiff_L1_16s_C1R, low.data(), low.step(), high.data(), high.step(), low.roi(), norm.data()),
                  0);
        EXPECT_EQ(norm.get(0), 65535.0 * width);
    }
}

TEST_P(NormDiff, theFourthChannelOfAC4DoesNotCount)
{
    const Image<uint8_t> src1(Shape{21, 3, 4}, 1, constant(uint8_t(9)));
    const auto src2 = src1.clone();
    for (int y = 0; y < 3; y++) {
        for (int x = 0; x < 21; x++) src2.row(y)[4 * x + 3] = 200;
    }
    const Image<double> norm(vectorOf(4), 1, constant(-1.0));
    EXPECT_EQ(call(ruxiNormDiff_L1_8u_AC4R, src1.data(), 84, src2.data(), 84, src1.roi(), norm.data()), 0);
    for (int c = 0; c < 3; c++) EXPECT_EQ(norm.get(c), 0.0);
    EXPECT_EQ(norm.get(3), -1.0) << "AC4 has three results";
    EXPECT_EQ(call(ruxiNormDiff_L1_8u_C4R, src1.data(), 84, src2.data(), 84, src1.roi(), norm.data()), 0);
    EXPECT_EQ(norm.get(3), 191.0 * 63);
}

TEST_P(NormDiff, aMaskOfZeros)
{
    const Image<float> src1(Shape{19, 2}, 1, extremes<float>), src2(Shape{19, 2}, 2, extremes<float>);
    const Image<uint8_t> mask(Shape{19, 2}, 1, constant(uint8_t(0)));
    const Image<double> norm(vectorOf(1), 1, constant(5.0));
    EXPECT_EQ(call(ruxiNormDiff_L1_32f_C1MR, src1.data(), 76, src2.data(), 76, mask.data(), 19, mask.roi(), norm.data()),
              0);
    EXPECT_EQ(norm.get(0), 0.0);
}

TEST_P(NormDiff, nanMakesTheResultNan)
{
    for (const int32_t hint : {0, 1, 2}) {
        for (int place = 0; place < 46; place++) {
            Image<float> src(Shape{23, 2}, 1, wholeNumbers(0, 5));
            const auto other = src.clone();
            src.set(place % 23, place / 23, std::numeric_limits<float>::quiet_NaN());
            const Image<double> norm(vectorOf(1));
            call(ruxiNormDiff_L1_32f_C1R, src.data(), 92, other.data(), 92, src.roi(), norm.data(), hint);
            EXPECT_TRUE(std::isnan(norm.get(0))) << place;
            const Image<uint8_t> mask(Shape{23, 2}, 1, constant(uint8_t(1)));
            call(ruxiNormDiff_L1_32f_C1MR, src.data(), 92, other.data(), 92, mask.data(), 23, src.roi(), norm.data());
            EXPECT_TRUE(std::isnan(norm.get(0))) << place;
            mask.row(place / 23)[place % 23] = 0;
            call(ruxiNormDiff_L1_32f_C1MR, src.data(), 92, other.data(), 92, mask.data(), 23, src.roi(), norm.data());
            EXPECT_EQ(norm.get(0), 0.0) << place;
        }
    }
}

// 2^24 and 1 in one row need 25 bits: the fast form rounds the row's total to single precision at a6 and w7, and adds
// row totals in double; the masked form keeps one single-precision total over the whole image.
TEST_P(NormDiff, whereSinglePrecisionShows)
{
    const bool single = level() == a6 || level() == w7;
    const Image<float> zeros(Shape{2, 2}, 1, constant(0.0f));
    Image<float> src(Shape{2, 2}, 1, constant(0.0f));
    const Image<double> norm(vectorOf(1));
    const auto fast = [&](int32_t hint) {
        call(ruxiNormDiff_L1_32f_C1R, src.data(), 8, zeros.data(), 8, src.roi(), norm.data(), hint);
        return norm.get(0);
    };
    src.set(0, 0, 16777216.0f);
    src.set(1, 0, 1.0f);
    EXPECT_EQ(fast(0), single ? 16777216.0 : 16777217.0);
    EXPECT_EQ(fast(hintAccurate), 16777217.0);
    src.set(1, 0, 0.0f);
    src.set(1, 1, 1.0f);
    EXPECT_EQ(fast(1), 16777217.0) << "row totals are added in double";
    const Image<uint8_t> mask(Shape{2, 2}, 1, constant(uint8_t(1)));
    call(ruxiNormDiff_L1_32f_C1MR, src.data(), 8, zeros.data(), 8, mask.data(), 2, src.roi(), norm.data());
    EXPECT_EQ(norm.get(0), single ? 16777216.0 : 16777217.0);
}

// The fast form stays within the rounding of as many single-precision additions as a row has.
TEST_P(NormDiff, theFastFormIsClose)
{
    const Image<float> src1(Shape{501, 5, 3}, 1, manySizes), src2(Shape{501, 5, 3}, 2, manySizes);
    const Image<double> fast(vectorOf(3)), accurate(vectorOf(3));
    call(ruxiNormDiff_L1_32f_C3R, src1.data(), src1.step(), src2.data(), src2.step(), src1.roi(), fast.data(), 1);
    call(ruxiNormDiff_L1_32f_C3R, src1.data(), src1.step(), src2.data(), src2.step(), src1.roi(), accurate.data(), 2);
    for (int c = 0; c < 3; c++) EXPECT_NEAR(fast.get(c) / accurate.get(c), 1.0, 501 * 0x1p-24) << c;
}

}
