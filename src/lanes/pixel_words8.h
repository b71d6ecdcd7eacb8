// What pixel formats ask of eight words in an SSE2 register: bytes widened, packed, interleaved by two and by three.
//
// The same vocabulary as lanes/pixel_words4.h.
#pragma once

#include "lanes/saturating_words8.h"

namespace rux::RUX_LEVEL {
namespace {

inline SaturatingWords8 loadHalf(const uint8_t* from)
{
    return {_mm_loadl_epi64(reinterpret_cast<const __m128i*>(from))};
}

inline void storeHalf(SaturatingWords8 a, uint8_t* to)
{
    _mm_storel_epi64(reinterpret_cast<__m128i*>(to), a.value);
}

inline SaturatingWords8 interleaveLowBytes(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_unpacklo_epi8(a.value, b.value)};
}

inline SaturatingWords8 interleaveHighBytes(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_unpackhi_epi8(a.value, b.value)};
}

// The low half's bytes interleaved with the high half's.
inline SaturatingWords8 interleaveHalves(SaturatingWords8 a)
{
    return {_mm_unpacklo_epi8(a.value, _mm_srli_si128(a.value, 8))};
}

inline SaturatingWords8 interleaveLowWords(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_unpacklo_epi16(a.value, b.value)};
}

inline SaturatingWords8 interleaveHighWords(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_unpackhi_epi16(a.value, b.value)};
}

inline SaturatingWords8 interleaveLowDoubleWords(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_unpacklo_epi32(a.value, b.value)};
}

inline SaturatingWords8 interleaveHighDoubleWords(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_unpackhi_epi32(a.value, b.value)};
}

// Words clamped to 0..255.
inline SaturatingWords8 packBytes(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_packus_epi16(a.value, b.value)};
}

template <int bits>
inline SaturatingWords8 shiftedRightUnsigned(SaturatingWords8 a)
{
    return {_mm_srli_epi16(a.value, bits)};
}

inline SaturatingWords8 highProduct(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_mulhi_epi16(a.value, b.value)};
}

inline SaturatingWords8 highProductUnsigned(SaturatingWords8 a, uint16_t factor)
{
    return {_mm_mulhi_epu16(a.value, _mm_set1_epi16(static_cast<int16_t>(factor)))};
}

// Neighbouring words multiplied and added to double words: a0 b0 + a1 b1.
inline SaturatingWords8 multiplyAddPairs(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_madd_epi16(a.value, b.value)};
}

inline SaturatingWords8 doubleWordSum(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_add_epi32(a.value, b.value)};
}

template <int bits>
inline SaturatingWords8 doubleWordsShiftedRight(SaturatingWords8 a)
{
    return {_mm_srai_epi32(a.value, bits)};
}

// Double words clamped to words.
inline SaturatingWords8 packWords(SaturatingWords8 a, SaturatingWords8 b)
{
    return {_mm_packs_epi32(a.value, b.value)};
}

inline SaturatingWords8 broadcastPair(int16_t first, int16_t second)
{
    return {_mm_set_epi16(second, first, second, first, second, first, second, first)};
}

struct OrdinaryStores {
    static void put(SaturatingWords8 a, uint8_t* to) { a.store(to); }
};

struct AlignedStores {
    static void put(SaturatingWords8 a, uint8_t* to) { _mm_store_si128(reinterpret_cast<__m128i*>(to), a.value); }
};

// Double words a[i] b[j] of two registers side by side.
template <int a0, int a1, int b0, int b1>
inline __m128 chooseDoubleWords(__m128 a, __m128 b)
{
    return _mm_shuffle_ps(a, b, _MM_SHUFFLE(b1, b0, a1, a0));
}

// x0 y0 z0 x1 y1 z1 ... x7 y7 z7. Seen as double words of neighbours (xy = x y, zx = z x', yz = y z), it is
// xy0 zx0 yz1 xy2 | zx2 yz3 xy4 zx4 | yz5 xy6 zx6 yz7.
template <typename Stores>
inline void storeTriples(SaturatingWords8 x, SaturatingWords8 y, SaturatingWords8 z, uint8_t* to)
{
    const __m128i nextX = _mm_srli_si128(x.value, 2);
    const __m128 xyLow = _mm_castsi128_ps(_mm_unpacklo_epi16(x.value, y.value));
    const __m128 xyHigh = _mm_castsi128_ps(_mm_unpackhi_epi16(x.value, y.value));
    const __m128 zxLow = _mm_castsi128_ps(_mm_unpacklo_epi16(z.value, nextX));
    const __m128 zxHigh = _mm_castsi128_ps(_mm_unpackhi_epi16(z.value, nextX));
    const __m128 yzLow = _mm_castsi128_ps(_mm_unpacklo_epi16(y.value, z.value));
    const __m128 yzHigh = _mm_castsi128_ps(_mm_unpackhi_epi16(y.value, z.value));

    const __m128 first = chooseDoubleWords<0, 1, 0, 2>(_mm_unpacklo_ps(xyLow, zxLow),
                                                       chooseDoubleWords<1, 1, 2, 2>(yzLow, xyLow));
    const __m128 second = chooseDoubleWords<0, 2, 0, 1>(chooseDoubleWords<2, 2, 3, 3>(zxLow, yzLow),
                                                        _mm_unpacklo_ps(xyHigh, zxHigh));
    const __m128 third = chooseDoubleWords<0, 2, 0, 2>(chooseDoubleWords<1, 1, 2, 2>(yzHigh, xyHigh),
                                                       chooseDoubleWords<2, 2, 3, 3>(zxHigh, yzHigh));
    Stores::put({_mm_castps_si128(first)}, to);
    Stores::put({_mm_castps_si128(second)}, to + 16);
    Stores::put({_mm_castps_si128(third)}, to + 32);
}

struct WordTriples {
    SaturatingWords8 x, y, z;
};

// The opposite of storeTriples: eight quads of x y z and a word that does not matter, transposed.
inline WordTriples loadTriples(const uint8_t* from)
{
    const auto quad = [from](int index) {
        return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(from + index * 6));
    };
    // The last quad would reach two bytes past the triples.
    const __m128i last = _mm_srli_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(from + 40)), 16);

    const __m128i quads04 = _mm_unpacklo_epi16(quad(0), quad(4));
    const __m128i quads15 = _mm_unpacklo_epi16(quad(1), quad(5));
    const __m128i quads26 = _mm_unpacklo_epi16(quad(2), quad(6));
    const __m128i quads37 = _mm_unpacklo_epi16(quad(3), last);
    const __m128i evenXY = _mm_unpacklo_epi16(quads04, quads26);
    const __m128i evenZ = _mm_unpackhi_epi16(quads04, quads26);
    const __m128i oddXY = _mm_unpacklo_epi16(quads15, quads37);
    const __m128i oddZ = _mm_unpackhi_epi16(quads15, quads37);
    return {{_mm_unpacklo_epi16(evenXY, oddXY)}, {_mm_unpackhi_epi16(evenXY, oddXY)},
            {_mm_unpacklo_epi16(evenZ, oddZ)}};
}

}
}
