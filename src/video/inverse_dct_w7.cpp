// Inverse DCT in SSE2: all rows, then all columns, without leaving the registers.
#include "lanes/saturating_words8.h"
#include "video/inverse_dct.h"
#include "video/inverse_dct_columns.h"
#include "video/inverse_dct_rows.h"

namespace rux::w7 {
namespace {

inline __m128i factorsAt(const int16_t* factors)
{
    return _mm_load_si128(reinterpret_cast<const __m128i*>(factors));
}

template <int row>
inline SaturatingWords8 inverseRow(const uint8_t* coefficients)
{
    const __m128i x = SaturatingWords8::load(coefficients + 16 * row).value;
    const __m128i x0213 = _mm_shufflelo_epi16(x, _MM_SHUFFLE(3, 1, 2, 0));
    const __m128i pairs = _mm_shufflehi_epi16(x0213, _MM_SHUFFLE(3, 1, 2, 0));   // x0 x2 x1 x3 x4 x6 x5 x7
    const __m128i x02 = _mm_shuffle_epi32(pairs, _MM_SHUFFLE(0, 0, 0, 0));
    const __m128i x13 = _mm_shuffle_epi32(pairs, _MM_SHUFFLE(1, 1, 1, 1));
    const __m128i x46 = _mm_shuffle_epi32(pairs, _MM_SHUFFLE(2, 2, 2, 2));
    const __m128i x57 = _mm_shuffle_epi32(pairs, _MM_SHUFFLE(3, 3, 3, 3));

    const InverseRowFactors& factors = inverseRowFactors[tableOfRow[row]];
    const __m128i even = _mm_add_epi32(_mm_add_epi32(_mm_madd_epi16(x02, factorsAt(factors.x02)),
                                                     _mm_madd_epi16(x46, factorsAt(factors.x46))),
                                       _mm_set1_epi32(inverseRowBias[row]));
    const __m128i odd = _mm_add_epi32(_mm_madd_epi16(x13, factorsAt(factors.x13)),
                                      _mm_madd_epi16(x57, factorsAt(factors.x57)));
    const __m128i sums = _mm_srai_epi32(_mm_add_epi32(even, odd), 12);
    const __m128i differences = _mm_srai_epi32(_mm_sub_epi32(even, odd), 12);
    return {_mm_packs_epi32(sums, _mm_shuffle_epi32(differences, _MM_SHUFFLE(0, 1, 2, 3)))};
}

inline bool lowerRowsAreZero(const uint8_t* coefficients)
{
    const auto row = [=](int y) { return SaturatingWords8::load(coefficients + 16 * y); };
    const __m128i any = ((row(4) | row(5)) | (row(6) | row(7))).value;
    return _mm_movemask_epi8(_mm_cmpeq_epi8(any, _mm_setzero_si128())) == 0xFFFF;
}

// All of src is read before put() writes row 0, and the rows are written in order. Most blocks of a video have zeros in
// rows 4 to 7: there the row stage leaves zeros, because the biases of these rows are below 2^12.
template <typename Put>
inline void inverseTransform(const int16_t* src, Put put)
{
    const uint8_t* const k = bytesOf(src);
    SaturatingWords8 rows[8] = {inverseRow<0>(k), inverseRow<1>(k), inverseRow<2>(k), inverseRow<3>(k)};
    if (lowerRowsAreZero(k)) {
        inverseUpperColumns(rows);
    } else {
        inverseColumns(rows, inverseRow<4>(k), inverseRow<5>(k), inverseRow<6>(k), inverseRow<7>(k));
    }
#pragma GCC unroll 8
    for (const SaturatingWords8 row : rows) put(row);   // unrolled, so that no row goes through memory
}

void inverseToWords(const int16_t* coefficients, uint8_t* dst, ptrdiff_t stride)
{
    inverseTransform(coefficients, [&](SaturatingWords8 row) {
        row.store(dst);
        dst += stride;
    });
}

inline void putBytes(uint8_t*& dst, ptrdiff_t stride, __m128i bytes)
{
    _mm_storel_epi64(reinterpret_cast<__m128i*>(dst), bytes);
    dst += stride;
}

void inverseToBytes(const int16_t* coefficients, uint8_t* dst, ptrdiff_t stride)
{
    inverseTransform(coefficients, [&](SaturatingWords8 row) {
        putBytes(dst, stride, _mm_packus_epi16(row.value, row.value));
    });
}

// The shift wraps in 16 bits. The whole byte range needs no clamp beyond the packing's own.
void inverseToShiftedBytes(const int16_t* coefficients, uint8_t* dst, ptrdiff_t stride, LevelShift level)
{
    const SaturatingWords8 shift = SaturatingWords8::broadcast(level.shift);
    const auto shifted = [shift](SaturatingWords8 row) {
        const __m128i words = wrappingSum(row, shift).value;
        return _mm_packus_epi16(words, words);
    };
    if (level.clipMin == 0 && level.clipMax == 255) {
        inverseTransform(coefficients, [&](SaturatingWords8 row) { putBytes(dst, stride, shifted(row)); });
        return;
    }
    const __m128i low = _mm_set1_epi8(static_cast<char>(level.clipMin));
    const __m128i high = _mm_set1_epi8(static_cast<char>(level.clipMax));
    inverseTransform(coefficients, [&](SaturatingWords8 row) {
        putBytes(dst, stride, _mm_min_epu8(_mm_max_epu8(shifted(row), low), high));
    });
}

}
}
