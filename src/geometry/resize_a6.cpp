// Resize: linear interpolation and whole boxes in MMX, cubic interpolation and fractional boxes in vectors of floats.
#include "frame/mmx_state.h"
#include "geometry/resize.h"
#include "geometry/resize_cubic_sse.h"
#include "geometry/resize_linear_mmx.h"
#include "geometry/resize_super_mmx.h"
#include "geometry/resize_super_sse.h"

namespace rux::a6 {
namespace {

// Bytes 0 to 3 of a stencil as words.
inline __m64 loadStencil(const uint8_t* second)
{
    return _mm_unpacklo_pi8(_mm_cvtsi32_si64(load<int32_t>(second - 1)), _mm_setzero_si64());
}

inline CubicTerms loadTerms(const uint8_t* src, const int32_t* offsets)
{
    const __m64 s0 = loadStencil(src + offsets[0]);
    const __m64 s1 = loadStencil(src + offsets[1]);
    const __m64 s2 = loadStencil(src + offsets[2]);
    const __m64 s3 = loadStencil(src + offsets[3]);
    const __m64 ab01 = _mm_unpacklo_pi16(s0, s1);
    const __m64 ab23 = _mm_unpacklo_pi16(s2, s3);
    const __m64 cd01 = _mm_unpackhi_pi16(s0, s1);
    const __m64 cd23 = _mm_unpackhi_pi16(s2, s3);
    const __m64 a = _mm_unpacklo_pi32(ab01, ab23);
    const __m64 b = _mm_unpackhi_pi32(ab01, ab23);
    const __m64 c = _mm_unpacklo_pi32(cd01, cd23);
    const __m64 d = _mm_unpackhi_pi32(cd01, cd23);
    const __m64 e1 = _mm_sub_pi16(b, a);
    const __m64 e2 = _mm_sub_pi16(_mm_sub_pi16(c, b), e1);
    const __m64 e3 = _mm_add_pi16(_mm_sub_pi16(_mm_sub_pi16(d, c), c), _mm_sub_pi16(b, e2));
    return {_mm_cvtpu16_ps(a), _mm_cvtpi16_ps(e1), _mm_cvtpi16_ps(e2), _mm_cvtpi16_ps(e3)};
}

[[gnu::noinline]] void scaleRowCubic(const uint8_t* src, const int32_t* offsets, const float* fractions, float* row,
                                     int32_t width)
{
    const MmxState state;
    scaleRowByFours(src, offsets, fractions, row, width);
}

[[gnu::noinline]] void combineBlocks(CubicRows& rows, float fraction, uint8_t* dst, int32_t width)
{
    const MmxState state;
    const CubicFactors at = columnBlockFactors(allAlike(fraction));
    for (int32_t j = 0; j < width; j += 4) {
        const __m128 value = combineFour(rows, j, at);
        const __m64 words = _mm_packs_pi32(_mm_cvtps_pi32(value), _mm_cvtps_pi32(_mm_movehl_ps(value, value)));
        store(dst + j, _mm_cvtsi64_si32(_mm_packs_pu16(words, words)));
    }
}

[[gnu::noinline]] void addRows(float* sums, const uint8_t* src, int32_t srcStep, int32_t rows, int32_t columns)
{
    const MmxState state;
    for (; rows > 0; --rows, src += srcStep) {
        int32_t j = 0;
        for (; j + 4 <= columns; j += 4) {
            const __m64 words = _mm_unpacklo_pi8(_mm_cvtsi32_si64(load<int32_t>(src + j)), _mm_setzero_si64());
            _mm_store_ps(sums + j, _mm_add_ps(_mm_load_ps(sums + j), _mm_cvtpu16_ps(words)));
        }
        for (; j < columns; ++j)
            _mm_store_ss(sums + j, _mm_add_ss(_mm_load_ss(sums + j), _mm_cvtsi32_ss(_mm_setzero_ps(), src[j])));
    }
}

void addWeightedRow(float* sums, const uint8_t* src, double weight, int32_t columns)
{
    addWeightedPixels(sums, src, weight, 0, columns);
}

void writeMeans(const uint32_t* sums, double norm, uint8_t* dst, int32_t width)
{
    writeMeansSingly(sums, norm, dst, 0, width);
}

void writeMeans(const float* sums, double norm, uint8_t* dst, int32_t width)
{
    writeMeansSingly(sums, norm, dst, 0, width);
}

}
}
