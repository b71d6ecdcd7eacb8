// What SSE adds to words in MMX registers.
#pragma once

#include <xmmintrin.h>

#include "lanes/four_saturating_words.h"

namespace rux::RUX_LEVEL {
namespace {

// 0 1 2 3 becomes 3 2 1 0.
inline FourSaturatingWords reversed(FourSaturatingWords a)
{
    return {_mm_shuffle_pi16(a.value, _MM_SHUFFLE(0, 1, 2, 3))};
}

inline FourSaturatingWords smaller(FourSaturatingWords a, FourSaturatingWords b)
{
    return {_mm_min_pi16(a.value, b.value)};
}

inline FourSaturatingWords larger(FourSaturatingWords a, FourSaturatingWords b)
{
    return {_mm_max_pi16(a.value, b.value)};
}

}
}
