// What half-pel prediction asks of 8 and 16 samples in MMX registers, but for their average.
#pragma once

#include "lanes/eight_bytes.h"
#include "lanes/pair.h"
#include "lanes/saturating_words4.h"

namespace rux::RUX_LEVEL {
namespace {

using Samples8 = EightBytes;
using Samples16 = Pair<EightBytes>;
using Words8 = Pair<SaturatingWords4>;
using Words16 = Pair<Words8>;

template <typename Samples>
Samples broadcastByte(uint8_t value);

template <>
inline Samples8 broadcastByte<Samples8>(uint8_t value)
{
    return {_mm_set1_pi8(static_cast<char>(value))};
}

template <>
inline Samples16 broadcastByte<Samples16>(uint8_t value)
{
    return {broadcastByte<Samples8>(value), broadcastByte<Samples8>(value)};
}

inline Samples16 subtractSaturated(Samples16 a, Samples16 b)
{
    return {subtractSaturated(a.low, b.low), subtractSaturated(a.high, b.high)};
}

inline Samples8 wrappingDifference(Samples8 a, Samples8 b)
{
    return {_mm_sub_pi8(a.value, b.value)};
}

inline Words8 widened(Samples8 a)
{
    const __m64 zero = _mm_setzero_si64();
    return {{_mm_unpacklo_pi8(a.value, zero)}, {_mm_unpackhi_pi8(a.value, zero)}};
}

inline Words16 widened(Samples16 a)
{
    return {widened(a.low), widened(a.high)};
}

// Words saturated to bytes.
inline Samples8 packed(Words8 a)
{
    return {_mm_packs_pu16(a.low.value, a.high.value)};
}

inline Samples16 packed(Words16 a)
{
    return {packed(a.low), packed(a.high)};
}

}
}
