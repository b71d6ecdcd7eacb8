// Thresholds to a band: every form against its model, and what all element types have in common.
#include "model/threshold.h"
#include "ruxlib.h"
#include "support/family.h"
#include "threshold_band.h"

namespace rux::test {

RUX_FAMILY(Threshold, "threshold");

template <class T>
auto scalars()
{
    return [](Case& c, const auto& compare) {
        const auto src = c.image<T>(1, pixels<T>);
        const auto dst = c.image<T>();
        const Band<T> band(c.random);
        compare(src, src.step(), dst, dst.step(), c.roi(), band.scalar(0), band.scalar(1), band.scalar(2),
                band.scalar(3));
    };
}

template <class T>
auto scalarsInPlace()
{
    return [](Case& c, const auto& compare) {
        const auto srcDst = c.image<T>(1, pixels<T>);
        const Band<T> band(c.random);
        compare(srcDst, srcDst.step(), c.roi(), band.scalar(0), band.scalar(1), band.scalar(2), band.scalar(3));
    };
}

template <class T>
auto arrays(int channels)
{
    return [=](Case& c, const auto& compare) {
        const auto src = c.image<T>(channels, pixels<T>);
        const auto dst = c.image<T>(channels);
        const Band<T> band(c.random);
        const auto thresholdLT = c.vector<T>(3, band.array(0)), valueLT = c.vector<T>(3, band.array(1));
        const auto thresholdGT = c.vector<T>(3, band.array(2)), valueGT = c.vector<T>(3, band.array(3));
        compare(src, src.step(), dst, dst.step(), c.roi(), thresholdLT, valueLT, thresholdGT, valueGT);
    };
}

template <class T>
auto arraysInPlace(int channels)
{
    return [=](Case& c, const auto& compare) {
        const auto srcDst = c.image<T>(channels, pixels<T>);
        const Band<T> band(c.random);
        const auto thresholdLT = c.vector<T>(3, band.array(0)), valueLT = c.vector<T>(3, band.array(1));
        const auto thresholdGT = c.vector<T>(3, band.array(2)), valueGT = c.vector<T>(3, band.array(3));
        compare(srcDst, srcDst.step(), c.roi(), thresholdLT, valueLT, thresholdGT, valueGT);
    };
}

TEST_P(Threshold, ruxiThreshold_LTValGTVal_8u_C1R)
{
    sweep(RUX_OPERATION(ruxiThreshold_LTValGTVal_8u_C1R), imageSweep(), scalars<uint8_t>());
}

TEST_P(Threshold, ruxiThreshold_LTValGTVal_8u_C3R)
{
    sweep(RUX_OPERATION(ruxiThreshold_LTValGTVal_8u_C3R), imageSweep(), arrays<uint8_t>(3));
}

TEST_P(Threshold, ruxiThreshold_LTValGTVal_8u_AC4R)
{
    sweep(RUX_OPERATION(ruxiThreshold_LTValGTVal_8u_AC4R), imageSweep(), arrays<uint8_t>(4));
}

TEST_P(Threshold, ruxiThreshold_LTValGTVal_8u_C1IR)
{
    sweep(RUX_OPERATION(ruxiThreshold_LTValGTVal_8u_C1IR), imageSweep(), scalarsInPlace<uint8_t>());
}

TEST_P(Threshold, ruxiThreshold_LTValGTVal_8u_C3IR)
{
    sweep(RUX_OPERATION(ruxiThreshold_LTValGTVal_8u_C3IR), imageSweep(), arraysInPlace<uint8_t>(3));
}

TEST_P(Threshold, ruxiThreshold_LTValGTVal_8u_AC4IR)
{
    sweep(RUX_OPERATION(ruxiThreshold_LTValGTVal_8u_AC4IR), imageSweep(), arraysInPlace<uint8_t>(4));
}

TEST_P(Threshold, ruxiThreshold_LTValGTVal_16s_C1R)
{
    sweep(RUX_OPERATION(ruxiThreshold_LTValGTVal_16s_C1R), imageSweep(), scalars<int16_t>());
}

TEST_P(Threshold, ruxiThreshold_LTValGTVal_16s_C3R)
{
    sweep(RUX_OPERATION(ruxiThreshold_LTValGTVal_16s_C3R), imageSweep(), arrays<int16_t>(3));
}

TEST_P(Threshold, ruxiThreshold_LTValGTVal_16s_AC4R)
{
    sweep(RUX_OPERATION(ruxiThreshold_LTValGTVal_16s_AC4R), imageSweep(), arrays<int16_t>(4));
}

TEST_P(Threshold, ruxiThreshold_LTValGTVal_16s_C1IR)
{
    sweep(RUX_OPERATION(ruxiThreshold_LTValGTVal_16s_C1IR), imageSweep(), scalarsInPlace<int16_t>());
}

TEST_P(Threshold, ruxiThreshold_LTValGTVal_16s_C3IR)
{
    sweep(RUX_OPERATION(ruxiThreshold_LTValGTVal_16s_C3IR), imageSweep(), arraysInPlace<int16_t>(3));
}

TEST_P(Threshold, ruxiThreshold_LTValGTVal_16s_AC4IR)
{
    sweep(RUX_OPERATION(ruxiThreshold_LTValGTVal_16s_AC4IR), imageSweep(), arraysInPlace<int16_t>(4));
}

TEST_P(Threshold, ruxiThreshold_LTValGTVal_32f_C1R)
{
    sweep(RUX_OPERATION(ruxiThreshold_LTValGTVal_32f_C1R), imageSweep(), scalars<float>());
}

TEST_P(Threshold, ruxiThreshold_LTValGTVal_32f_C3R)
{
    sweep(RUX_OPERATION(ruxiThreshold_LTValGTVal_32f_C3R), imageSweep(), arrays<float>(3));
}

TEST_P(Threshold, ruxiThreshold_LTValGTVal_32f_AC4R)
{
    sweep(RUX_OPERATION(ruxiThreshold_LTValGTVal_32f_AC4R), imageSweep(), arrays<float>(4));
}

TEST_P(Threshold, ruxiThreshold_LTValGTVal_32f_C1IR)
{
    sweep(RUX_OPERATION(ruxiThreshold_LTValGTVal_32f_C1IR), imageSweep(), scalarsInPlace<float>());
}

TEST_P(Threshold, ruxiThreshold_LTValGTVal_32f_C3IR)
{
    sweep(RUX_OPERATION(ruxiThreshold_LTValGTVal_32f_C3IR), imageSweep(), arraysInPlace<float>(3));
}

TEST_P(Threshold, ruxiThreshold_LTValGTVal_32f_AC4IR)
{
    sweep(RUX_OPERATION(ruxiThreshold_LTValGTVal_32f_AC4IR), imageSweep(), arraysInPlace<float>(4));
}

TEST_P(Threshold, ruxiThreshold_LTVal_32f_C1IR)
{
    sweep(RUX_OPERATION(ruxiThreshold_LTVal_32f_C1IR), imageSweep(), [](Case& c, const auto& compare) {
        const auto srcDst = c.image<float>(1, pixels<float>);
        const Band<float> band(c.random);
        compare(srcDst, srcDst.step(), c.roi(), band.scalar(0), band.scalar(1));
    });
}

TEST_P(Threshold, everyByteAndEveryWordAroundTheThresholds)
{
    const Image<uint8_t> bytes(Shape{256, 1}), bytesOut(Shape{256, 1});
    for (int x = 0; x < 256; x++) bytes.row(0)[x] = static_cast<uint8_t>(x);
    for (uint8_t lower : {0, 1, 99, 127, 128, 254, 255}) {
        for (uint8_t upper : {0, 1, 99, 127, 128, 254, 255}) {
            agree(RUX_OPERATION(ruxiThreshold_LTValGTVal_8u_C1R), bytes, bytes.step(), bytesOut, bytes.step(),
                  bytes.roi(), lower, uint8_t(7), upper, uint8_t(201));
        }
    }
    Image<int16_t> words(Shape{65536, 1});
    const Image<int16_t> wordsOut(Shape{65536, 1});
    for (int x = 0; x < 65536; x++) words.set(x, 0, static_cast<int16_t>(x));
    for (int16_t lower : {-32768, -32767, -1, 0, 1000, 32767}) {
        for (int16_t upper : {-32768, -1, 0, 1, 1000, 32766, 32767}) {
            agree(RUX_OPERATION(ruxiThreshold_LTValGTVal_16s_C1R), words, words.step(), wordsOut, words.step(),
                  words.roi(), lower, int16_t(-7), upper, int16_t(300));
        }
    }
}

// Source and destination may be one image in the forms with two.
TEST_P(Threshold, ontoTheSource)
{
    const Image<float> limits(vectorOf(3), 1, constant(1.0f)), values(vectorOf(3), 2, uniform<float>(5, 9));
    for (int width : {1, 4, 7, 33, 90}) {
        const Image<uint8_t> bytes(Shape{width, 2}, 3);
        agree(RUX_OPERATION(ruxiThreshold_LTValGTVal_8u_C1R), bytes, bytes.step(), bytes, bytes.step(), bytes.roi(),
              uint8_t(80), uint8_t(1), uint8_t(160), uint8_t(2));
        const Image<float> floats(Shape{width, 2, 4}, 4);
        agree(RUX_OPERATION(ruxiThreshold_LTValGTVal_32f_AC4R), floats, floats.step(), floats, floats.step(),
              floats.roi(), limits, values, limits, values);
    }
}

TEST_P(Threshold, equalThresholds)
{
    const Image<int16_t> src(Shape{99, 2}, 1, uniform<int16_t>(-2, 2)), dst(Shape{99, 2}, 2);
    EXPECT_EQ(call(ruxiThreshold_LTValGTVal_16s_C1R, src.data(), src.step(), dst.data(), dst.step(), dst.roi(), 0, -77,
                   0, 88), 0);
    for (int x = 0; x < 99; x++) {
        const int value = src.get(x, 1);
        EXPECT_EQ(dst.get(x, 1), value < 0 ? -77 : value > 0 ? 88 : 0);
    }
}

TEST_P(Threshold, thresholdsOutOfOrder)
{
    const Image<uint8_t> src(Shape{50, 2}, 1), dst(Shape{50, 2}, 2);
    const auto before = dst.clone();
    EXPECT_EQ(call(ruxiThreshold_LTValGTVal_8u_C1R, src.data(), 50, dst.data(), 50, dst.roi(), 20, 0, 10, 255), -18);
    EXPECT_TRUE(dst.equals(before));
}

TEST_P(Threshold, oneChannelOutOfOrder)
{
    const Image<int16_t> src(Shape{20, 2, 3}, 1), dst(Shape{20, 2, 3}, 2), values(vectorOf(3), 3);
    const Image<int16_t> lower(vectorOf(3), 4, constant(int16_t(10)));
    const auto before = dst.clone();
    for (int channel = 0; channel < 3; channel++) {
        Image<int16_t> upper(vectorOf(3), 5, constant(int16_t(20)));
        upper.set(channel, 0, 9);
        EXPECT_EQ(call(ruxiThreshold_LTValGTVal_16s_C3R, src.data(), src.step(), dst.data(), dst.step(), dst.roi(),
                       lower.data(), values.data(), upper.data(), values.data()), -18);
        EXPECT_TRUE(dst.equals(before));
        upper.set(channel, 0, 10);
        EXPECT_EQ(call(ruxiThreshold_LTValGTVal_16s_C3IR, dst.data(), dst.step(), ruxiSize{1, 1}, lower.data(),
                       values.data(), upper.data(), values.data()), 0);
        std::memcpy(dst.data(), before.data(), 6);
    }
}

TEST_P(Threshold, fourthChannelIsTheDestinations)
{
    const Image<uint8_t> src(Shape{61, 2, 4}, 1, constant(uint8_t(200))), dst(Shape{61, 2, 4}, 2, anyBits<uint8_t>);
    const auto before = dst.clone();
    const Image<uint8_t> limits(vectorOf(3), 3, constant(uint8_t(100))), values(vectorOf(3), 4, constant(uint8_t(55)));
    EXPECT_EQ(call(ruxiThreshold_LTValGTVal_8u_AC4R, src.data(), src.step(), dst.data(), dst.step(), dst.roi(),
                   limits.data(), values.data(), limits.data(), values.data()), 0);
    for (int i = 0; i < 4 * 61; i++) EXPECT_EQ(dst.get(i, 1), i % 4 == 3 ? before.get(i, 1) : 55) << i;
}

TEST_P(Threshold, looksAtArraysBehindStrides)
{
    const Image<uint8_t> src(Shape{8, 2, 4}, 1), dst(Shape{8, 2, 4}, 2), lower(vectorOf(3), 3, constant(uint8_t(9)));
    uint8_t* const none = nullptr;
    for (const auto operation : {ruxiThreshold_LTValGTVal_8u_C3R, ruxiThreshold_LTValGTVal_8u_AC4R}) {
        const auto status = [&](const uint8_t* from, int32_t step, ruxiSize size, uint8_t* valueGT) {
            return call(operation, from, step, dst.data(), 32, size, lower.data(), lower.data(), lower.data(), valueGT);
        };
        EXPECT_EQ(status(none, 0, {0, 2}, none), -8);
        EXPECT_EQ(status(src.data(), 0, {0, 2}, none), -6);
        EXPECT_EQ(status(src.data(), 0, {8, 2}, none), -14);
        EXPECT_EQ(status(src.data(), 32, {8, 2}, none), -8);
    }
}

// All six forms of a type; in the second round the thresholds are out of order in the last channel.
template <class T, class C1, class C3, class C1I, class C3I>
void refuseForms(FamilyTest& test, const C1& c1, const C3& c3, const C3& ac4, const C1I& c1i, const C3I& c3i,
                 const C3I& ac4i)
{
    const Image<T> src(Shape{9, 3, 4}, 1, uniform<T>(0, 100)), dst(Shape{9, 3, 4}, 2, uniform<T>(0, 100));
    const Image<T> lower(vectorOf(3), 3, constant(T(10))), values(vectorOf(3), 4, constant(T(33)));
    const ruxiSize roi = dst.roi();
    const auto step = dst.step();
    const auto upperScalar = wrongly<T>(T(20), {T(10), T(9), T(0)});
    test.refuse(c1, src, step, dst, step, roi, T(10), T(33), upperScalar, T(44));
    test.refuse(c1i, dst, step, roi, T(10), T(33), upperScalar, T(44));
    for (int last : {20, 9}) {
        Image<T> upper(vectorOf(3), 5, constant(T(20)));
        upper.set(2, 0, static_cast<T>(last));
        for (const auto& form : {c3, ac4}) {
            test.refuse(form, src, step, dst, step, roi, lower, values, upper, values.clone());
        }
        for (const auto& form : {c3i, ac4i}) test.refuse(form, dst, step, roi, lower, values, upper, values.clone());
    }
}

TEST_P(Threshold, refusesWrongArguments8u)
{
    refuseForms<uint8_t>(
        *this, RUX_OPERATION(ruxiThreshold_LTValGTVal_8u_C1R),
        RUX_OPERATION(ruxiThreshold_LTValGTVal_8u_C3R), RUX_OPERATION(ruxiThreshold_LTValGTVal_8u_AC4R),
        RUX_OPERATION(ruxiThreshold_LTValGTVal_8u_C1IR),
        RUX_OPERATION(ruxiThreshold_LTValGTVal_8u_C3IR), RUX_OPERATION(ruxiThreshold_LTValGTVal_8u_AC4IR));
}

TEST_P(Threshold, refusesWrongArguments16s)
{
    refuseForms<int16_t>(
        *this, RUX_OPERATION(ruxiThreshold_LTValGTVal_16s_C1R),
        RUX_OPERATION(ruxiThreshold_LTValGTVal_16s_C3R), RUX_OPERATION(ruxiThreshold_LTValGTVal_16s_AC4R),
        RUX_OPERATION(ruxiThreshold_LTValGTVal_16s_C1IR),
        RUX_OPERATION(ruxiThreshold_LTValGTVal_16s_C3IR), RUX_OPERATION(ruxiThreshold_LTValGTVal_16s_AC4IR));
}

TEST_P(Threshold, refusesWrongArguments32f)
{
    refuseForms<float>(
        *this, RUX_OPERATION(ruxiThreshold_LTValGTVal_32f_C1R),
        RUX_OPERATION(ruxiThreshold_LTValGTVal_32f_C3R), RUX_OPERATION(ruxiThreshold_LTValGTVal_32f_AC4R),
        RUX_OPERATION(ruxiThreshold_LTValGTVal_32f_C1IR),
        RUX_OPERATION(ruxiThreshold_LTValGTVal_32f_C3IR), RUX_OPERATION(ruxiThreshold_LTValGTVal_32f_AC4IR));
}

TEST_P(Threshold, refusesWrongArgumentsOfTheLowerThreshold)
{
    const Image<float> srcDst(Shape{9, 3}, 1);
    refuse(RUX_OPERATION(ruxiThreshold_LTVal_32f_C1IR), srcDst, srcDst.step(), srcDst.roi(), 1.0f, 2.0f);
    EXPECT_EQ(call(ruxiThreshold_LTVal_32f_C1IR, srcDst.data(), 0, ruxiSize{9, 0}, 1.0f, 2.0f), -6);
}

}
