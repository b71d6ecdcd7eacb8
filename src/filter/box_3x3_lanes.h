// Rows of the 3x3 box filter over lanes of words: the sums of columns over three rows, then of three columns.
#pragma once

#include "filter/box_lanes.h"

namespace rux::RUX_LEVEL {
namespace {

inline void sumThreeRows(const uint8_t* src, ptrdiff_t stride, uint16_t* sums, int32_t count)
{
    ptrdiff_t i = 0;
    for (; count - i >= stepPixels; i += stepPixels) {
        const uint8_t* const at = src + i;
        storeSums(sum(sum(widened(at), widened(at + stride)), widened(at + 2 * stride)), sums + i);
    }
    for (; i < count; ++i)
        sums[i] = static_cast<uint16_t>(src[i] + src[i + stride] + src[i + 2 * stride]);
}

// In strips whose columns' sums stay near; mean makes a pixel of a sum wherever it stands.
template <typename Mean>
inline void filterInStrips(const Mean& mean, const uint8_t* src, ptrdiff_t stride, uint8_t* dst, int32_t width)
{
    constexpr int32_t stripPixels = 512;
    uint16_t sums[stripPixels + 2];
    for (ptrdiff_t x = 0; x < width; x += stripPixels) {
        const int32_t pixels = width - x < stripPixels ? static_cast<int32_t>(width - x) : stripPixels;
        sumThreeRows(src + x, stride, sums, pixels + 2);
        filterNeighbours<3>(mean, sums, dst + x, pixels);
    }
}

}
}
