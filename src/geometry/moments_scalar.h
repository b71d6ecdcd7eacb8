// Moments in double, pixel after pixel.
#pragma once

#include "geometry/moments.h"

namespace rux::RUX_LEVEL {
namespace {

inline RowSums sumRow(const uint8_t* src, int32_t width)
{
    RowSums sums = {0.0, 0.0, 0.0, 0.0};
    double x = 0.0;
    for (; width > 0; --width, src += 4, x += 1.0) {
        double term = load<float>(src);
        sums.s0 += term;
        term *= x;
        sums.s1 += term;
        term *= x;
        sums.s2 += term;
        term *= x;
        sums.s3 += term;
    }
    return sums;
}

// Not inlined: nothing is computed before the caller has set the stack's precision.
[[gnu::noinline]] void addRowsInOrder(const uint8_t* src, int32_t srcStep, ruxiSize roiSize, double* moments)
{
    for (int32_t y = 0; y < roiSize.height; ++y, src += srcStep) addRow(moments, sumRow(src, roiSize.width), y);
}

}
}
