// What the row filter's scaling has in common at a6 and w7.
#pragma once

#include <xmmintrin.h>

#include "filter/row_scalar.h"

namespace rux::RUX_LEVEL {
namespace {

// The sum as a float, times the factor, rounded to float. One of 2^31, which a divisor of -1 can give, has no integer;
// 255 stands for all that is above. What is below saturates to 0 as integers do.
inline __m128 scaledFloats(__m128 sums, __m128 factor)
{
    return _mm_min_ps(_mm_mul_ps(sums, factor), _mm_set1_ps(255.0f));
}

struct Truncated {
    float factor;

    uint8_t operator()(int32_t sum) const
    {
        const __m128 scaled = _mm_mul_ss(_mm_cvtsi32_ss(_mm_setzero_ps(), sum), _mm_set_ss(factor));
        return saturated(_mm_cvttss_si32(_mm_min_ss(scaled, _mm_set_ss(255.0f))));
    }
};

}
}
