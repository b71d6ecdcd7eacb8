// What half-pel prediction asks of 8 and 16 samples in MMX registers, with the byte average of SSE.
#pragma once

#include <xmmintrin.h>

#include "lanes/samples_mmx.h"

namespace rux::RUX_LEVEL {
namespace {

// (a + b + 1) >> 1
inline Samples8 average(Samples8 a, Samples8 b)
{
    return {_mm_avg_pu8(a.value, b.value)};
}

inline Samples16 average(Samples16 a, Samples16 b)
{
    return {average(a.low, b.low), average(a.high, b.high)};
}

// a - 1 as signed saturating bytes have it: 0 becomes 255, 128 stays 128.
inline Samples8 decremented(Samples8 a)
{
    return {_mm_subs_pi8(a.value, _mm_set1_pi8(1))};
}

}
}
