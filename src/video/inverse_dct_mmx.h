// Inverse DCT in MMX: rows one at a time, then the columns in two halves, in place at the destination.
#pragma once

#include "frame/mmx_state.h"
#include "lanes/saturating_words4.h"
#include "video/inverse_dct.h"
#include "video/inverse_dct_columns.h"
#include "video/inverse_dct_rows.h"

namespace rux::RUX_LEVEL {
namespace {

SaturatingWords4 reversed(SaturatingWords4 words);

// Unsigned bytes raised to clipMin, then lowered to clipMax.
__m64 clamped(__m64 bytes, __m64 clipMin, __m64 clipMax);

inline __m64 factorsAt(const int16_t* factors)
{
    return load<__m64>(factors);
}

inline void inverseRow(const uint8_t* from, uint8_t* to, int row)
{
    const __m64 low = load<__m64>(from);
    const __m64 high = load<__m64>(from + 8);
    const __m64 x0213 = _mm_unpacklo_pi16(low, _mm_unpackhi_pi32(low, low));
    const __m64 x4657 = _mm_unpacklo_pi16(high, _mm_unpackhi_pi32(high, high));
    const __m64 x02 = _mm_unpacklo_pi32(x0213, x0213);
    const __m64 x13 = _mm_unpackhi_pi32(x0213, x0213);
    const __m64 x46 = _mm_unpacklo_pi32(x4657, x4657);
    const __m64 x57 = _mm_unpackhi_pi32(x4657, x4657);

    const InverseRowFactors& factors = inverseRowFactors[tableOfRow[row]];
    const __m64 bias = _mm_set1_pi32(inverseRowBias[row]);
    __m64 sums[2];
    __m64 differences[2];
    for (int half = 0; half < 2; ++half) {
        const int at = half * 4;
        const __m64 even = _mm_add_pi32(_mm_add_pi32(_mm_madd_pi16(x02, factorsAt(factors.x02 + at)),
                                                     _mm_madd_pi16(x46, factorsAt(factors.x46 + at))),
                                        bias);
        const __m64 odd = _mm_add_pi32(_mm_madd_pi16(x13, factorsAt(factors.x13 + at)),
                                       _mm_madd_pi16(x57, factorsAt(factors.x57 + at)));
        sums[half] = _mm_srai_pi32(_mm_add_pi32(even, odd), 12);
        differences[half] = _mm_srai_pi32(_mm_sub_pi32(even, odd), 12);
    }
    store(to, _mm_packs_pi32(sums[0], sums[1]));
    reversed(SaturatingWords4{_mm_packs_pi32(differences[0], differences[1])}).store(to + 8);
}

void inverseTransform(const uint8_t* coefficients, uint8_t* dst, ptrdiff_t stride)
{
    for (int row = 0; row < 8; ++row) inverseRow(coefficients + 16 * row, dst + row * stride, row);

    for (int half = 0; half < 16; half += 8) {
        SaturatingWords4 rows[8];
        for (int row = 0; row < 8; ++row) rows[row] = SaturatingWords4::load(dst + row * stride + half);
        inverseColumns(rows);
        for (int row = 0; row < 8; ++row) rows[row].store(dst + row * stride + half);
    }
}

void inverseToWords(const int16_t* coefficients, uint8_t* dst, ptrdiff_t stride)
{
    const MmxState state;
    inverseTransform(bytesOf(coefficients), dst, stride);
}

// The transform in work space of its own, then eight bytes of each row's eight words.
template <typename ToBytes>
inline void inverseTo(const int16_t* coefficients, uint8_t* dst, ptrdiff_t stride, ToBytes toBytes)
{
    uint8_t block[128];
    inverseTransform(bytesOf(coefficients), block, 16);
    for (int row = 0; row < 8; ++row, dst += stride)
        store(dst, toBytes(load<__m64>(block + 16 * row), load<__m64>(block + 16 * row + 8)));
}

void inverseToBytes(const int16_t* coefficients, uint8_t* dst, ptrdiff_t stride)
{
    const MmxState state;
    inverseTo(coefficients, dst, stride, [](__m64 low, __m64 high) { return _mm_packs_pu16(low, high); });
}

// The shift wraps in 16 bits. The whole byte range needs no clamp beyond the packing's own.
void inverseToShiftedBytes(const int16_t* coefficients, uint8_t* dst, ptrdiff_t stride, LevelShift level)
{
    const MmxState state;
    const __m64 shift = _mm_set1_pi16(level.shift);
    const auto shifted = [shift](__m64 low, __m64 high) {
        return _mm_packs_pu16(_mm_add_pi16(low, shift), _mm_add_pi16(high, shift));
    };
    if (level.clipMin == 0 && level.clipMax == 255) {
        inverseTo(coefficients, dst, stride, shifted);
        return;
    }
    const __m64 clipMin = _mm_set1_pi8(static_cast<char>(level.clipMin));
    const __m64 clipMax = _mm_set1_pi8(static_cast<char>(level.clipMax));
    inverseTo(coefficients, dst, stride,
              [=](__m64 low, __m64 high) { return clamped(shifted(low, high), clipMin, clipMax); });
}

}
}
