// What half-pel prediction asks of 8 and 16 samples in SSE2 registers.
#pragma once

#include "lanes/pair.h"
#include "lanes/saturating_words8.h"
#include "lanes/sixteen_bytes.h"

namespace rux::RUX_LEVEL {
namespace {

// Eight samples in the lower half of a register; what stands in the upper half does not matter.
struct Samples8 {
    static constexpr size_t size = 8;
    __m128i value;

    static Samples8 load(const uint8_t* from) { return {_mm_loadl_epi64(reinterpret_cast<const __m128i*>(from))}; }
    void store(uint8_t* to) const { _mm_storel_epi64(reinterpret_cast<__m128i*>(to), value); }
};

using Samples16 = SixteenBytes;
using Words8 = SaturatingWords8;
using Words16 = Pair<SaturatingWords8>;

template <typename Samples>
inline Samples broadcastByte(uint8_t value)
{
    return {_mm_set1_epi8(static_cast<char>(value))};
}

// (a + b + 1) >> 1
template <typename Samples>
inline Samples average(Samples a, Samples b)
{
    return {_mm_avg_epu8(a.value, b.value)};
}

// a - 1 as signed saturating bytes have it: 0 becomes 255, 128 stays 128.
template <typename Samples>
inline Samples decremented(Samples a)
{
    return {_mm_subs_epi8(a.value, _mm_set1_epi8(1))};
}

// The same of max(a, 1): 0 stays 0.
template <typename Samples>
inline Samples decrementedAboveZero(Samples a)
{
    return {_mm_subs_epi8(_mm_max_epu8(a.value, _mm_set1_epi8(1)), _mm_set1_epi8(1))};
}

template <typename Samples>
inline Samples wrappingDifference(Samples a, Samples b)
{
    return {_mm_sub_epi8(a.value, b.value)};
}

inline Samples8 operator&(Samples8 a, Samples8 b)
{
    return {_mm_and_si128(a.value, b.value)};
}

inline Samples8 operator|(Samples8 a, Samples8 b)
{
    return {_mm_or_si128(a.value, b.value)};
}

inline Samples8 operator^(Samples8 a, Samples8 b)
{
    return {_mm_xor_si128(a.value, b.value)};
}

inline Samples8 subtractSaturated(Samples8 a, Samples8 b)
{
    return {_mm_subs_epu8(a.value, b.value)};
}

inline Words8 widened(Samples8 a)
{
    return {_mm_unpacklo_epi8(a.value, _mm_setzero_si128())};
}

inline Words16 widened(Samples16 a)
{
    const __m128i zero = _mm_setzero_si128();
    return {{_mm_unpacklo_epi8(a.value, zero)}, {_mm_unpackhi_epi8(a.value, zero)}};
}

// Words saturated to bytes.
inline Samples8 packed(Words8 a)
{
    return {_mm_packus_epi16(a.value, a.value)};
}

inline Samples16 packed(Words16 a)
{
    return {_mm_packus_epi16(a.low.value, a.high.value)};
}

}
}
