// What m6 must compose: MMX has neither minimum and maximum nor a sum of bytes.
#pragma once

#include "lanes/eight_byte_elements.h"

namespace rux::RUX_LEVEL {
namespace {

// The smaller of two unsigned bytes: a less what it has above b.
inline EightBytes smaller8(EightBytes a, EightBytes b)
{
    return subtract8(a, subtractSaturated(a, b));
}

// The larger of two unsigned bytes: b and what a has above it.
inline EightBytes larger8(EightBytes a, EightBytes b)
{
    return {_mm_adds_pu8(b.value, subtractSaturated(a, b).value)};
}

// a <= b, unsigned: a - b, stopped at 0, is 0.
inline EightBytes atMost8(EightBytes a, EightBytes b)
{
    return equal8(subtractSaturated(a, b), {_mm_setzero_si64()});
}

// a >= b, unsigned.
inline EightBytes atLeast8(EightBytes a, EightBytes b)
{
    return atMost8(b, a);
}

// |a - b| of signed words as unsigned words: (d ^ m) - m negates d where m is all ones.
inline EightBytes absoluteDifference16(EightBytes a, EightBytes b)
{
    const EightBytes below = greater16(b, a);
    return subtract16(subtract16(a, b) ^ below, below);
}

// Words in 32-bit lanes that add up to the bytes' sum: neighbours of at most 2 * 255 are added by a product with ones.
inline EightBytes sumBytes(EightBytes a)
{
    const EightBytes words = add16(widenLow8(a), widenHigh8(a));
    return {_mm_madd_pi16(words.value, _mm_set1_pi16(1))};
}

inline EightBytes sumDifferences8(EightBytes a, EightBytes b)
{
    return sumBytes(subtractSaturated(a, b) | subtractSaturated(b, a));
}

}
}
