// The largest element in eight lanes, which run over all rows.
//
// The vector maximum gives its second operand where one is a NaN: an element enters its lane even as a NaN, and leaves
// a NaN there behind.
#pragma once

#include "arith/max.h"
#include "lanes/four_floats.h"
#include "lanes/spread.h"

namespace rux::RUX_LEVEL {
namespace {

constexpr uint32_t lowestFinite = 0xFF7FFFFF;   // -3.4028234663852886e+38

void findLargest(const uint8_t* src, int32_t srcStep, ruxiSize roiSize, uint8_t* max)
{
    __m128 low = spread<FourFloats>(lowestFinite).value;
    __m128 high = low;
    for (int32_t y = 0; y < roiSize.height; ++y, src += srcStep) {
        const uint8_t* row = src;
        int32_t left = roiSize.width;
        for (; left >= 8; left -= 8, row += 32) {
            low = _mm_max_ps(low, FourFloats::load(row).value);
            high = _mm_max_ps(high, FourFloats::load(row + 16).value);
        }
        for (; left >= 4; left -= 4, row += 16) low = _mm_max_ps(low, FourFloats::load(row).value);
        for (; left > 0; --left, row += 4) low = _mm_max_ss(low, FourFloats::loadOne(row).value);
    }
    const __m128 four = _mm_max_ps(high, low);
    const __m128 two = _mm_max_ps(_mm_movehl_ps(four, four), four);
    FourFloats{_mm_max_ss(_mm_shuffle_ps(two, two, 1), two)}.storeOne(max);
}

}
}
