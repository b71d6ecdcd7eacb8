// Inverse DCT in MMX, with the word shuffle and the byte minimum and maximum of SSE.
#include "lanes/saturating_words4_a6.h"
#include "video/inverse_dct_mmx.h"

namespace rux::a6 {
namespace {

inline __m64 clamped(__m64 bytes, __m64 clipMin, __m64 clipMax)
{
    return _mm_min_pu8(_mm_max_pu8(bytes, clipMin), clipMax);
}

}
}
