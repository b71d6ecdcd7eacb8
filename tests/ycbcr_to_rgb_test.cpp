// YCbCr and YUV to RGB, against the models and the contract's numbers.
#include "colour_images.h"
#include "model/ycbcr.h"
#include "ruxlib.h"

namespace rux::test {

RUX_FAMILY(YcbcrToRgb, "ycbcr_to_rgb");

static bool hasVectors(Level level)
{
    return level == a6 || level == w7;
}

template <class Op>
static void sweepInterleaved(FamilyTest& test, const Op& operation)
{
    test.sweep(operation, imageSweep(), [](Case& c, const auto& compare) {
        const auto src = c.image<uint8_t>(2);
        const auto dst = c.image<uint8_t>(3);
        compare(src, src.step(), dst, dst.step(), c.roi());
    });
}

template <class Op>
static void sweepPlanes(FamilyTest& test, const Op& operation, int rowShift, int channels = 3)
{
    test.sweep(operation, imageSweep(), [&](Case& c, const auto& compare) {
        const auto src = planesOf(c, rowShift);
        const auto dst = c.image<uint8_t>(channels);
        compare(src, src.steps(), dst, dst.step(), c.roi());
    });
}

TEST_P(YcbcrToRgb, ruxiYCbCr422ToRGB_8u_C2C3R) { sweepInterleaved(*this, RUX_OPERATION(ruxiYCbCr422ToRGB_8u_C2C3R)); }
TEST_P(YcbcrToRgb, ruxiYUV422ToRGB_8u_C2C3R) { sweepInterleaved(*this, RUX_OPERATION(ruxiYUV422ToRGB_8u_C2C3R)); }
TEST_P(YcbcrToRgb, ruxiYCbCr422ToRGB_8u_P3C3R) { sweepPlanes(*this, RUX_OPERATION(ruxiYCbCr422ToRGB_8u_P3C3R), 0); }
TEST_P(YcbcrToRgb, ruxiYCbCr420ToRGB_8u_P3C3R) { sweepPlanes(*this, RUX_OPERATION(ruxiYCbCr420ToRGB_8u_P3C3R), 1); }
TEST_P(YcbcrToRgb, ruxiYUV422ToRGB_8u_P3C3R) { sweepPlanes(*this, RUX_OPERATION(ruxiYUV422ToRGB_8u_P3C3R), 0); }
TEST_P(YcbcrToRgb, ruxiYUV422ToRGB_8u_P3AC4R) { sweepPlanes(*this, RUX_OPERATION(ruxiYUV422ToRGB_8u_P3AC4R), 0, 4); }

TEST_P(YcbcrToRgb, ruxiYUV420ToRGB_8u_P3C3)
{
    sweep(RUX_OPERATION(ruxiYUV420ToRGB_8u_P3C3), imageSweep().tightRows(), [](Case& c, const auto& compare) {
        const auto src = planesOf(c, 1);
        const auto dst = c.image<uint8_t>(3);
        compare(src, dst, c.roi());
    });
}

// Blocks of 8 and of 4 pixels, a pair, a lone pixel.
TEST_P(YcbcrToRgb, everyColourInterleaved)
{
    for (const int width : {15, 1}) {
        for (const bool lumaGiven : {false, true}) {
            const auto src = interleavedOfEveryColour(width, lumaGiven);
            const Image<uint8_t> dst(Shape{width, src.height(), 3});
            agree(RUX_OPERATION(ruxiYCbCr422ToRGB_8u_C2C3R), src, src.step(), dst, dst.step(), src.roi());
            agree(RUX_OPERATION(ruxiYUV422ToRGB_8u_C2C3R), src, src.step(), dst, dst.step(), src.roi());
        }
    }
}

TEST_P(YcbcrToRgb, everyColourInPlanes422)
{
    for (const bool lumaGiven : {false, true}) {
        const auto src = planesOfEveryColour(15, 0, lumaGiven);
        const ruxiSize roi = src[0].roi();
        const Image<uint8_t> dst(Shape{15, roi.height, 3}), four(Shape{15, roi.height, 4});
        agree(RUX_OPERATION(ruxiYCbCr422ToRGB_8u_P3C3R), src, src.steps(), dst, dst.step(), roi);
        agree(RUX_OPERATION(ruxiYUV422ToRGB_8u_P3C3R), src, src.steps(), dst, dst.step(), roi);
        agree(RUX_OPERATION(ruxiYUV422ToRGB_8u_P3AC4R), src, src.steps(), four, four.step(), roi);
    }
}

TEST_P(YcbcrToRgb, everyColourInPlanes420)
{
    for (const bool lumaGiven : {false, true}) {
        const auto src = planesOfEveryColour(7, 1, lumaGiven);
        const ruxiSize roi = src[0].roi();
        const Image<uint8_t> dst(Shape{7, roi.height, 3});
        agree(RUX_OPERATION(ruxiYCbCr420ToRGB_8u_P3C3R), src, src.steps(), dst, dst.step(), roi);
        agree(RUX_OPERATION(ruxiYUV420ToRGB_8u_P3C3), src, dst, roi);
    }
}

// A wide vector block may have constants in each of its lanes.
TEST_P(YcbcrToRgb, aMillionPixels)
{
    const ruxiSize roi{1023, 511};
    const auto filled = [&](int rowShift) {
        const Shape chroma = chromaShape(roi, rowShift);
        return Planes<uint8_t>(Image<uint8_t>(Shape{roi.width, roi.height}, 1, anyBits<uint8_t>),
                               Image<uint8_t>(chroma, 2, anyBits<uint8_t>), Image<uint8_t>(chroma, 3, anyBits<uint8_t>));
    };
    const Image<uint8_t> dst(Shape{roi.width, roi.height, 3}), four(Shape{roi.width, roi.height, 4});
    const auto half = filled(0), quarter = filled(1);
    const Image<uint8_t> interleaved(Shape{roi.width, roi.height, 2}, 4, anyBits<uint8_t>);
    agree(RUX_OPERATION(ruxiYCbCr422ToRGB_8u_C2C3R), interleaved, interleaved.step(), dst, dst.step(), roi);
    agree(RUX_OPERATION(ruxiYUV422ToRGB_8u_C2C3R), interleaved, interleaved.step(), dst, dst.step(), roi);
    agree(RUX_OPERATION(ruxiYCbCr422ToRGB_8u_P3C3R), half, half.steps(), dst, dst.step(), roi);
    agree(RUX_OPERATION(ruxiYUV422ToRGB_8u_P3C3R), half, half.steps(), dst, dst.step(), roi);
    agree(RUX_OPERATION(ruxiYUV422ToRGB_8u_P3AC4R), half, half.steps(), four, four.step(), roi);
    agree(RUX_OPERATION(ruxiYCbCr420ToRGB_8u_P3C3R), quarter, quarter.steps(), dst, dst.step(), roi);
    agree(RUX_OPERATION(ruxiYUV420ToRGB_8u_P3C3), quarter, dst, roi);
}

// Each plane on each place in a vector, on its own; a faulting page behind or before each.
TEST_P(YcbcrToRgb, alignmentsOfEachPlane)
{
    const ruxiSize roi{53, 3};
    uint64_t seed = 1;
    for (const Edge edge : {Edge::start, Edge::end}) {
        for (int offset = 0; offset < 16; offset++) {
            for (int plane = 0; plane < 4; plane++) {
                const auto at = [&](int number) { return Place{edge, number == plane ? offset : 0}; };
                for (const int rowShift : {0, 1}) {
                    const Shape chroma = chromaShape(roi, rowShift).withStep(32);
                    const Planes<uint8_t> src(Image<uint8_t>(Shape{53, 3}.withStep(64).at(at(0)), seed),
                                              Image<uint8_t>(chroma.at(at(1)), seed + 1),
                                              Image<uint8_t>(chroma.at(at(2)), seed + 2));
                    const Image<uint8_t> dst(Shape{53, 3, 3}.withStep(160).at(at(3)));
                    const Image<uint8_t> four(Shape{53, 3, 4}.withStep(224).at(at(3)));
                    seed += 3;
                    if (rowShift) {
                        agree(RUX_OPERATION(ruxiYCbCr420ToRGB_8u_P3C3R), src, src.steps(), dst, dst.step(), roi);
                    } else {
                        agree(RUX_OPERATION(ruxiYCbCr422ToRGB_8u_P3C3R), src, src.steps(), dst, dst.step(), roi);
                        agree(RUX_OPERATION(ruxiYUV422ToRGB_8u_P3C3R), src, src.steps(), dst, dst.step(), roi);
                        agree(RUX_OPERATION(ruxiYUV422ToRGB_8u_P3AC4R), src, src.steps(), four, four.step(), roi);
                    }
                }
            }
        }
    }
}

TEST_P(YcbcrToRgb, readsRowsThatOverlap)
{
    const ruxiSize roi{37, 9};
    const Image<uint8_t> dst(Shape{37, 9, 3}), four(Shape{37, 9, 4});
    for (const int step : {1, 2, 5}) {
        const Image<uint8_t> interleaved(Shape{37, 9, 2}.withStep(step), 3);
        agree(RUX_OPERATION(ruxiYCbCr422ToRGB_8u_C2C3R), interleaved, interleaved.step(), dst, dst.step(), roi);
        agree(RUX_OPERATION(ruxiYUV422ToRGB_8u_C2C3R), interleaved, interleaved.step(), dst, dst.step(), roi);
        for (const int rowShift : {0, 1}) {
            const Shape chroma = chromaShape(roi, rowShift).withStep(step);
            const Planes<uint8_t> src(Image<uint8_t>(Shape{37, 9}.withStep(step), 1), Image<uint8_t>(chroma, 2),
                                      Image<uint8_t>(chroma.withStep(step + 1), 3));
            if (rowShift) {
                agree(RUX_OPERATION(ruxiYCbCr420ToRGB_8u_P3C3R), src, src.steps(), dst, dst.step(), roi);
            } else {
                agree(RUX_OPERATION(ruxiYCbCr422ToRGB_8u_P3C3R), src, src.steps(), dst, dst.step(), roi);
                agree(RUX_OPERATION(ruxiYUV422ToRGB_8u_P3C3R), src, src.steps(), dst, dst.step(), roi);
                agree(RUX_OPERATION(ruxiYUV422ToRGB_8u_P3AC4R), src, src.steps(), four, four.step(), roi);
            }
        }
    }
}

// Any positive stride is a right one: a single row needs none.
TEST_P(YcbcrToRgb, stridesOfOne)
{
    const ruxiSize roi{21, 1};
    const Image<uint8_t> interleaved(Shape{21, 1, 2}), dst(Shape{21, 1, 3}), four(Shape{21, 1, 4});
    const auto planes = planesOfColour(roi, 0, 100, 90, 200);
    const Steps ones{{1, 1, 1}};
    EXPECT_EQ(agree(RUX_OPERATION(ruxiYCbCr422ToRGB_8u_C2C3R), interleaved, 1, dst, 1, roi), 0);
    EXPECT_EQ(agree(RUX_OPERATION(ruxiYUV422ToRGB_8u_C2C3R), interleaved, 1, dst, 1, roi), 0);
    EXPECT_EQ(agree(RUX_OPERATION(ruxiYCbCr422ToRGB_8u_P3C3R), planes, ones, dst, 1, roi), 0);
    EXPECT_EQ(agree(RUX_OPERATION(ruxiYCbCr420ToRGB_8u_P3C3R), planes, ones, dst, 1, roi), 0);
    EXPECT_EQ(agree(RUX_OPERATION(ruxiYUV422ToRGB_8u_P3C3R), planes, ones, dst, 1, roi), 0);
    EXPECT_EQ(agree(RUX_OPERATION(ruxiYUV422ToRGB_8u_P3AC4R), planes, ones, four, 1, roi), 0);
}

TEST_P(YcbcrToRgb, refusesWrongArguments)
{
    const ruxiSize roi{9, 5};
    const Image<uint8_t> interleaved(Shape{9, 5, 2}), dst(Shape{9, 5, 3}), four(Shape{9, 5, 4});
    const auto half = planesOfColour(roi, 0, 1, 2, 3), quarter = planesOfColour(roi, 1, 1, 2, 3);
    const StepsInPlace halfSteps{half.steps()}, quarterSteps{quarter.steps()};
    refuse(RUX_OPERATION(ruxiYCbCr422ToRGB_8u_C2C3R), interleaved, interleaved.step(), dst, dst.step(), roi);
    refuse(RUX_OPERATION(ruxiYUV422ToRGB_8u_C2C3R), interleaved, interleaved.step(), dst, dst.step(), roi);
    refuse(RUX_OPERATION(ruxiYCbCr422ToRGB_8u_P3C3R), half, halfSteps, dst, dst.step(), roi);
    refuse(RUX_OPERATION(ruxiYUV422ToRGB_8u_P3C3R), half, halfSteps, dst, dst.step(), roi);
    refuse(RUX_OPERATION(ruxiYUV422ToRGB_8u_P3AC4R), half, halfSteps, four, four.step(), roi);
    refuse(RUX_OPERATION(ruxiYCbCr420ToRGB_8u_P3C3R), quarter, quarterSteps, dst, dst.step(), roi);
    refuse(RUX_OPERATION(ruxiYUV420ToRGB_8u_P3C3), quarter, dst, roi);
}

// The array before the size, the size before the planes, the planes before the strides.
TEST_P(YcbcrToRgb, orderOfChecks)
{
    const Image<uint8_t> plane(Shape{4, 4}), dst(Shape{4, 4, 4});
    const uint8_t* const planes[3] = {plane.data(), plane.data(), nullptr};
    const uint8_t* const all[3] = {plane.data(), plane.data(), plane.data()};
    const uint8_t* const* const none = nullptr;
    const int32_t steps[3] = {4, 4, 0};
    for (const auto function : {ruxiYCbCr422ToRGB_8u_P3C3R, ruxiYCbCr420ToRGB_8u_P3C3R, ruxiYUV422ToRGB_8u_P3C3R,
                                ruxiYUV422ToRGB_8u_P3AC4R}) {
        EXPECT_EQ(call(function, none, steps, dst.data(), 0, ruxiSize{0, 4}), -8);
        EXPECT_EQ(call(function, planes, steps, dst.data(), 0, ruxiSize{0, 4}), -6);
        EXPECT_EQ(call(function, planes, steps, dst.data(), 0, ruxiSize{4, 4}), -8);
        EXPECT_EQ(call(function, all, steps, dst.data(), 16, ruxiSize{4, 4}), -14);
    }
    EXPECT_EQ(call(ruxiYUV420ToRGB_8u_P3C3, planes, dst.data(), ruxiSize{4, 0}), -6);
    EXPECT_EQ(call(ruxiYUV420ToRGB_8u_P3C3, planes, dst.data(), ruxiSize{4, 4}), -8);
    EXPECT_EQ(call(ruxiYCbCr422ToRGB_8u_C2C3R, plane.data(), 0, dst.data(), 16, ruxiSize{4, 0}), -6);
    EXPECT_EQ(call(ruxiYUV422ToRGB_8u_C2C3R, plane.data(), 0, dst.data(), 16, ruxiSize{2, 2}), -14);
}

// Decoded rows of one colour.
using Decoder = decltype(ruxiYCbCr422ToRGB_8u_P3C3R);

static Image<uint8_t> decoded(Decoder* decoder, ruxiSize size, int y, int cb, int cr)
{
    const bool isQuarter = decoder == ruxiYCbCr420ToRGB_8u_P3C3R;
    const int channels = decoder == ruxiYUV422ToRGB_8u_P3AC4R ? 4 : 3;
    const auto src = planesOfColour(size, isQuarter, y, cb, cr);
    const auto steps = src.steps();
    Image<uint8_t> dst(Shape{size.width, size.height, channels}, 9);
    EXPECT_EQ(call(decoder, src.data(), steps.bytes.data(), dst.data(), dst.step(), size), 0);
    return dst;
}

static Image<uint8_t> decodedInterleaved(decltype(ruxiYCbCr422ToRGB_8u_C2C3R)* decoder, ruxiSize size, int y, int cb,
                                         int cr)
{
    const auto src = interleavedOfColour(size, y, cb, cr);
    Image<uint8_t> dst(Shape{size.width, size.height, 3}, 9);
    EXPECT_EQ(call(decoder, src.data(), src.step(), dst.data(), dst.step(), size), 0);
    return dst;
}

static void expectPixel(const Image<uint8_t>& image, int x, int y, const std::array<int, 3>& rgb)
{
    const int channels = image.shape().channels;
    for (int i = 0; i < 3; i++) EXPECT_EQ(image.get(channels * x + i, y), rgb[static_cast<size_t>(i)]) << x << ", " << y;
}

TEST_P(YcbcrToRgb, referenceWhite)
{
    const ruxiSize size{29, 3};
    const auto interleaved = decodedInterleaved(ruxiYCbCr422ToRGB_8u_C2C3R, size, 235, 128, 128);
    const auto quarter = decoded(ruxiYCbCr420ToRGB_8u_P3C3R, size, 235, 128, 128);
    const auto half = decoded(ruxiYCbCr422ToRGB_8u_P3C3R, size, 235, 128, 128);
    for (int y = 0; y < 3; y++) {
        for (int x = 0; x < 29; x++) {
            expectPixel(interleaved, x, y, {254, 254, 254});
            expectPixel(quarter, x, y, {254, 254, 254});
            const int tail = hasVectors(level()) && x >= 24 ? 254 : 255;
            expectPixel(half, x, y, {tail, tail, tail});
        }
    }
}

// In the bulk of a6 the fourth pixel of each group of four has U terms of its own.
TEST_P(YcbcrToRgb, fourthPixelOfAGroup)
{
    const ruxiSize size{31, 5};
    const auto src = planesOfColour(size, 1, 100, 90, 200);
    const Image<uint8_t> dst(Shape{31, 5, 3}, 9);
    EXPECT_EQ(call(ruxiYUV420ToRGB_8u_P3C3, src.data(), dst.data(), size), 0);
    for (int y = 0; y < 5; y++) {
        for (int x = 0; x < 31; x++) {
            const bool fourth = level() == a6 && y < 4 && x % 4 == 3;
            EXPECT_EQ(dst.get(3 * x, y), fourth ? 181 : 182) << x << ", " << y;
        }
    }
}

TEST_P(YcbcrToRgb, fourthByteIsZero)
{
    const auto dst = decoded(ruxiYUV422ToRGB_8u_P3AC4R, {23, 2}, 100, 90, 200);
    for (int y = 0; y < 2; y++) {
        for (int x = 0; x < 23; x++) EXPECT_EQ(dst.get(4 * x + 3, y), 0);
    }
}

// One row has no row pair: the scalar form, and chroma row 0, at every level.
TEST_P(YcbcrToRgb, heightOneIsScalar)
{
    const auto one = decoded(ruxiYCbCr420ToRGB_8u_P3C3R, {9, 1}, 91, 112, 146);
    for (int x = 0; x < 9; x++) expectPixel(one, x, 0, {116, 78, 55});
    const auto two = decoded(ruxiYCbCr420ToRGB_8u_P3C3R, {8, 2}, 91, 112, 146);
    for (int x = 0; x < 8; x++) {
        if (hasVectors(level())) expectPixel(two, x, 1, {115, 79, 54});
        else expectPixel(two, x, 1, {116, 78, 55});
    }
}

// The byte before the row is not read: the one chroma byte is Cb and Cr.
TEST_P(YcbcrToRgb, widthOneReadsTwoBytes)
{
    for (const int step : {2, 7}) {
        const Shape shape = Shape{1, 3, 2}.withStep(step).at({Edge::start});
        Image<uint8_t> src(shape), dst(Shape{1, 3, 3});
        for (int y = 0; y < 3; y++) src.set(0, y, uint8_t(100)), src.set(1, y, uint8_t(150));
        EXPECT_EQ(call(ruxiYCbCr422ToRGB_8u_C2C3R, src.data(), step, dst.data(), 3, src.roi()), 0);
        for (int y = 0; y < 3; y++) expectPixel(dst, 0, y, {132, 71, 142});
        EXPECT_EQ(call(ruxiYUV422ToRGB_8u_C2C3R, src.data(), step, dst.data(), 3, src.roi()), 0);
        for (int y = 0; y < 3; y++) expectPixel(dst, 0, y, {125, 78, 144});
    }
}

// The lone last pixel takes Cr from the byte before its Y, and in YUV has a form of its own at a6 and w7.
TEST_P(YcbcrToRgb, loneLastPixel)
{
    static constexpr uint8_t ycbcr[] = {10, 20, 30, 200, 100, 90}, yuv[] = {10, 20, 30, 116, 100, 1};
    Image<uint8_t> src(Shape{3, 1, 2}), dst(Shape{3, 1, 3});
    for (int i = 0; i < 6; i++) src.set(i, 0, ycbcr[i]);
    EXPECT_EQ(call(ruxiYCbCr422ToRGB_8u_C2C3R, src.data(), 6, dst.data(), 9, src.roi()), 0);
    expectPixel(dst, 2, 0, {212, 54, 21});
    for (int i = 0; i < 6; i++) src.set(i, 0, yuv[i]);
    EXPECT_EQ(call(ruxiYUV422ToRGB_8u_C2C3R, src.data(), 6, dst.data(), 9, src.roi()), 0);
    expectPixel(dst, 2, 0, {86, hasVectors(level()) ? 156 : 157, 0});
}

// Without strides the chroma rows of an odd width are half of it rounded up apart.
TEST_P(YcbcrToRgb, oddWidthWithoutStrides)
{
    Planes<uint8_t> src = planesOfColour({3, 4}, 1, 100, 128, 128);
    src[2].set(1, 0, uint8_t(192));
    src[2].set(0, 1, uint8_t(64));
    const Image<uint8_t> dst(Shape{3, 4, 3});
    EXPECT_EQ(call(ruxiYUV420ToRGB_8u_P3C3, src.data(), dst.data(), ruxiSize{3, 4}), 0);
    for (int y = 0; y < 4; y++) {
        for (int x = 0; x < 3; x++) {
            const int red = y < 2 ? x < 2 ? 100 : 172 : x < 2 ? 27 : 100;
            EXPECT_EQ(dst.get(3 * x, y), red) << x << ", " << y;
        }
    }
}

}
