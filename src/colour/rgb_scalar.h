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
template <const ScalarMatrix& matrix>
inline Rgb chromaSums(Chroma chroma)
{
    const int32_t u = chroma.u - matrix.centre;
    const int32_t v = chroma.v - matrix.centre;
    return {v * matrix.redV + matrix.redOffset, u * matrix.greenU + v * matrix.greenV + matrix.greenOffset,
            u * matrix.blueU + matrix.blueOffset};
}

template <const ScalarMatrix& matrix>
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

template <const ScalarMatrix& matrix, typename Layout, typename Row>
inline void convertPairs(Row src, uint8_t* dst, size_t pixels)
{
    for (size_t x = 0; x + 2 <= pixels; x += 2, src = src.at(2), dst += 2 * Layout::pixelBytes) {
        const Rgb chroma = chromaSums<matrix>(src.pairChroma());
        storePixel(Layout(), convertPixel<matrix>(src.lumaAt(0), chroma), dst);
        storePixel(Layout(), convertPixel<matrix>(src.lumaAt(1), chroma), dst + Layout::pixelBytes);
    }
}

template <const ScalarMatrix& matrix, typename Layout, typename Row>
inline void convertLone(Row src, uint8_t* dst)
{
    storePixel(Layout(), convertPixel<matrix>(src.lumaAt(0), chromaSums<matrix>(src.loneChroma())), dst);
}

// Pairs, and a lone last pixel where the number is odd.
template <const ScalarMatrix& matrix, typename Layout, typename Row>
inline void convertPixels(Row src, uint8_t* dst, size_t pixels)
{
    const size_t paired = pixels & ~size_t(1);
    convertPairs<matrix, Layout>(src, dst, paired);
    if (pixels != paired) convertLone<matrix, Layout>(src.at(paired), dst + paired * Layout::pixelBytes);
}

// The two rows of a 4:2:0 pair, which share their chroma.
template <const ScalarMatrix& matrix, typename Layout>
inline void convertRowPair(PlanarRow src, const uint8_t* lowerLuma, uint8_t* dst, uint8_t* lowerDst, size_t pixels)
{
    for (size_t x = 0; x < pixels; ++x) {
        const Rgb chroma = chromaSums<matrix>({src.u[x / 2], src.v[x / 2]});
        storePixel(Layout(), convertPixel<matrix>(src.luma[x], chroma), dst + x * Layout::pixelBytes);
        storePixel(Layout(), convertPixel<matrix>(lowerLuma[x], chroma), lowerDst + x * Layout::pixelBytes);
    }
}

// An interleaved image of width 1: each row is a luma byte and one chroma byte, which is both U and V.
template <const ScalarMatrix& matrix>
inline void convertColumn(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, int32_t height)
{
    for (int32_t y = 0; y < height; ++y, src += srcStep, dst += dstStep)
        storePixel(Rgb24(), convertPixel<matrix>(src[0], chromaSums<matrix>({src[1], src[1]})), dst);
}

}
}
