// Supersampling over whole boxes in words, for boxes of up to 128 rows.
//
// The sum of 128 bytes is at most 32640, so that a multiply-and-add by ones sums neighbouring columns as signed words;
// boxes of up to 65536 columns stay below 2^31.
#pragma once

#include <emmintrin.h>

#include "geometry/resize_super.h"

namespace rux::RUX_LEVEL {
namespace {

constexpr int32_t rowsInSignedWords = 128;
constexpr int32_t columnsInSignedSums = 65536;

inline __m128i loadWords(const uint16_t* words)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(words));
}

inline void storeWords(uint16_t* words, __m128i value)
{
    _mm_storeu_si128(reinterpret_cast<__m128i*>(words), value);
}

struct SixteenWords {
    __m128i low;
    __m128i high;
};

inline SixteenWords sumSixteenColumns(const uint8_t* src, int32_t srcStep, int32_t rows)
{
    const __m128i zero = _mm_setzero_si128();
    SixteenWords sums = {zero, zero};
    for (; rows > 0; --rows, src += srcStep) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src));
        sums.low = _mm_add_epi16(sums.low, _mm_unpacklo_epi8(bytes, zero));
        sums.high = _mm_add_epi16(sums.high, _mm_unpackhi_epi8(bytes, zero));
    }
    return sums;
}

// The sums of four boxes of any width, eight columns a step; what is read past a box counts zero times.
class WideBoxes {
public:
    explicit WideBoxes(int32_t width) : width(width)
    {
        static constexpr uint16_t onesAndZeros[16] = {1, 1, 1, 1, 1, 1, 1, 1};
        rest = loadWords(onesAndZeros + 8 - (width & 7));
    }

    __m128i sumFour(const uint16_t* words) const
    {
        const __m128i ones = _mm_set1_epi16(1);
        __m128i a = _mm_setzero_si128(), b = a, c = a, d = a;
        int32_t i = 0;
        for (; i + 8 <= width; i += 8) addEight(words + i, ones, a, b, c, d);
        if (i < width) addEight(words + i, rest, a, b, c, d);

        // Lane k of the result is the sum of the lanes of the k-th vector.
        const __m128i ab = _mm_add_epi32(_mm_unpacklo_epi32(a, b), _mm_unpackhi_epi32(a, b));
        const __m128i cd = _mm_add_epi32(_mm_unpacklo_epi32(c, d), _mm_unpackhi_epi32(c, d));
        return _mm_add_epi32(_mm_unpacklo_epi64(ab, cd), _mm_unpackhi_epi64(ab, cd));
    }

private:
    void addEight(const uint16_t* words, __m128i counts, __m128i& a, __m128i& b, __m128i& c, __m128i& d) const
    {
        a = _mm_add_epi32(a, _mm_madd_epi16(loadWords(words), counts));
        b = _mm_add_epi32(b, _mm_madd_epi16(loadWords(words + width), counts));
        c = _mm_add_epi32(c, _mm_madd_epi16(loadWords(words + 2 * static_cast<ptrdiff_t>(width)), counts));
        d = _mm_add_epi32(d, _mm_madd_epi16(loadWords(words + 3 * static_cast<ptrdiff_t>(width)), counts));
    }

    int32_t width;
    __m128i rest;
};

// trunc(sum * norm + 0.5), in double.
struct ScaledMeans {
    __m128d norm;

    __m128i operator()(__m128i sums) const
    {
        return _mm_unpacklo_epi64(two(sums), two(_mm_shuffle_epi32(sums, _MM_SHUFFLE(3, 2, 3, 2))));
    }

    __m128i ofWords(__m128i sums) const
    {
        const __m128i zero = _mm_setzero_si128();
        return _mm_packs_epi32((*this)(_mm_unpacklo_epi16(sums, zero)), (*this)(_mm_unpackhi_epi16(sums, zero)));
    }

private:
    __m128i two(__m128i sums) const
    {
        return _mm_cvttpd_epi32(_mm_add_pd(_mm_mul_pd(_mm_cvtepi32_pd(sums), norm), _mm_set1_pd(0.5)));
    }
};

// The same where norm is 2^-shift: (sum + 2^(shift - 1)) >> shift is exact.
class ShiftedMeans {
public:
    explicit ShiftedMeans(int32_t shift)
        : half(_mm_set1_epi32(1 << (shift - 1))), halfWords(_mm_set1_epi16(static_cast<int16_t>(1 << (shift - 1)))),
          shift(_mm_cvtsi32_si128(shift))
    {
    }

    __m128i operator()(__m128i sums) const { return _mm_srl_epi32(_mm_add_epi32(sums, half), shift); }

