// Hue, lightness and saturation to B, G, R in SSE registers, with bytes in MMX registers.
#include "colour/rows_a6.h"

namespace rux::a6 {
namespace {

inline __m128 floatsOf(__m64 low, __m64 high)
{
    return _mm_movelh_ps(_mm_cvtpi32_ps(_mm_setzero_ps(), low), _mm_cvtpi32_ps(_mm_setzero_ps(), high));
}

struct Wholes {
    __m128 value;

    static Wholes truncated(__m128 floats)
    {
        return {floatsOf(_mm_cvttps_pi32(floats), _mm_cvttps_pi32(_mm_movehl_ps(floats, floats)))};
    }
    __m128 floats() const { return value; }
    Wholes lessOneWhere(__m128 mask) const { return {_mm_sub_ps(value, _mm_and_ps(mask, _mm_set1_ps(1.0f)))}; }
};

}
}

#include "colour/hls_to_bgr_sse.h"

namespace rux::a6 {
namespace {

inline __m128 floatsOf(Words words)
{
    const __m64 zero = _mm_setzero_si64();
    return floatsOf(_mm_unpacklo_pi16(words.value, zero), _mm_unpackhi_pi16(words.value, zero));
}

inline Words wordsOf(Wholes wholes)
{
    const __m128 high = _mm_movehl_ps(wholes.value, wholes.value);
    return {_mm_packs_pi32(_mm_cvttps_pi32(wholes.value), _mm_cvttps_pi32(high))};
}

inline BgrWords convertHalf(const uint8_t* hue, Words lightness, Words saturation)
{
    const BgrWholes four = convertFour(hue, floatsOf(lightness), floatsOf(saturation));
    return {wordsOf(four.blue), wordsOf(four.green), wordsOf(four.red)};
}

}
}
