// Four signed 16-bit words in an MMX register, whose sums and differences saturate.
//
// The same vocabulary as lanes/eight_saturating_words.h, so that one algorithm serves both widths.
#pragma once

#include <mmintrin.h>

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

struct FourSaturatingWords {
    static constexpr size_t size = 8;
    __m64 value;

    static FourSaturatingWords load(const void* from) { return {rux::RUX_LEVEL::load<__m64>(from)}; }
    static FourSaturatingWords broadcast(int16_t word) { return {_mm_set1_pi16(word)}; }
    void store(void* to) const { rux::RUX_LEVEL::store(to, value); }
};

inline FourSaturatingWords operator+(FourSaturatingWords a, FourSaturatingWords b)
{
    return {_mm_adds_pi16(a.value, b.value)};
}

inline FourSaturatingWords operator-(FourSaturatingWords a, FourSaturatingWords b)
{
    return {_mm_subs_pi16(a.value, b.value)};
}

inline FourSaturatingWords operator|(FourSaturatingWords a, FourSaturatingWords b)
{
    return {_mm_or_si64(a.value, b.value)};
}

inline FourSaturatingWords operator&(FourSaturatingWords a, FourSaturatingWords b)
{
    return {_mm_and_si64(a.value, b.value)};
}

inline FourSaturatingWords operator^(FourSaturatingWords a, FourSaturatingWords b)
{
    return {_mm_xor_si64(a.value, b.value)};
}

// The bits that leave a word at the left are lost.
template <int bits>
inline FourSaturatingWords shiftedLeft(FourSaturatingWords a)
{
    return {_mm_slli_pi16(a.value, bits)};
}

template <int bits>
inline FourSaturatingWords shiftedRight(FourSaturatingWords a)
{
    return {_mm_srai_pi16(a.value, bits)};
}

inline FourSaturatingWords wrappingSum(FourSaturatingWords a, FourSaturatingWords b)
{
    return {_mm_add_pi16(a.value, b.value)};
}

// The low and the high word of the signed product.
inline FourSaturatingWords lowProduct(FourSaturatingWords a, FourSaturatingWords b)
{
    return {_mm_mullo_pi16(a.value, b.value)};
}

inline FourSaturatingWords highProduct(FourSaturatingWords a, int16_t factor)
{
    return {_mm_mulhi_pi16(a.value, _mm_set1_pi16(factor))};
}

// All bits set where a is greater.
inline FourSaturatingWords isGreater(FourSaturatingWords a, FourSaturatingWords b)
{
    return {_mm_cmpgt_pi16(a.value, b.value)};
}

}
}
