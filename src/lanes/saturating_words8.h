// Eight signed 16-bit words in an SSE2 register, whose sums and differences saturate.
//
// The same vocabulary as lanes/saturating_words4.h, so that one algorithm serves both widths.
#pragma once

#include <emmintrin.h>

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

struct SaturatingWords8 {
    static constexpr int count = 8;
    __m128i value;

    static SaturatingWords8 load(const void* from)
    {
        return {_mm_loadu_si128(static_cast<const __m128i*>(from))};
    }
    static SaturatingWords8 loadAligned(const void* from)
    {
        return {_mm_load_si128(static_cast<const __m128i*>(from))};
    }
    static SaturatingWords8 broadcast(int16_t word) { return {_mm_set1_epi16(word)}; }
    void store(void* to) const { _mm_storeu_si128(static_cast<__m128i*>(to), value); }
};

inline SaturatingWords8 operator+(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_adds_epi16(a.value, b.value)};
}

inline SaturatingWords8 operator-(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_subs_epi16(a.value, b.value)};
}

inline SaturatingWords8 operator|(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_or_si128(a.value, b.value)};
}

inline SaturatingWords8 operator&(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_and_si128(a.value, b.value)};
}

inline SaturatingWords8 operator^(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_xor_si128(a.value, b.value)};
}

inline SaturatingWords8 andNot(SaturatingWords8 mask, SaturatingWords8 a)
{
    return {_mm_andnot_si128(mask.value, a.value)};
}

// The bits that leave a word at the left are lost.
template <int bits>
inline SaturatingWords8 shiftedLeft(SaturatingWords8 a)
{
    return {_mm_slli_epi16(a.value, bits)};
}

template <int bits>
inline SaturatingWords8 shiftedRight(SaturatingWords8 a)
{
    return {_mm_srai_epi16(a.value, bits)};
}

inline SaturatingWords8 wrappingSum(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_add_epi16(a.value, b.value)};
}

inline SaturatingWords8 wrappingDifference(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_sub_epi16(a.value, b.value)};
}

// The low and the high word of the signed product.
inline SaturatingWords8 lowProduct(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_mullo_epi16(a.value, b.value)};
}

inline SaturatingWords8 highProduct(SaturatingWords8 a, int16_t factor)
{
    return {_mm_mulhi_epi16(a.value, _mm_set1_epi16(factor))};
}

// All bits set where a is greater.
inline SaturatingWords8 isGreater(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_cmpgt_epi16(a.value, b.value)};
}

inline SaturatingWords8 smaller(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_min_epi16(a.value, b.value)};
}

inline SaturatingWords8 larger(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_max_epi16(a.value, b.value)};
}

}
}
