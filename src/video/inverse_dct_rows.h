// The factors of the vector levels' inverse row stage, in the order of multiply-and-add.
//
// With K the row's cosines, x its coefficients and R its bias, a row becomes
//     A0 .. A3 = x02 . (x0, x2) + x46 . (x4, x6) + R        y0 .. y3 = (A + B) >> 12
//     B0 .. B3 = x13 . (x1, x3) + x57 . (x5, x7)            y7 .. y4 = (A - B) >> 12     saturated to words
// where "." multiplies the pair with each pair of factors and adds, modulo 2^32.
#pragma once

#include "video/dct_coefficients.h"

namespace rux::RUX_LEVEL {
namespace {

struct InverseRowFactors {
    alignas(16) int16_t x02[8];
    alignas(16) int16_t x46[8];
    alignas(16) int16_t x13[8];
    alignas(16) int16_t x57[8];
};

constexpr InverseRowFactors inverseRowFactorsOf(const int16_t (&k)[8])
{
    return {
        {k[0], k[2], k[0], k[6], k[0], negative(k[6]), k[0], negative(k[2])},
        {k[4], k[6], negative(k[4]), negative(k[2]), negative(k[4]), k[2], k[4], negative(k[6])},
        {k[1], k[3], k[3], negative(k[7]), k[5], negative(k[1]), k[7], negative(k[5])},
        {k[5], k[7], negative(k[1]), negative(k[5]), k[7], k[3], k[3], negative(k[1])},
    };
}

constexpr InverseRowFactors inverseRowFactors[4] = {
    inverseRowFactorsOf(cosines[0]),
    inverseRowFactorsOf(cosines[1]),
    inverseRowFactorsOf(cosines[2]),
    inverseRowFactorsOf(cosines[3]),
};

// Row 0 carries the rounding of the column stage's shift by 5 as well.
constexpr int32_t inverseRowBias[8] = {65536, 5802, 4520, 3408, 2048, 910, 1024, 746};

}
}
