// Conversion to RGB pixel by pixel. The level gives the clamp (colour/rows_px.h and its kin).
#pragma once

#include "colour/pixel_rows.h"
#include "colour/rgb_matrices.h"

namespace rux::RUX_LEVEL {
namespace {

struct Rgb {
    int32_t red, green, blue;
};

struct ClampedRgb {
    uint8_t red, green, blue;
};

ClampedRgb clamped(Rgb pixel);

// What a chroma sample adds to the luma of its pixels, offsets included.
template <const PixelMatrix& matrix>
inline Rgb chromaSums(Chroma chroma)
{
    const int32_t u = chroma.u - matrix.centre;
    const int32_t v = chroma.v - matrix.centre;
    return {v * matrix.redV + matrix.redOffset, u * matrix.greenU + v * matrix.greenV + matrix.greenOffset,
            u * matrix.blueU + matrix.blueOffset};
}

template <const PixelMatrix& matrix>
inline ClampedRgb convertPixel(int32_t y, Rgb chroma)
{
    const int32_t luma = y * matrix.luma;
    return clamped({(luma + chroma.red) >> matrix.shift, (luma + chroma.green) >> matrix.shift,
                    (luma + chroma.blue) >> matrix.shift});
}

inline void storePixel(Rgb24, ClampedRgb pixel, uint8_t* to)
{
    to[0] = pixel.red;
    to[1] = pixel.green;
    to[2] = pixel.blue;
}

inline void storePixel(Rgb0, ClampedRgb pixel, uint8_t* to)
{
    storePixel(Rgb24(), pixel, to);
    to[3] = 0;
}

template <const PixelMatrix& matrix, typename Layout, typename Row>
inline void convertPairs(Row src, RgbRow dst, size_t pixels)
{
    for (size_t x = 0; x + 2 <= pixels; x += 2, src = src.at(2), dst = dst.template at<Layout>(2)) {
        const Rgb chroma = chromaSums<matrix>(src.pairChroma());
        storePixel(Layout(), convertPixel<matrix>(src.lumaAt(0), chroma), dst.pixels);
        storePixel(Layout(), convertPixel<matrix>(src.lumaAt(1), chroma), dst.pixels + Layout::pixelBytes);
    }
}

template <const PixelMatrix& matrix, typename Layout, typename Row>
inline void convertLone(Row src, RgbRow dst)
{
    storePixel(Layout(), convertPixel<matrix>(src.lumaAt(0), chromaSums<matrix>(src.loneChroma())), dst.pixels);
}

// Pairs, and a lone last pixel where the number is odd.
template <const PixelMatrix& matrix, typename Layout, typename Row>
inline void convertPixels(Row src, RgbRow dst, size_t pixels)
{
    const size_t paired = pixels & ~size_t(1);
    convertPairs<matrix, Layout>(src, dst, paired);
    if (pixels != paired) convertLone<matrix, Layout>(src.at(paired), dst.template at<Layout>(paired));
}

// Blocks of two rows that share their chroma, and a lone last column where the number is odd.
template <const PixelMatrix& matrix, typename Layout>
inline void convertPixels(PlanarRowPair src, RgbRowPair dst, size_t pixels)
{
    for (size_t x = 0; x < pixels; x += 2, src = src.at(2), dst = dst.template at<Layout>(2)) {
        const Rgb chroma = chromaSums<matrix>(src.upper.pairChroma());
        storePixel(Layout(), convertPixel<matrix>(src.upper.luma[0], chroma), dst.upper);
        storePixel(Layout(), convertPixel<matrix>(src.lowerLuma[0], chroma), dst.lower);
        if (pixels - x < 2) return;
        storePixel(Layout(), convertPixel<matrix>(src.upper.luma[1], chroma), dst.upper + Layout::pixelBytes);
        storePixel(Layout(), convertPixel<matrix>(src.lowerLuma[1], chroma), dst.lower + Layout::pixelBytes);
    }
}

// An interleaved image of width 1: each row is a luma byte and one chroma byte, which is both U and V.
template <const PixelMatrix& matrix>
inline void convertColumn(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, int32_t height)
{
    for (int32_t y = 0; y < height; ++y, src += srcStep, dst += dstStep)
        storePixel(Rgb24(), convertPixel<matrix>(src[0], chromaSums<matrix>({src[1], src[1]})), dst);
}

}
}
