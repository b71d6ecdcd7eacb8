// Forward DCT in MMX: the columns in two halves into the destination, then the rows there, one at a time.
#pragma once

#include "frame/mmx_state.h"
#include "lanes/saturating_words4.h"
#include "video/forward_dct.h"
#include "video/forward_dct_columns.h"
#include "video/forward_dct_rows.h"

namespace rux::RUX_LEVEL {
namespace {

SaturatingWords4 reversed(SaturatingWords4 words);

template <>
inline OuterSums<SaturatingWords4> outerSums(SaturatingWords4 s07, SaturatingWords4 s34)
{
    const SaturatingWords4 a07 = shiftedLeft<3>(s07);
    const SaturatingWords4 a34 = shiftedLeft<3>(s34);
    return {a07 + a34, a07 - a34};
}

template <typename Sample>
SaturatingWords4 loadSamples(const uint8_t* from);

template <>
inline SaturatingWords4 loadSamples<int16_t>(const uint8_t* from)
{
    return SaturatingWords4::load(from);
}

template <>
inline SaturatingWords4 loadSamples<uint8_t>(const uint8_t* from)
{
    return {_mm_unpacklo_pi8(_mm_cvtsi32_si64(load<int32_t>(from)), _mm_setzero_si64())};
}

// Two coefficients of a row, before they are packed.
inline __m64 coefficientPair(__m64 ab01, __m64 ab23, const int16_t* first, const int16_t* second)
{
    const __m64 sum = _mm_add_pi32(_mm_madd_pi16(ab01, load<__m64>(first)), _mm_madd_pi16(ab23, load<__m64>(second)));
    return _mm_srai_pi32(_mm_add_pi32(sum, _mm_set1_pi32(forwardRowRounding)), forwardRowShift);
}

inline void forwardRow(uint8_t* at, const ForwardRowFactors& k)
{
    const SaturatingWords4 low = SaturatingWords4::load(at);
    const SaturatingWords4 high = reversed(SaturatingWords4::load(at + 8));
    const __m64 a = (low + high).value;
    const __m64 b = (low - high).value;
    const __m64 ab01 = _mm_unpacklo_pi32(a, b);
    const __m64 ab23 = _mm_unpackhi_pi32(a, b);

    const __m64 y01 = coefficientPair(ab01, ab23, k.first0123, k.second0123);
    const __m64 y23 = coefficientPair(ab01, ab23, k.first0123 + 4, k.second0123 + 4);
    const __m64 y45 = coefficientPair(ab01, ab23, k.first4567, k.second4567);
    const __m64 y67 = coefficientPair(ab01, ab23, k.first4567 + 4, k.second4567 + 4);
    store(at, _mm_packs_pi32(y01, y23));
    store(at + 8, _mm_packs_pi32(y45, y67));
}

template <typename Sample>
void forwardTransform(const uint8_t* samples, ptrdiff_t stride, uint8_t* coefficients)
{
    const MmxState state;
    for (int half = 0; half < 8; half += 4) {
        SaturatingWords4 rows[8];
        const uint8_t* const from = samples + half * sizeof(Sample);
        for (int row = 0; row < 8; ++row) rows[row] = loadSamples<Sample>(from + row * stride);
        forwardColumns(rows);
        for (int row = 0; row < 8; ++row) rows[row].store(coefficients + 16 * row + 2 * half);
    }
    for (int row = 0; row < 8; ++row) forwardRow(coefficients + 16 * row, forwardRowFactors[tableOfRow[row]]);
}

}
}
