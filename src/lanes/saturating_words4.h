// Four signed 16-bit words in an MMX register, whose sums and differences saturate.
//
// The same vocabulary as lanes/saturating_words8.h, so that one algorithm serves both widths.
#pragma once

#include <mmintrin.h>

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

struct SaturatingWords4 {
    static constexpr int count = 4;
    __m64 value;

    static SaturatingWords4 load(const void* from) { return {rux::RUX_LEVEL::load<__m64>(from)}; }
    static SaturatingWords4 broadcast(int16_t word) { return {_mm_set1_pi16(word)}; }
    void store(void* to) const { rux::RUX_LEVEL::store(to, value); }
};

inline SaturatingWords4 operator+(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_adds_pi16(a.value, b.value)};
}

inline SaturatingWords4 operator-(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_subs_pi16(a.value, b.value)};
}

inline SaturatingWords4 operator|(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_or_si64(a.value, b.value)};
}

inline SaturatingWords4 operator&(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_and_si64(a.value, b.value)};
}

inline SaturatingWords4 operator^(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_xor_si64(a.value, b.value)};
}

inline SaturatingWords4 andNot(SaturatingWords4 mask, SaturatingWords4 a)
{
    return {_mm_andnot_si64(mask.value, a.value)};
}

// The bits that leave a word at the left are lost.
template <int bits>
inline SaturatingWords4 shiftedLeft(SaturatingWords4 a)
{
    return {_mm_slli_pi16(a.value, bits)};
}

template <int bits>
inline SaturatingWords4 shiftedRight(SaturatingWords4 a)
{
    return {_mm_srai_pi16(a.value, bits)};
}

inline SaturatingWords4 wrappingSum(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_add_pi16(a.value, b.value)};
}

inline SaturatingWords4 wrappingDifference(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_sub_pi16(a.value, b.value)};
}

// The low and the high word of the signed product.
inline SaturatingWords4 lowProduct(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_mullo_pi16(a.value, b.value)};
}

inline SaturatingWords4 highProduct(SaturatingWords4 a, int16_t factor)
{
    return {_mm_mulhi_pi16(a.value, _mm_set1_pi16(factor))};
}

// All bits set where a is greater.
inline SaturatingWords4 isGreater(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_cmpgt_pi16(a.value, b.value)};
}

}
}
