// The factors of the vector levels' forward row stage, in the order of multiply-and-add.
//
// With x a row's values, a_i = x_i + x_(7-i) and b_i = x_i - x_(7-i) saturated to words, and K the row's cosines,
//     y_k = first_k . (a0, a1) + second_k . (a2, a3)    for even k, with b in the place of a for odd k
//     coefficient k = (y_k + 0x80000) >> 20, saturated to a word
// where "." multiplies a pair with a pair of factors and adds, modulo 2^32.
#pragma once

#include "video/dct_coefficients.h"

namespace rux::RUX_LEVEL {
namespace {

struct ForwardRowFactors {
    alignas(16) int16_t first0123[8];
    alignas(16) int16_t second0123[8];
    alignas(16) int16_t first4567[8];
    alignas(16) int16_t second4567[8];
};

constexpr ForwardRowFactors forwardRowFactorsOf(const int16_t (&k)[8])
{
    return {
        {k[0], k[0], k[1], k[3], k[2], k[6], k[3], negative(k[7])},
        {k[0], k[0], k[5], k[7], negative(k[6]), negative(k[2]), negative(k[1]), negative(k[5])},
        {k[4], negative(k[4]), k[5], negative(k[1]), k[6], negative(k[2]), k[7], negative(k[5])},
        {negative(k[4]), k[4], k[7], k[3], k[2], negative(k[6]), k[3], negative(k[1])},
    };
}

constexpr ForwardRowFactors forwardRowFactors[4] = {
    forwardRowFactorsOf(cosines[0]),
    forwardRowFactorsOf(cosines[1]),
    forwardRowFactorsOf(cosines[2]),
    forwardRowFactorsOf(cosines[3]),
};

constexpr int32_t forwardRowRounding = 0x80000;
constexpr int forwardRowShift = 20;

}
}
