// What pixel formats ask of four words in an MMX register: bytes widened, packed, interleaved by two and by three.
//
// The same vocabulary as lanes/pixel_words8.h.
#pragma once

#include <mmintrin.h>

#include "lanes/saturating_words4.h"

namespace rux::RUX_LEVEL {
namespace {

inline SaturatingWords4 loadHalf(const uint8_t* from)
{
    return {_mm_cvtsi32_si64(load<int32_t>(from))};
}

inline void storeHalf(SaturatingWords4 a, uint8_t* to)
{
    store<int32_t>(to, _mm_cvtsi64_si32(a.value));
}

inline SaturatingWords4 interleaveLowBytes(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_unpacklo_pi8(a.value, b.value)};
}

inline SaturatingWords4 interleaveHighBytes(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_unpackhi_pi8(a.value, b.value)};
}

// The low half's bytes interleaved with the high half's.
inline SaturatingWords4 interleaveHalves(SaturatingWords4 a)
{
    return {_mm_unpacklo_pi8(a.value, _mm_srli_si64(a.value, 32))};
}

inline SaturatingWords4 interleaveLowWords(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_unpacklo_pi16(a.value, b.value)};
}

inline SaturatingWords4 interleaveHighWords(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_unpackhi_pi16(a.value, b.value)};
}

inline SaturatingWords4 interleaveLowDoubleWords(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_unpacklo_pi32(a.value, b.value)};
}

inline SaturatingWords4 interleaveHighDoubleWords(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_unpackhi_pi32(a.value, b.value)};
}

// Words clamped to 0..255.
inline SaturatingWords4 packBytes(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_packs_pu16(a.value, b.value)};
}

template <int bits>
inline SaturatingWords4 shiftedRightUnsigned(SaturatingWords4 a)
{
    return {_mm_srli_pi16(a.value, bits)};
}

inline SaturatingWords4 highProduct(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_mulhi_pi16(a.value, b.value)};
}

// Neighbouring words multiplied and added to double words: a0 b0 + a1 b1.
inline SaturatingWords4 multiplyAddPairs(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_madd_pi16(a.value, b.value)};
}

inline SaturatingWords4 doubleWordSum(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_add_pi32(a.value, b.value)};
}

template <int bits>
inline SaturatingWords4 doubleWordsShiftedRight(SaturatingWords4 a)
{
    return {_mm_srai_pi32(a.value, bits)};
}

// Double words clamped to words.
inline SaturatingWords4 packWords(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_packs_pi32(a.value, b.value)};
}

inline SaturatingWords4 broadcastPair(int16_t first, int16_t second)
{
    return {_mm_set_pi16(second, first, second, first)};
}

struct OrdinaryStores {
    static void put(SaturatingWords4 a, uint8_t* to) { a.store(to); }
};

// x0 y0 z0 x1 y1 z1 ... x3 y3 z3. Seen as double words of neighbours (xy = x y, zx = z x', yz = y z), it is
// xy0 zx0 | yz1 xy2 | zx2 yz3.
template <typename Stores>
inline void storeTriples(SaturatingWords4 x, SaturatingWords4 y, SaturatingWords4 z, uint8_t* to)
{
    const __m64 nextX = _mm_srli_si64(x.value, 16);
    const __m64 xyLow = _mm_unpacklo_pi16(x.value, y.value);
    const __m64 xyHigh = _mm_unpackhi_pi16(x.value, y.value);
    const __m64 zxLow = _mm_unpacklo_pi16(z.value, nextX);
    const __m64 zxHigh = _mm_unpackhi_pi16(z.value, nextX);
    const __m64 yzLow = _mm_unpacklo_pi16(y.value, z.value);
    const __m64 yzHigh = _mm_unpackhi_pi16(y.value, z.value);
    Stores::put({_mm_unpacklo_pi32(xyLow, zxLow)}, to);
    Stores::put({_mm_unpacklo_pi32(_mm_srli_si64(yzLow, 32), xyHigh)}, to + 8);
    Stores::put({_mm_unpacklo_pi32(zxHigh, _mm_srli_si64(yzHigh, 32))}, to + 16);
}

struct WordTriples {
    SaturatingWords4 x, y, z;
};

// The opposite of storeTriples: four quads of x y z and a word that does not matter, transposed.
inline WordTriples loadTriples(const uint8_t* from)
{
    const __m64 quad0 = load<__m64>(from);
    const __m64 quad1 = load<__m64>(from + 6);
    const __m64 quad2 = load<__m64>(from + 12);
    const __m64 quad3 = _mm_srli_si64(load<__m64>(from + 16), 16);   // from 18 on it would reach two bytes too far

    const __m64 evenXY = _mm_unpacklo_pi16(quad0, quad2);
    const __m64 evenZ = _mm_unpackhi_pi16(quad0, quad2);
    const __m64 oddXY = _mm_unpacklo_pi16(quad1, quad3);
    const __m64 oddZ = _mm_unpackhi_pi16(quad1, quad3);
    return {{_mm_unpacklo_pi16(evenXY, oddXY)}, {_mm_unpackhi_pi16(evenXY, oddXY)},
            {_mm_unpacklo_pi16(evenZ, oddZ)}};
}

}
}
