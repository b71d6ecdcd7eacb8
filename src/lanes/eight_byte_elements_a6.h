// What SSE adds to MMX registers: minimum, maximum and the sum of absolute differences.
#pragma once

#include <xmmintrin.h>

#include "lanes/eight_byte_elements.h"

namespace rux::RUX_LEVEL {
namespace {

// The smaller and the larger of two unsigned bytes.
inline EightBytes smaller8(EightBytes a, EightBytes b)
{
    return {_mm_min_pu8(a.value, b.value)};
}

inline EightBytes larger8(EightBytes a, EightBytes b)
{
    return {_mm_max_pu8(a.value, b.value)};
}

// a <= b, unsigned: a is the smaller.
inline EightBytes atMost8(EightBytes a, EightBytes b)
{
    return equal8(a, {_mm_min_pu8(a.value, b.value)});
}

// a >= b, unsigned: a is the larger.
inline EightBytes atLeast8(EightBytes a, EightBytes b)
{
    return equal8(a, {_mm_max_pu8(a.value, b.value)});
}

// |a - b| of signed words as unsigned words: the larger less the smaller.
inline EightBytes absoluteDifference16(EightBytes a, EightBytes b)
{
    return {_mm_sub_pi16(_mm_max_pi16(a.value, b.value), _mm_min_pi16(a.value, b.value))};
}

// Numbers in 32-bit lanes that add up to the bytes' sum.
inline EightBytes sumBytes(EightBytes a)
{
    return {_mm_sad_pu8(a.value, _mm_setzero_si64())};
}

inline EightBytes sumDifferences8(EightBytes a, EightBytes b)
{
    return {_mm_sad_pu8(a.value, b.value)};
}

}
}
