// RGB to YCbCr, against the models and the contract's numbers.
#include "colour_images.h"
#include "model/ycbcr.h"
#include "ruxlib.h"

namespace rux::test {

RUX_FAMILY(RgbToYcbcr, "rgb_to_ycbcr");

// The lone column's and the lone row's forms do not depend on the level; neither do the forms of px and m6.
static bool hasVectors(Level level)
{
    return level == a6 || level == w7;
}

TEST_P(RgbToYcbcr, ruxiRGBToYCbCr420_8u_C3P3R)
{
    sweep(RUX_OPERATION(ruxiRGBToYCbCr420_8u_C3P3R), imageSweep(), [](Case& c, const auto& compare) {
        const auto src = c.image<uint8_t>(3);
        const auto dst = planesOf(c, 1);
        compare(src, src.step(), dst, dst.steps(), c.roi());
    });
}

TEST_P(RgbToYcbcr, ruxiRGBToYCbCr422_8u_C3C2R)
{
    sweep(RUX_OPERATION(ruxiRGBToYCbCr422_8u_C3C2R), imageSweep(), [](Case& c, const auto& compare) {
        const auto src = c.image<uint8_t>(3);
        const auto dst = c.image<uint8_t>(2);
        compare(src, src.step(), dst, dst.step(), c.roi());
    });
}

// Each component through all its values, the others at their ends or anywhere.
static Image<uint8_t> ramps(int width)
{
    constexpr int rows = 256 * 3 * 16;
    Image<uint8_t> image(Shape{width, rows, 3}, 7, anyBits<uint8_t>);
    for (int y = 0; y < rows; y++) {
        const int value = y % 256, channel = y / 256 % 3, others = y / 768;
        for (int x = 0; x < width; x++) {
            uint8_t* const pixel = image.row(y) + 3 * x;
            if (others < 4) {
                pixel[(channel + 1) % 3] = others & 1 ? 255 : 0;
                pixel[(channel + 2) % 3] = others & 2 ? 255 : 0;
            }
            pixel[channel] = static_cast<uint8_t>(value);
        }
    }
    return image;
}

// Blocks of 8 and 4 pixels, a pair, a lone pixel; widths of a pair and a lone pixel alone.
TEST_P(RgbToYcbcr, rampsOfEachComponent)
{
    for (const int width : {15, 3}) {
        const auto src = ramps(width);
        const ruxiSize roi{width, src.height() - 1};
        const auto planes = planesOfColour(roi, 1, 0, 0, 0);
        const Image<uint8_t> interleaved(Shape{width, roi.height, 2});
        agree(RUX_OPERATION(ruxiRGBToYCbCr420_8u_C3P3R), src, src.step(), planes, planes.steps(), roi);
        agree(RUX_OPERATION(ruxiRGBToYCbCr422_8u_C3C2R), src, src.step(), interleaved, interleaved.step(), roi);
    }
}

TEST_P(RgbToYcbcr, aMillionPixels)
{
    for (const int width : {1023, 3, 1}) {
        const ruxiSize roi{width, width > 3 ? 1023 : 100001};
        const Image<uint8_t> src(Shape{roi.width, roi.height, 3}, 5, anyBits<uint8_t>);
        const auto planes = planesOfColour(roi, 1, 0, 0, 0);
        const Image<uint8_t> interleaved(Shape{roi.width, roi.height, 2});
        agree(RUX_OPERATION(ruxiRGBToYCbCr420_8u_C3P3R), src, src.step(), planes, planes.steps(), roi);
        agree(RUX_OPERATION(ruxiRGBToYCbCr422_8u_C3C2R), src, src.step(), interleaved, interleaved.step(), roi);
    }
}

TEST_P(RgbToYcbcr, readsRowsThatOverlap)
{
    for (const int step : {1, 2, 3, 17}) {
        const Image<uint8_t> src(Shape{37, 9, 3}.withStep(step), 3);
        const auto planes = planesOfColour(src.roi(), 1, 0, 0, 0);
        const Image<uint8_t> interleaved(Shape{37, 9, 2});
        agree(RUX_OPERATION(ruxiRGBToYCbCr420_8u_C3P3R), src, src.step(), planes, planes.steps(), src.roi());
        agree(RUX_OPERATION(ruxiRGBToYCbCr422_8u_C3C2R), src, src.step(), interleaved, interleaved.step(), src.roi());
    }
}

// Any positive stride is a right one: a single row needs none.
TEST_P(RgbToYcbcr, stridesOfOne)
{
    const Image<uint8_t> src(Shape{21, 1, 3}), interleaved(Shape{21, 1, 2});
    const auto planes = planesOfColour(src.roi(), 1, 0, 0, 0);
    const Steps ones{{1, 1, 1}};
    EXPECT_EQ(agree(RUX_OPERATION(ruxiRGBToYCbCr420_8u_C3P3R), src, 1, planes, ones, src.roi()), 0);
    EXPECT_EQ(agree(RUX_OPERATION(ruxiRGBToYCbCr422_8u_C3C2R), src, 1, interleaved, 1, src.roi()), 0);
}

TEST_P(RgbToYcbcr, refusesWrongArguments)
{
    const Image<uint8_t> src(Shape{9, 5, 3});
    const auto planes = planesOfColour(src.roi(), 1, 1, 2, 3);
    const Image<uint8_t> interleaved(Shape{9, 5, 2});
    refuse(RUX_OPERATION(ruxiRGBToYCbCr420_8u_C3P3R), src, src.step(), planes, StepsInPlace{planes.steps()}, src.roi());
    refuse(RUX_OPERATION(ruxiRGBToYCbCr422_8u_C3C2R), src, src.step(), interleaved, interleaved.step(), src.roi());
}

// The array before the size, the size before the planes, the planes before the strides.
TEST_P(RgbToYcbcr, orderOfChecks)
{
    const Image<uint8_t> src(Shape{4, 4, 3}), plane(Shape{4, 4});
    uint8_t* const planes[3] = {plane.data(), plane.data(), nullptr};
    uint8_t* const* const none = nullptr;
    const int32_t steps[3] = {4, 4, 0};
    EXPECT_EQ(call(ruxiRGBToYCbCr420_8u_C3P3R, src.data(), 0, none, steps, ruxiSize{0, 4}), -8);
    EXPECT_EQ(call(ruxiRGBToYCbCr420_8u_C3P3R, src.data(), 0, planes, steps, ruxiSize{0, 4}), -6);
    EXPECT_EQ(call(ruxiRGBToYCbCr420_8u_C3P3R, src.data(), 0, planes, steps, ruxiSize{4, 4}), -8);
    uint8_t* const all[3] = {plane.data(), plane.data(), plane.data()};
    EXPECT_EQ(call(ruxiRGBToYCbCr420_8u_C3P3R, src.data(), 0, all, steps, ruxiSize{4, 4}), -14);
    EXPECT_EQ(call(ruxiRGBToYCbCr420_8u_C3P3R, src.data(), 12, all, steps, ruxiSize{4, 4}), -14);
}

static Planes<uint8_t> encoded(ruxiSize size, uint8_t value)
{
    const Image<uint8_t> src(Shape{size.width, size.height, 3}, 1, constant(value));
    auto dst = planesOfColour(size, 1, 77, 77, 77);
    EXPECT_EQ(call(ruxiRGBToYCbCr420_8u_C3P3R, src.data(), src.step(), dst.data(), dst.steps().bytes.data(), size), 0);
    return dst;
}

TEST_P(RgbToYcbcr, whiteAndBlackInPlanes)
{
    const auto white = encoded({37, 5}, 255), black = encoded({37, 5}, 0);
    for (int y = 0; y < 5; y++) {
        for (int x = 0; x < 37; x++) {
            const bool cut = hasVectors(level()) && x < 36 && y < 4;
            EXPECT_EQ(white[0].get(x, y), cut ? 234 : 235);
            EXPECT_EQ(white[1].get(x / 2, y / 2), cut ? 127 : 128);
            EXPECT_EQ(white[2].get(x / 2, y / 2), cut ? 127 : 128);
            EXPECT_EQ(black[0].get(x, y), 16);
            EXPECT_EQ(black[1].get(x / 2, y / 2), 128);
            EXPECT_EQ(black[2].get(x / 2, y / 2), 128);
        }
    }
}

TEST_P(RgbToYcbcr, whiteInterleaved)
{
    const ruxiSize size{15, 2};
    const Image<uint8_t> src(Shape{15, 2, 3}, 1, constant(uint8_t(255))), dst(Shape{15, 2, 2});
    EXPECT_EQ(call(ruxiRGBToYCbCr422_8u_C3C2R, src.data(), 45, dst.data(), 30, size), 0);
    for (int x = 0; x < 15; x++) {
        EXPECT_EQ(dst.get(2 * x, 1), 235);
        EXPECT_EQ(dst.get(2 * x + 1, 1), level() == a6 && x < 12 && x % 2 ? 127 : 128) << x;
    }
}

// The second luma of a pair lacks the half at px and m6; at a6 and w7 both of a pair behind the blocks do. Of grey 3
// the luma is 16 + 2.58, which the half alone takes up to 19.
TEST_P(RgbToYcbcr, lumaWithoutTheHalf)
{
    const Image<uint8_t> src(Shape{3, 1, 3}, 1, constant(uint8_t(3))), dst(Shape{3, 1, 2});
    EXPECT_EQ(call(ruxiRGBToYCbCr422_8u_C3C2R, src.data(), 9, dst.data(), 6, src.roi()), 0);
    EXPECT_EQ(dst.get(0), hasVectors(level()) ? 18 : 19);
    EXPECT_EQ(dst.get(2), 18);
    EXPECT_EQ(dst.get(4), hasVectors(level()) ? 18 : 19);
}

TEST_P(RgbToYcbcr, widthThreeWritesSixBytes)
{
    const Image<uint8_t> src(Shape{3, 4, 3}), dst(Shape{8, 4}, 1, constant(uint8_t(0xEE)));
    EXPECT_EQ(call(ruxiRGBToYCbCr422_8u_C3C2R, src.data(), 9, dst.data(), 8, ruxiSize{3, 4}), 0);
    for (int y = 0; y < 4; y++) {
        EXPECT_EQ(dst.get(6, y), 0xEE);
        EXPECT_EQ(dst.get(7, y), 0xEE);
    }
}

// Red, green, blue in one row: a pair's chroma of the first two, a single pixel's of the third.
TEST_P(RgbToYcbcr, oneRowOfThreePixels)
{
    static constexpr uint8_t pixels[] = {255, 0, 0, 0, 255, 0, 0, 0, 255};
    Image<uint8_t> src(Shape{3, 1, 3});
    for (int i = 0; i < 9; i++) src.set(i, 0, pixels[i]);
    auto dst = planesOfColour({3, 1}, 1, 0, 0, 0);
    EXPECT_EQ(call(ruxiRGBToYCbCr420_8u_C3P3R, src.data(), 9, dst.data(), dst.steps().bytes.data(), src.roi()), 0);
    EXPECT_EQ(dst[0].get(0), 82);
    EXPECT_EQ(dst[0].get(1), 145);
    EXPECT_EQ(dst[0].get(2), 41);
    EXPECT_EQ(dst[1].get(0), 72);
    EXPECT_EQ(dst[2].get(0), 137);
    EXPECT_EQ(dst[1].get(1), 240);
    EXPECT_EQ(dst[2].get(1), 110);
}

}
