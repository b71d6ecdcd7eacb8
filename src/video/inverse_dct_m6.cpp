// Inverse DCT in MMX alone.
#include "lanes/saturating_words4_m6.h"
#include "video/inverse_dct_mmx.h"

namespace rux::m6 {
namespace {

// By saturation at both ends of the byte range: max(v, m) = (v - m) + m, min(v, M) = (v + (255 - M)) - (255 - M).
inline __m64 clamped(__m64 bytes, __m64 clipMin, __m64 clipMax)
{
    const __m64 aboveMax = _mm_xor_si64(clipMax, _mm_set1_pi8(-1));
    const __m64 raised = _mm_adds_pu8(_mm_subs_pu8(bytes, clipMin), clipMin);
    return _mm_subs_pu8(_mm_adds_pu8(raised, aboveMax), aboveMax);
}

}
}
