// Inverse DCT in MMX, with the word shuffle and the byte minimum and maximum of SSE.
#include "lanes/saturating_words4_sse.h"

namespace rux::a6 {
namespace {

// Bytes raised to clipMin, then lowered to clipMax.
class ByteClamp {
public:
    ByteClamp(uint8_t clipMin, uint8_t clipMax)
        : low(_mm_set1_pi8(static_cast<char>(clipMin))), high(_mm_set1_pi8(static_cast<char>(clipMax)))
    {
    }
    __m64 operator()(__m64 bytes) const { return _mm_min_pu8(_mm_max_pu8(bytes, low), high); }

private:
    __m64 low;
    __m64 high;
};

}
}

#include "video/inverse_dct_mmx.h"
