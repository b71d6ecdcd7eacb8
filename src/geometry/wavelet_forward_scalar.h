// The row pass in double, rounded to float once.
#pragma once

#include "geometry/wavelet_forward.h"
#include "geometry/wavelet_scalar.h"

namespace rux::RUX_LEVEL {
namespace {

inline double product(const float* src, const float* taps, int32_t i)
{
    return static_cast<double>(src[i]) * taps[i];
}

// From 8 taps on, groups of four are summed first; what is left follows one by one.
inline double sumOfProducts(const float* src, const float* reversed, int32_t count)
{
    double sum = 0.0;
    int32_t i = 0;
    if (count >= 8)
        for (; i + 4 <= count; i += 4)
            sum += product(src, reversed, i) + product(src, reversed, i + 1) + product(src, reversed, i + 2) +
                   product(src, reversed, i + 3);
    for (; i < count; ++i) sum += product(src, reversed, i);
    return sum;
}

void filterRow(const float* src, const ruxWTRowTaps& filter, uint8_t* dst, int32_t width)
{
    for (; width > 0; --width, src += 2, dst += 4)
        store(dst, roundedToSingle(sumOfProducts(src, filter.reversed, filter.count)));
}

}
}
