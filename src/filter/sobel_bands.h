// The Sobel filters as a6 and w7 have them: each result row from the source rows that it needs.
//
// Rows are filtered in bands, so that what a source row gives along the row is formed once for the results that share
// it. A row is cut so: the first and the last pixel with clamped columns; between them a block at pixel 1, blocks on
// the boundaries of the band's first row, and a block that ends before the last pixel and may lie over its neighbour.
// Narrower rows go pixel by pixel.
#pragma once

#include "filter/sobel_lanes.h"

namespace rux::RUX_LEVEL {
namespace {

template <int rows>
struct Band {
    const uint8_t* src[rows + 2];   // from the row above the first to the row below the last, clamped into the image
    uint8_t* dst;
    ptrdiff_t dstStep;
};

template <typename Kernel, int rows>
inline void sobelPixel(const Band<rows>& band, int32_t left, int32_t x, int32_t right)
{
    for (int y = 0; y < rows; ++y) {
        const auto along = [&](int row) { return Kernel::along(band.src[row], left, x, right); };
        const int value = Kernel::across(along(y), along(y + 1), along(y + 2));
        store(band.dst + y * band.dstStep + ptrdiff_t{x} * 2, static_cast<int16_t>(value));
    }
}

// The results from a row on, written out by the compiler.
template <typename Kernel, int row, typename Lane, int rows>
inline void sobelBlockRows(const Band<rows>& band, ptrdiff_t x, uint8_t* to, PixelWords<Lane> above,
                           PixelWords<Lane> here)
{
    const auto below = alongBlock<Lane>(Kernel(), band.src[row + 2] + x);
    const auto result = Kernel::across(above, here, below);
    result.lower().store(to);
    result.upper().store(to + Lane::size);
    if constexpr (row + 1 < rows) sobelBlockRows<Kernel, row + 1>(band, x, to + band.dstStep, here, below);
}

template <typename Kernel, typename Lane, int rows>
inline void sobelBlock(const Band<rows>& band, ptrdiff_t x)
{
    sobelBlockRows<Kernel, 0>(band, x, band.dst + 2 * x, alongBlock<Lane>(Kernel(), band.src[0] + x),
                              alongBlock<Lane>(Kernel(), band.src[1] + x));
}

template <typename Kernel, typename Lane, int rows>
inline void sobelBand(const Band<rows>& band, int32_t width)
{
    constexpr int32_t size = Lane::size;
    const int32_t last = width - 1;
    if (width < size + 2) {
        for (int32_t i = 0; i < width; ++i) sobelPixel<Kernel>(band, i > 0 ? i - 1 : 0, i, i < last ? i + 1 : last);
        return;
    }
    sobelPixel<Kernel>(band, 0, 0, 1);
    sobelBlock<Kernel, Lane>(band, 1);
    int32_t x = 1 + static_cast<int32_t>(bytesToBoundary(band.dst + 2, Lane::size) / 2);
    for (; x + size <= last; x += size) sobelBlock<Kernel, Lane>(band, x);
    sobelBlock<Kernel, Lane>(band, last - size);
    sobelPixel<Kernel>(band, last - 1, last, last);
}

template <typename Kernel, typename Lane, int rows>
inline void sobelBandAt(const SobelImages& images, int32_t y)
{
    Band<rows> band;
    for (int row = 0; row < rows + 2; ++row) {
        const int32_t wanted = y + row - 1;
        const int32_t clamped = wanted < 0 ? 0 : wanted < images.height ? wanted : images.height - 1;
        band.src[row] = images.src + clamped * images.srcStep;
    }
    band.dst = images.dst + y * images.dstStep;
    band.dstStep = images.dstStep;
    sobelBand<Kernel, Lane>(band, images.width);
}

template <typename Kernel, typename Lane>
inline void sobelBands(const SobelImages& images)
{
    constexpr int rows = 4;
    int32_t y = 0;
    for (; images.height - y >= rows; y += rows) sobelBandAt<Kernel, Lane, rows>(images, y);
    for (; y < images.height; ++y) sobelBandAt<Kernel, Lane, 1>(images, y);
}

}
}
