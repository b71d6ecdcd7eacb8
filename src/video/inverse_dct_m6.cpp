// Inverse DCT in MMX alone.
#include "lanes/saturating_words4_mmx.h"

namespace rux::m6 {
namespace {

// Bytes raised to clipMin, then lowered to clipMax, by saturation at both ends of the byte range:
// max(v, m) = (v - m) + m and min(v, M) = (v + (255 - M)) - (255 - M).
class ByteClamp {
public:
    ByteClamp(uint8_t clipMin, uint8_t clipMax)
        : low(_mm_set1_pi8(static_cast<char>(clipMin))), high(_mm_set1_pi8(static_cast<char>(255 - clipMax)))
    {
    }
    __m64 operator()(__m64 bytes) const
    {
        const __m64 raised = _mm_adds_pu8(_mm_subs_pu8(bytes, low), low);
        return _mm_subs_pu8(_mm_adds_pu8(raised, high), high);
    }

private:
    __m64 low;
    __m64 high;
};

}
}

#include "video/inverse_dct_mmx.h"
