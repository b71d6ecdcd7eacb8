// Linear interpolation in MMX: two pixels a step along the row, four down the column. Truncates.
#pragma once

#include "frame/mmx_state.h"
#include "geometry/resize_linear.h"

namespace rux::RUX_LEVEL {
namespace {

// A pixel and its right neighbour, in the low half as two words.
inline __m64 loadPair(const uint8_t* pair)
{
    return _mm_unpacklo_pi8(_mm_cvtsi32_si64(load<uint16_t>(pair)), _mm_setzero_si64());
}

[[gnu::noinline]] void scaleRowLinear(const uint8_t* src, const int32_t* offsets, const uint16_t* weights,
                                      uint16_t* row, int32_t width)
{
    const MmxState state;
    int32_t j = 0;
    for (; j + 2 <= width; j += 2) {
        const __m64 pairs = _mm_unpacklo_pi32(loadPair(src + offsets[j]), loadPair(src + offsets[j + 1]));
        const __m64 sums = _mm_srli_pi32(_mm_madd_pi16(pairs, load<__m64>(weights + 2 * j)), 8);
        store(row + j, _mm_cvtsi64_si32(_mm_packs_pi32(sums, sums)));
    }
    if (j < width) {
        const __m64 pair = loadPair(src + offsets[j]);
        const __m64 sum = _mm_madd_pi16(pair, _mm_cvtsi32_si64(load<int32_t>(weights + 2 * j)));
        row[j] = static_cast<uint16_t>(_mm_cvtsi64_si32(sum) >> 8);
    }
}

// Four values; both rows' elements and both weights are at most 16384, so signed words hold them.
inline __m64 blendFour(const uint16_t* upper, const uint16_t* lower, __m64 weights)
{
    const __m64 u = load<__m64>(upper);
    const __m64 l = load<__m64>(lower);
    const __m64 low = _mm_srli_pi32(_mm_madd_pi16(_mm_unpacklo_pi16(l, u), weights), 20);
    const __m64 high = _mm_srli_pi32(_mm_madd_pi16(_mm_unpackhi_pi16(l, u), weights), 20);
    return _mm_packs_pi32(low, high);
}

inline void blendOne(const uint16_t* upper, const uint16_t* lower, int32_t weight, uint8_t* dst)
{
    *dst = static_cast<uint8_t>((*lower * weight + *upper * (linearOne - weight)) >> 20);
}

[[gnu::noinline]] void blendRowsLinear(const uint16_t* upper, const uint16_t* lower, uint16_t weight, uint8_t* dst,
                                       int32_t width)
{
    const MmxState state;
    const int16_t lowerWeight = static_cast<int16_t>(weight);
    const int16_t upperWeight = static_cast<int16_t>(linearOne - weight);
    const __m64 weights = _mm_set_pi16(upperWeight, lowerWeight, upperWeight, lowerWeight);
    int32_t j = 0;
    for (; j + 8 <= width; j += 8)
        store(dst + j, _mm_packs_pu16(blendFour(upper + j, lower + j, weights),
                                      blendFour(upper + j + 4, lower + j + 4, weights)));
    if (j + 4 <= width) {
        const __m64 four = blendFour(upper + j, lower + j, weights);
        store(dst + j, _mm_cvtsi64_si32(_mm_packs_pu16(four, four)));
        j += 4;
    }
    for (; j < width; ++j) blendOne(upper + j, lower + j, weight, dst + j);
}

}
}
