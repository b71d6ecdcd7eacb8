// Division by a constant in vectors of four, two a turn, with non-temporal stores and one fence behind the last row.
#pragma once

#include <xmmintrin.h>

#include "arith/divide.h"
#include "arith/float_lanes.h"

namespace rux::RUX_LEVEL {
namespace {

inline float reciprocalOf(float value)
{
    return _mm_cvtss_f32(_mm_div_ss(_mm_set_ss(1.0f), _mm_set_ss(value)));
}

inline void scaleSingly(uint8_t* srcDst, size_t from, size_t to, __m128 factor)
{
    for (size_t i = from; i < to; ++i)
        storeOne(srcDst + i * 4, _mm_mul_ss(loadOne(srcDst + i * 4), factor));
}

template <typename Access>
inline size_t scaleBlocks(uint8_t* srcDst, size_t from, size_t to, __m128 factor)
{
    for (; to - from >= 8; from += 8) {
        uint8_t* const at = srcDst + from * 4;
        const __m128 low = _mm_mul_ps(Access::load(at), factor);
        const __m128 high = _mm_mul_ps(Access::load(at + 16), factor);
        Access::store(at, low);
        Access::store(at + 16, high);
    }
    return from;
}

inline void finishRows()
{
    _mm_sfence();
}

void scaleRow(uint8_t* srcDst, size_t elements, float scalar)
{
    const __m128 factor = _mm_set1_ps(scalar);
    size_t done = 0;
    if (elements >= 11) {
        if (isAligned(srcDst, 4)) {
            const size_t head = bytesToBoundary(srcDst, 16) / 4;
            scaleSingly(srcDst, 0, head, factor);
            done = scaleBlocks<StreamedFloats>(srcDst, head, elements, factor);
        } else {
            done = scaleBlocks<UnalignedFloats>(srcDst, 0, elements, factor);
        }
    }
    scaleSingly(srcDst, done, elements, factor);
}

}
}
