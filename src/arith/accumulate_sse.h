// Accumulation in blocks of eight, each step rounded to single precision.
//
// The level gives convertEight: eight bytes as two vectors of floats.
#pragma once

#include <xmmintrin.h>

#include "arith/accumulate.h"
#include "arith/float_lanes.h"

namespace rux::RUX_LEVEL {
namespace {

struct EightFloats {
    __m128 low;
    __m128 high;
};

EightFloats convertEight(const uint8_t* from);

inline __m128 accumulateFour(Plain, __m128 value, __m128 sum)
{
    return _mm_add_ps(sum, value);
}

inline __m128 accumulateFour(Weighted weight, __m128 value, __m128 sum)
{
    return _mm_add_ps(sum, _mm_mul_ps(_mm_sub_ps(value, sum), _mm_set1_ps(weight.alpha)));
}

inline __m128 accumulateOne(Plain, __m128 value, __m128 sum)
{
    return _mm_add_ss(sum, value);
}

inline __m128 accumulateOne(Weighted weight, __m128 value, __m128 sum)
{
    return _mm_add_ss(sum, _mm_mul_ss(_mm_sub_ss(value, sum), _mm_set_ss(weight.alpha)));
}

template <typename Access, typename Weight>
inline size_t accumulateBlocks(Weight weight, const uint8_t* src, uint8_t* srcDst, size_t elements)
{
    size_t i = 0;
    for (; elements - i >= 8; i += 8) {
        const EightFloats values = convertEight(src + i);
        uint8_t* const to = srcDst + i * 4;
        Access::store(to, accumulateFour(weight, values.low, Access::load(to)));
        Access::store(to + 16, accumulateFour(weight, values.high, Access::load(to + 16)));
    }
    return i;
}

template <typename Weight>
void accumulateElements(Weight weight, const uint8_t* src, uint8_t* srcDst, size_t elements)
{
    size_t i = isAligned(srcDst, 16) ? accumulateBlocks<AlignedFloats>(weight, src, srcDst, elements)
                                     : accumulateBlocks<UnalignedFloats>(weight, src, srcDst, elements);
    for (; i < elements; ++i) {
        uint8_t* const to = srcDst + i * 4;
        const __m128 value = _mm_cvtsi32_ss(_mm_setzero_ps(), src[i]);
        storeOne(to, accumulateOne(weight, value, loadOne(to)));
    }
}

}
}
