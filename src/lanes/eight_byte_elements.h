// Elements of 8, 16 and 32 bits in an MMX register.
//
// The same vocabulary as lanes/sixteen_byte_elements.h, so that one algorithm serves both widths.
#pragma once

#include "lanes/eight_bytes.h"

namespace rux::RUX_LEVEL {
namespace {

inline EightBytes andNot(EightBytes mask, EightBytes a)
{
    return {_mm_andnot_si64(mask.value, a.value)};
}

inline EightBytes subtract8(EightBytes a, EightBytes b)
{
    return {_mm_sub_pi8(a.value, b.value)};
}

inline EightBytes subtract16(EightBytes a, EightBytes b)
{
    return {_mm_sub_pi16(a.value, b.value)};
}

inline EightBytes add16(EightBytes a, EightBytes b)
{
    return {_mm_add_pi16(a.value, b.value)};
}

inline EightBytes add32(EightBytes a, EightBytes b)
{
    return {_mm_add_pi32(a.value, b.value)};
}

// All bits of an element set where the comparison holds.
inline EightBytes equal8(EightBytes a, EightBytes b)
{
    return {_mm_cmpeq_pi8(a.value, b.value)};
}

inline EightBytes greater16(EightBytes a, EightBytes b)
{
    return {_mm_cmpgt_pi16(a.value, b.value)};
}

inline EightBytes greater32(EightBytes a, EightBytes b)
{
    return {_mm_cmpgt_pi32(a.value, b.value)};
}

// Elements of the lower and of the upper half with zeros above them.
inline EightBytes widenLow8(EightBytes a)
{
    return {_mm_unpacklo_pi8(a.value, _mm_setzero_si64())};
}

inline EightBytes widenHigh8(EightBytes a)
{
    return {_mm_unpackhi_pi8(a.value, _mm_setzero_si64())};
}

// The bytes at even and at odd places as words: word i is byte 2i or 2i + 1.
inline EightBytes evenBytes(EightBytes a)
{
    return {_mm_and_si64(a.value, _mm_set1_pi16(0xFF))};
}

inline EightBytes oddBytes(EightBytes a)
{
    return {_mm_srli_pi16(a.value, 8)};
}

// Words of the lower and of the upper halves, one of a, one of b in turn.
inline EightBytes interleaveLow16(EightBytes a, EightBytes b)
{
    return {_mm_unpacklo_pi16(a.value, b.value)};
}

inline EightBytes interleaveHigh16(EightBytes a, EightBytes b)
{
    return {_mm_unpackhi_pi16(a.value, b.value)};
}

inline EightBytes widenLow16(EightBytes a)
{
    return {_mm_unpacklo_pi16(a.value, _mm_setzero_si64())};
}

inline EightBytes widenHigh16(EightBytes a)
{
    return {_mm_unpackhi_pi16(a.value, _mm_setzero_si64())};
}

}
}
