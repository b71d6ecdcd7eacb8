// What m6 must compose of unpackings.
#pragma once

#include "lanes/saturating_words4.h"

namespace rux::RUX_LEVEL {
namespace {

// Exchanged where a is greater: the difference of their bits turns the one into the other.
inline SaturatingWords4 smaller(SaturatingWords4 a, SaturatingWords4 b)
{
    return a ^ ((a ^ b) & isGreater(a, b));
}

inline SaturatingWords4 larger(SaturatingWords4 a, SaturatingWords4 b)
{
    return b ^ ((a ^ b) & isGreater(a, b));
}

// 0 1 2 3 becomes 3 2 1 0.
inline SaturatingWords4 reversed(SaturatingWords4 a)
{
    const __m64 twoThree = _mm_unpackhi_pi32(a.value, a.value);
    const __m64 twoZeroThreeOne = _mm_unpacklo_pi16(twoThree, a.value);
    const __m64 threeOne = _mm_unpackhi_pi32(twoZeroThreeOne, twoZeroThreeOne);
    return {_mm_unpacklo_pi16(threeOne, twoZeroThreeOne)};
}

}
}
