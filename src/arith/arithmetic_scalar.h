// Rows of float arithmetic element by element, on the floating-point stack in 32-bit builds.
//
// A sum, difference or product of two floats, rounded to double and then to float, is the correctly rounded float.
#pragma once

#include "arith/arithmetic.h"

namespace rux::RUX_LEVEL {
namespace {

template <Combine combine>
inline void combineElement(const uint8_t* src, uint8_t* srcDst)
{
    const float a = load<float>(srcDst);
    const float b = load<float>(src);
    store<float>(srcDst, combine == Combine::sum ? a + b : combine == Combine::difference ? a - b : a * b);
}

template <Combine combine>
void combineRow(const uint8_t* src, uint8_t* srcDst, size_t elements)
{
    for (size_t at = 0; at < elements * 4; at += 4) combineElement<combine>(src + at, srcDst + at);
}

// The fourth float is neither read nor written.
template <Combine combine>
void combineAlphaRow(const uint8_t* src, uint8_t* srcDst, size_t pixels)
{
    for (; pixels > 0; --pixels, src += 16, srcDst += 16) {
        combineElement<combine>(src, srcDst);
        combineElement<combine>(src + 4, srcDst + 4);
        combineElement<combine>(src + 8, srcDst + 8);
    }
}

}
}
