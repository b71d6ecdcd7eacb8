// Supersampling in vectors: rows and whole boxes in integers, fractional rows in floats, means in doubles.
#pragma once

#include <emmintrin.h>

#include "geometry/resize_super.h"
#include "geometry/resize_super_steps.h"
#include "geometry/resize_whole_sse2.h"

namespace rux::RUX_LEVEL {
namespace {

// Rows that words can hold the sum of: 255 * 257 = 65535.
constexpr int32_t rowsInWords = 257;

inline __m128i* vectorAt(void* address)
{
    return static_cast<__m128i*>(address);
}

inline void addWords(uint32_t* sums, __m128i words)
{
    const __m128i zero = _mm_setzero_si128();
    _mm_store_si128(vectorAt(sums), _mm_add_epi32(_mm_load_si128(vectorAt(sums)), _mm_unpacklo_epi16(words, zero)));
    _mm_store_si128(vectorAt(sums + 4),
                    _mm_add_epi32(_mm_load_si128(vectorAt(sums + 4)), _mm_unpackhi_epi16(words, zero)));
}

// Sixteen columns at a time down all rows, in words.
void addRows(uint32_t* sums, const uint8_t* src, int32_t srcStep, int32_t rows, int32_t columns)
{
    const __m128i zero = _mm_setzero_si128();
    for (int32_t left = rows; left > 0; left -= rowsInWords) {
        const int32_t now = left < rowsInWords ? left : rowsInWords;
        int32_t j = 0;
        for (; j + 16 <= columns; j += 16) {
            __m128i low = zero;
            __m128i high = zero;
            const uint8_t* row = src + j;
            for (int32_t i = 0; i < now; ++i, row += srcStep) {
                const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(row));
                low = _mm_add_epi16(low, _mm_unpacklo_epi8(bytes, zero));
                high = _mm_add_epi16(high, _mm_unpackhi_epi8(bytes, zero));
            }
            addWords(sums + j, low);
            addWords(sums + j + 8, high);
        }
        for (; j < columns; ++j)
            for (int32_t i = 0; i < now; ++i) sums[j] += src[static_cast<ptrdiff_t>(i) * srcStep + j];
        src += static_cast<ptrdiff_t>(now) * srcStep;
    }
}

void compactWhole(uint32_t* sums, int32_t columns, int32_t whole, int32_t boxes)
{
    for (int32_t k = 0, first = 0; k < boxes && first < columns; ++k) {
        const int32_t end = whole < columns - first ? first + whole : columns;
        uint32_t sum = 0;
        if (end - first >= 4) {
            __m128i lanes = _mm_setzero_si128();
            for (; first + 4 <= end; first += 4)
                lanes = _mm_add_epi32(lanes, _mm_loadu_si128(vectorAt(sums + first)));
            lanes = _mm_add_epi32(lanes, _mm_unpackhi_epi64(lanes, lanes));
            lanes = _mm_add_epi32(lanes, _mm_shuffle_epi32(lanes, 1));
            sum = static_cast<uint32_t>(_mm_cvtsi128_si32(lanes));
        }
        for (; first < end; ++first) sum += sums[first];
        sums[k] = sum;
    }
}

struct EightPixels {
    __m128 low;
    __m128 high;
};

inline EightPixels loadPixels(const uint8_t* from)
{
    const __m128i zero = _mm_setzero_si128();
    const __m128i words = _mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(from)), zero);
    return {_mm_cvtepi32_ps(_mm_unpacklo_epi16(words, zero)), _mm_cvtepi32_ps(_mm_unpackhi_epi16(words, zero))};
}

void addRows(float* sums, const uint8_t* src, int32_t srcStep, int32_t rows, int32_t columns)
{
    int32_t j = 0;
    for (; j + 8 <= columns; j += 8) {
        __m128 low = _mm_load_ps(sums + j);
        __m128 high = _mm_load_ps(sums + j + 4);
        const uint8_t* row = src + j;
        for (int32_t i = 0; i < rows; ++i, row += srcStep) {
            const EightPixels pixels = loadPixels(row);
            low = _mm_add_ps(low, pixels.low);
            high = _mm_add_ps(high, pixels.high);
        }
        _mm_store_ps(sums + j, low);
        _mm_store_ps(sums + j + 4, high);
    }
    for (; j < columns; ++j)
        for (int32_t i = 0; i < rows; ++i) sums[j] += src[static_cast<ptrdiff_t>(i) * srcStep + j];
}

