// Linear interpolation in vectors of eight pixels. Truncates.
#pragma once

#include <emmintrin.h>

#include "geometry/resize_linear.h"

namespace rux::RUX_LEVEL {
namespace {

inline __m128i loadSixteen(const void* from)
{
    return _mm_loadu_si128(static_cast<const __m128i*>(from));
}

// (w0 * p0 + w1 * p1) >> 8 is a multiply-and-add of words: a weight is at most 16384, a sum at most 16320 * 256.
inline void scaleEightLinear(const uint8_t* src, const int32_t* offsets, const uint16_t* weights, uint16_t* row)
{
    __m128i pairs = _mm_cvtsi32_si128(load<uint16_t>(src + offsets[0]));
    pairs = _mm_insert_epi16(pairs, load<uint16_t>(src + offsets[1]), 1);
    pairs = _mm_insert_epi16(pairs, load<uint16_t>(src + offsets[2]), 2);
    pairs = _mm_insert_epi16(pairs, load<uint16_t>(src + offsets[3]), 3);
    pairs = _mm_insert_epi16(pairs, load<uint16_t>(src + offsets[4]), 4);
    pairs = _mm_insert_epi16(pairs, load<uint16_t>(src + offsets[5]), 5);
    pairs = _mm_insert_epi16(pairs, load<uint16_t>(src + offsets[6]), 6);
    pairs = _mm_insert_epi16(pairs, load<uint16_t>(src + offsets[7]), 7);
    const __m128i zero = _mm_setzero_si128();
    const __m128i low = _mm_madd_epi16(_mm_unpacklo_epi8(pairs, zero), loadSixteen(weights));
    const __m128i high = _mm_madd_epi16(_mm_unpackhi_epi8(pairs, zero), loadSixteen(weights + 8));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(row),
                     _mm_packs_epi32(_mm_srli_epi32(low, 8), _mm_srli_epi32(high, 8)));
}

// The last eight pixels may be some of those before over again: their values are the same.
void scaleRowLinear(const uint8_t* src, const int32_t* offsets, const uint16_t* weights, uint16_t* row, int32_t width)
{
    int32_t j = 0;
    for (; j + 8 <= width; j += 8) scaleEightLinear(src, offsets + j, weights + 2 * j, row + j);
    if (j == width) return;
    if (width >= 8) {
        j = width - 8;
        scaleEightLinear(src, offsets + j, weights + 2 * j, row + j);
        return;
    }
    for (; j < width; ++j) {
        const uint8_t* const pair = src + offsets[j];
        row[j] = static_cast<uint16_t>((weights[2 * j] * pair[0] + weights[2 * j + 1] * pair[1]) >> 8);
    }
}

// Eight values as words.
inline __m128i blendEight(const uint16_t* upper, const uint16_t* lower, __m128i weights)
{
    const __m128i u = loadSixteen(upper);
    const __m128i l = loadSixteen(lower);
    const __m128i low = _mm_madd_epi16(_mm_unpacklo_epi16(l, u), weights);
    const __m128i high = _mm_madd_epi16(_mm_unpackhi_epi16(l, u), weights);
    return _mm_packs_epi32(_mm_srli_epi32(low, 20), _mm_srli_epi32(high, 20));
}

inline void blendAndStoreEight(const uint16_t* upper, const uint16_t* lower, __m128i weights, uint8_t* dst)
{
    const __m128i eight = blendEight(upper, lower, weights);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(dst), _mm_packus_epi16(eight, eight));
}

void blendRowsLinear(const uint16_t* upper, const uint16_t* lower, uint16_t weight, uint8_t* dst, int32_t width)
{
    const int32_t upperWeight = linearOne - weight;
    const __m128i weights = _mm_set1_epi32(upperWeight << 16 | weight);
    int32_t j = 0;
    for (; j + 16 <= width; j += 16) {
        const __m128i first = blendEight(upper + j, lower + j, weights);
        const __m128i second = blendEight(upper + j + 8, lower + j + 8, weights);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + j), _mm_packus_epi16(first, second));
    }
    if (j + 8 <= width) {
        blendAndStoreEight(upper + j, lower + j, weights, dst + j);
        j += 8;
    }
    if (j == width) return;
    if (width >= 8) {
        j = width - 8;
        blendAndStoreEight(upper + j, lower + j, weights, dst + j);
        return;
    }
    for (; j < width; ++j) dst[j] = static_cast<uint8_t>((lower[j] * weight + upper[j] * upperWeight) >> 20);
}

}
}