    __m128i ofWords(__m128i sums) const { return _mm_srl_epi16(_mm_add_epi16(sums, halfWords), shift); }

private:
    __m128i half;
    __m128i halfWords;
    __m128i shift;
};

inline void storeEight(uint8_t* dst, __m128i words)
{
    _mm_storel_epi64(reinterpret_cast<__m128i*>(dst), _mm_packus_epi16(words, words));
}

// Eight boxes of two columns, each in a word: at most 128 * 2 * 255 = 65280, and a half of that mean more.
inline __m128i sumEightPairs(const uint8_t* src, int32_t srcStep, int32_t rows)
{
    const __m128i evenBytes = _mm_set1_epi16(0xFF);
    __m128i sums = _mm_setzero_si128();
    for (; rows > 0; --rows, src += srcStep) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src));
        sums = _mm_add_epi16(sums, _mm_add_epi16(_mm_and_si128(bytes, evenBytes), _mm_srli_epi16(bytes, 8)));
    }
    return sums;
}

// At least eight boxes; here and below the last steps may do over again what those before have done.
template <typename Means>
inline void reducePairs(Means means, const uint8_t* src, int32_t srcStep, int32_t rows, uint8_t* dst, int32_t length)
{
    const auto writeEight = [&](int32_t k) {
        storeEight(dst + k, means.ofWords(sumEightPairs(src + 2 * static_cast<ptrdiff_t>(k), srcStep, rows)));
    };
    for (int32_t k = 0; k + 8 <= length; k += 8) writeEight(k);
    if (length & 7) writeEight(length - 8);
}

// At least sixteen columns. What follows them is cleared as far as a box is read past its end.
inline void sumColumns(const uint8_t* src, int32_t srcStep, int32_t rows, uint16_t* words, int32_t columns)
{
    const auto sumSixteen = [&](int32_t j) {
        const SixteenWords sums = sumSixteenColumns(src + j, srcStep, rows);
        storeWords(words + j, sums.low);
        storeWords(words + j + 8, sums.high);
    };
    for (int32_t j = 0; j + 16 <= columns; j += 16) sumSixteen(j);
    if (columns & 15) sumSixteen(columns - 16);
    storeWords(words + columns, _mm_setzero_si128());
}

// At least eight boxes.
template <typename Means>
inline void reduceWide(Means means, const uint16_t* words, int32_t width, uint8_t* dst, int32_t length)
{
    const WideBoxes boxes(width);
    const auto writeEight = [&](int32_t k) {
        const uint16_t* const from = words + static_cast<ptrdiff_t>(k) * width;
        const __m128i low = means(boxes.sumFour(from));
        const __m128i high = means(boxes.sumFour(from + 4 * static_cast<ptrdiff_t>(width)));
        storeEight(dst + k, _mm_packs_epi32(low, high));
    };
    for (int32_t k = 0; k + 8 <= length; k += 8) writeEight(k);
    if (length & 7) writeEight(length - 8);
}

// The power of two that norm is the reciprocal of, or 0.
inline int32_t shiftOf(double norm)
{
    const uint64_t bits = load<uint64_t>(&norm);
    const int32_t shift = 1023 - static_cast<int32_t>(bits >> 52);
    return bits << 12 == 0 && shift <= 22 ? shift : 0;
}

inline bool fitsWords(const Reduction& reduction, int32_t columns)
{
    return reduction.y.whole <= rowsInSignedWords && reduction.x.whole <= columnsInSignedSums && columns >= 16 &&
           reduction.x.length >= 8 && int64_t{reduction.x.length} * reduction.x.whole <= columns;
}

template <typename Means>
inline void reduceInWords(Means means, const Reduction& reduction, uint16_t* words, int32_t columns,
                          const uint8_t* src, int32_t srcStep, uint8_t* dst)
{
    const int32_t rows = reduction.y.whole;
    if (reduction.x.whole == 2) {
        reducePairs(means, src, srcStep, rows, dst, reduction.x.length);
    } else {
        sumColumns(src, srcStep, rows, words, columns);
        reduceWide(means, words, reduction.x.whole, dst, reduction.x.length);
    }
}

// The buffer of sums has room for twice as many words.
inline void reduceInWords(const Reduction& reduction, uint32_t* sums, int32_t columns, const uint8_t* src,
                          int32_t srcStep, uint8_t* dst)
{
    uint16_t* const words = reinterpret_cast<uint16_t*>(sums);
    if (const int32_t shift = shiftOf(reduction.norm)) {
        reduceInWords(ShiftedMeans(shift), reduction, words, columns, src, srcStep, dst);
    } else {
        reduceInWords(ScaledMeans{_mm_set1_pd(reduction.norm)}, reduction, words, columns, src, srcStep, dst);
    }
}

}
}