// Whole vectors in float, product and sum rounded each; the columns past them in double.
void addWeightedRow(float* sums, const uint8_t* src, double weight, int32_t columns)
{
    const __m128 factor = _mm_set1_ps(static_cast<float>(weight));
    int32_t j = 0;
    for (; j + 8 <= columns; j += 8) {
        const EightPixels pixels = loadPixels(src + j);
        _mm_store_ps(sums + j, _mm_add_ps(_mm_load_ps(sums + j), _mm_mul_ps(pixels.low, factor)));
        _mm_store_ps(sums + j + 4, _mm_add_ps(_mm_load_ps(sums + j + 4), _mm_mul_ps(pixels.high, factor)));
    }
    addWeightedPixels(sums, src, weight, j, columns);
}

// Means lie in 0 .. 511: 32 bits hold the truncated value.
inline __m128i fourMeans(__m128d low, __m128d high, __m128d norm)
{
    const __m128d half = _mm_set1_pd(0.5);
    return _mm_unpacklo_epi64(_mm_cvttpd_epi32(_mm_add_pd(_mm_mul_pd(low, norm), half)),
                              _mm_cvttpd_epi32(_mm_add_pd(_mm_mul_pd(high, norm), half)));
}

inline __m128i fourMeans(const float* sums, __m128d norm)
{
    const __m128 four = _mm_load_ps(sums);
    return fourMeans(_mm_cvtps_pd(four), _mm_cvtps_pd(_mm_movehl_ps(four, four)), norm);
}

// An unsigned number is a signed one, 2^31 less, and 2^31.
inline __m128i fourMeans(const uint32_t* sums, __m128d norm)
{
    const __m128d offset = _mm_set1_pd(2147483648.0);
    const __m128i four = _mm_xor_si128(_mm_load_si128(reinterpret_cast<const __m128i*>(sums)),
                                       _mm_set1_epi32(INT32_MIN));
    return fourMeans(_mm_add_pd(_mm_cvtepi32_pd(four), offset),
                     _mm_add_pd(_mm_cvtepi32_pd(_mm_shuffle_epi32(four, _MM_SHUFFLE(3, 2, 3, 2))), offset), norm);
}

template <typename Sum>
inline void writeMeansByEights(const Sum* sums, double norm, uint8_t* dst, int32_t width)
{
    const __m128d factor = _mm_set1_pd(norm);
    const __m128i lowBits = _mm_set1_epi32(0xFF);
    int32_t j = 0;
    for (; j + 8 <= width; j += 8) {
        const __m128i words = _mm_packs_epi32(_mm_and_si128(fourMeans(sums + j, factor), lowBits),
                                              _mm_and_si128(fourMeans(sums + j + 4, factor), lowBits));
        _mm_storel_epi64(vectorAt(dst + j), _mm_packus_epi16(words, words));
    }
    writeMeansSingly(sums, norm, dst, j, width);
}

void writeMeans(const uint32_t* sums, double norm, uint8_t* dst, int32_t width)
{
    writeMeansByEights(sums, norm, dst, width);
}

void writeMeans(const float* sums, double norm, uint8_t* dst, int32_t width)
{
    writeMeansByEights(sums, norm, dst, width);
}

void reduceWholeRow(const Reduction& reduction, uint32_t* sums, int32_t columns, const uint8_t* src, int32_t srcStep,
                    uint8_t* dst)
{
    if (fitsWords(reduction, columns))
        reduceInWords(reduction, sums, columns, src, srcStep, dst);
    else
        reduceInSteps(reduction, sums, columns, src, srcStep, dst);
}

}
}
