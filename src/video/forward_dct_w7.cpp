// Forward DCT in SSE2: all columns, then the rows two at a time, without leaving the registers.
#include "lanes/saturating_words8.h"
#include "video/forward_dct.h"
#include "video/forward_dct_columns.h"
#include "video/forward_dct_rows.h"

namespace rux::w7 {
namespace {

template <>
inline OuterSums<SaturatingWords8> outerSums(SaturatingWords8 s07, SaturatingWords8 s34)
{
    return {shiftedLeft<3>(s07 + s34), shiftedLeft<3>(s07 - s34)};
}

template <typename Sample>
SaturatingWords8 loadSamples(const uint8_t* from);

template <>
inline SaturatingWords8 loadSamples<int16_t>(const uint8_t* from)
{
    return SaturatingWords8::load(from);
}

template <>
inline SaturatingWords8 loadSamples<uint8_t>(const uint8_t* from)
{
    const __m128i bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(from));
    return {_mm_unpacklo_epi8(bytes, _mm_setzero_si128())};
}

inline __m128i factorsAt(const int16_t* factors)
{
    return _mm_load_si128(reinterpret_cast<const __m128i*>(factors));
}

// Four coefficients of a row, before they are packed.
inline __m128i fourCoefficients(__m128i ab01, __m128i ab23, const int16_t* first, const int16_t* second)
{
    const __m128i sum =
        _mm_add_epi32(_mm_madd_epi16(ab01, factorsAt(first)), _mm_madd_epi16(ab23, factorsAt(second)));
    return _mm_srai_epi32(_mm_add_epi32(sum, _mm_set1_epi32(forwardRowRounding)), forwardRowShift);
}

// ab: a0 a1 b0 b1 a2 a3 b2 b3
template <int row>
inline void putRow(__m128i ab, uint8_t* coefficients)
{
    const ForwardRowFactors& k = forwardRowFactors[tableOfRow[row]];
    const __m128i ab01 = _mm_unpacklo_epi64(ab, ab);
    const __m128i ab23 = _mm_unpackhi_epi64(ab, ab);
    const __m128i y0123 = fourCoefficients(ab01, ab23, k.first0123, k.second0123);
    const __m128i y4567 = fourCoefficients(ab01, ab23, k.first4567, k.second4567);
    SaturatingWords8{_mm_packs_epi32(y0123, y4567)}.store(coefficients + 16 * row);
}

// The lower halves of two rows meet the reversed upper halves.
template <int row, int otherRow>
inline void putRows(const SaturatingWords8 (&rows)[8], uint8_t* coefficients)
{
    const __m128i x = rows[row].value;
    const __m128i otherX = rows[otherRow].value;
    const __m128i high = _mm_shufflelo_epi16(_mm_unpackhi_epi64(x, otherX), _MM_SHUFFLE(0, 1, 2, 3));
    const SaturatingWords8 low = {_mm_unpacklo_epi64(x, otherX)};
    const SaturatingWords8 reversedHigh = {_mm_shufflehi_epi16(high, _MM_SHUFFLE(0, 1, 2, 3))};
    const __m128i a = (low + reversedHigh).value;
    const __m128i b = (low - reversedHigh).value;
    putRow<row>(_mm_unpacklo_epi32(a, b), coefficients);
    putRow<otherRow>(_mm_unpackhi_epi32(a, b), coefficients);
}

template <typename Sample>
void forwardTransform(const uint8_t* samples, ptrdiff_t stride, uint8_t* coefficients)
{
    const auto row = [=](int y) { return loadSamples<Sample>(samples + y * stride); };
    SaturatingWords8 rows[8] = {row(0), row(1), row(2), row(3), row(4), row(5), row(6), row(7)};
    forwardColumns(rows);
    putRows<0, 4>(rows, coefficients);
    putRows<1, 7>(rows, coefficients);
    putRows<2, 6>(rows, coefficients);
    putRows<3, 5>(rows, coefficients);
}

}
}
