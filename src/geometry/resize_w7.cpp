// Resize in vectors of integers and floats.
#include <emmintrin.h>

#include "geometry/resize.h"
#include "geometry/resize_cubic_sse.h"
#include "geometry/resize_linear_sse2.h"
#include "geometry/resize_super_sse.h"
#include "geometry/resize_super_sse2.h"

namespace rux::w7 {
namespace {

inline CubicTerms loadTerms(const uint8_t* src, const int32_t* offsets)
{
    const __m128i s0 = _mm_cvtsi32_si128(load<int32_t>(src + offsets[0] - 1));
    const __m128i s1 = _mm_cvtsi32_si128(load<int32_t>(src + offsets[1] - 1));
    const __m128i s2 = _mm_cvtsi32_si128(load<int32_t>(src + offsets[2] - 1));
    const __m128i s3 = _mm_cvtsi32_si128(load<int32_t>(src + offsets[3] - 1));
    const __m128i stencils = _mm_unpacklo_epi64(_mm_unpacklo_epi32(s0, s1), _mm_unpacklo_epi32(s2, s3));
    const __m128i byte = _mm_set1_epi32(0xFF);
    const __m128i a = _mm_and_si128(stencils, byte);
    const __m128i b = _mm_and_si128(_mm_srli_epi32(stencils, 8), byte);
    const __m128i c = _mm_and_si128(_mm_srli_epi32(stencils, 16), byte);
    const __m128i d = _mm_srli_epi32(stencils, 24);
    const __m128i e1 = _mm_sub_epi32(b, a);
    const __m128i e2 = _mm_sub_epi32(_mm_sub_epi32(c, b), e1);
    const __m128i e3 = _mm_add_epi32(_mm_sub_epi32(_mm_sub_epi32(d, c), c), _mm_sub_epi32(b, e2));
    return {_mm_cvtepi32_ps(a), _mm_cvtepi32_ps(e1), _mm_cvtepi32_ps(e2), _mm_cvtepi32_ps(e3)};
}

void scaleRowCubic(const uint8_t* src, const int32_t* offsets, const float* fractions, float* row, int32_t width)
{
    scaleRowByFours(src, offsets, fractions, row, width);
}

void combineBlocks(CubicRows& rows, float fraction, uint8_t* dst, int32_t width)
{
    const CubicFactors at = columnBlockFactors(allAlike(fraction));
    int32_t j = 0;
    for (; j + 8 <= width; j += 8) {
        const __m128i words = _mm_packs_epi32(_mm_cvtps_epi32(combineFour(rows, j, at)),
                                              _mm_cvtps_epi32(combineFour(rows, j + 4, at)));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(dst + j), _mm_packus_epi16(words, words));
    }
    if (j < width) {
        const __m128i dwords = _mm_cvtps_epi32(combineFour(rows, j, at));
        const __m128i words = _mm_packs_epi32(dwords, dwords);
        store(dst + j, _mm_cvtsi128_si32(_mm_packus_epi16(words, words)));
    }
}

}
}
