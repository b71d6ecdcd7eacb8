// What m6 must compose of unpackings.
#pragma once

#include "lanes/saturating_words4.h"

namespace rux::RUX_LEVEL {
namespace {

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
