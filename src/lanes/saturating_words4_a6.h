// What SSE adds to words in MMX registers.
#pragma once

#include <xmmintrin.h>

#include "lanes/saturating_words4.h"

namespace rux::RUX_LEVEL {
namespace {

// 0 1 2 3 becomes 3 2 1 0.
inline SaturatingWords4 reversed(SaturatingWords4 a)
{
    return {_mm_shuffle_pi16(a.value, _MM_SHUFFLE(0, 1, 2, 3))};
}

inline SaturatingWords4 smaller(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_min_pi16(a.value, b.value)};
}

inline SaturatingWords4 larger(SaturatingWords4 a, SaturatingWords4 b)
{
    return {_mm_max_pi16(a.value, b.value)};
}

}
}
