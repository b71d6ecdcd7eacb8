// Elements of 8, 16 and 32 bits in an SSE2 register.
//
// The same vocabulary as lanes/eight_byte_elements.h, so that one algorithm serves both widths.
#pragma once

#include "lanes/sixteen_bytes.h"

namespace rux::RUX_LEVEL {
namespace {

inline SixteenBytes andNot(SixteenBytes mask, SixteenBytes a)
{
    return {_mm_andnot_si128(mask.value, a.value)};
}

inline SixteenBytes subtract8(SixteenBytes a, SixteenBytes b)
{
    return {_mm_sub_epi8(a.value, b.value)};
}

inline SixteenBytes subtract16(SixteenBytes a, SixteenBytes b)
{
    return {_mm_sub_epi16(a.value, b.value)};
}

inline SixteenBytes add16(SixteenBytes a, SixteenBytes b)
{
    return {_mm_add_epi16(a.value, b.value)};
}

inline SixteenBytes add32(SixteenBytes a, SixteenBytes b)
{
    return {_mm_add_epi32(a.value, b.value)};
}

// All bits of an element set where the comparison holds.
inline SixteenBytes equal8(SixteenBytes a, SixteenBytes b)
{
    return {_mm_cmpeq_epi8(a.value, b.value)};
}

inline SixteenBytes greater16(SixteenBytes a, SixteenBytes b)
{
    return {_mm_cmpgt_epi16(a.value, b.value)};
}

// The smaller and the larger of two unsigned bytes.
inline SixteenBytes smaller8(SixteenBytes a, SixteenBytes b)
{
    return {_mm_min_epu8(a.value, b.value)};
}

inline SixteenBytes larger8(SixteenBytes a, SixteenBytes b)
{
    return {_mm_max_epu8(a.value, b.value)};
}

// a <= b, unsigned: a is the smaller.
inline SixteenBytes atMost8(SixteenBytes a, SixteenBytes b)
{
    return equal8(a, {_mm_min_epu8(a.value, b.value)});
}

// a >= b, unsigned: a is the larger.
inline SixteenBytes atLeast8(SixteenBytes a, SixteenBytes b)
{
    return equal8(a, {_mm_max_epu8(a.value, b.value)});
}

// |a - b| of signed words as unsigned words: the larger less the smaller.
inline SixteenBytes absoluteDifference16(SixteenBytes a, SixteenBytes b)
{
    return {_mm_sub_epi16(_mm_max_epi16(a.value, b.value), _mm_min_epi16(a.value, b.value))};
}

// Elements of the lower and of the upper half with zeros above them.
inline SixteenBytes widenLow8(SixteenBytes a)
{
    return {_mm_unpacklo_epi8(a.value, _mm_setzero_si128())};
}

inline SixteenBytes widenHigh8(SixteenBytes a)
{
    return {_mm_unpackhi_epi8(a.value, _mm_setzero_si128())};
}

// The bytes at even and at odd places as words: word i is byte 2i or 2i + 1.
inline SixteenBytes evenBytes(SixteenBytes a)
{
    return {_mm_and_si128(a.value, _mm_set1_epi16(0xFF))};
}

inline SixteenBytes oddBytes(SixteenBytes a)
{
    return {_mm_srli_epi16(a.value, 8)};
}

// Words of the lower and of the upper halves, one of a, one of b in turn.
inline SixteenBytes interleaveLow16(SixteenBytes a, SixteenBytes b)
{
    return {_mm_unpacklo_epi16(a.value, b.value)};
}

inline SixteenBytes interleaveHigh16(SixteenBytes a, SixteenBytes b)
{
    return {_mm_unpackhi_epi16(a.value, b.value)};
}

inline SixteenBytes widenLow16(SixteenBytes a)
{
    return {_mm_unpacklo_epi16(a.value, _mm_setzero_si128())};
}

inline SixteenBytes widenHigh16(SixteenBytes a)
{
    return {_mm_unpackhi_epi16(a.value, _mm_setzero_si128())};
}

// Numbers in 32-bit lanes that add up to the bytes' sum.
inline SixteenBytes sumBytes(SixteenBytes a)
{
    return {_mm_sad_epu8(a.value, _mm_setzero_si128())};
}

inline SixteenBytes sumDifferences8(SixteenBytes a, SixteenBytes b)
{
    return {_mm_sad_epu8(a.value, b.value)};
}

}
}
