// Hue, lightness and saturation to B, G, R in SSE2 registers.
#include "colour/rows_w7.h"

namespace rux::w7 {
namespace {

struct Wholes {
    __m128i value;

    static Wholes truncated(__m128 floats) { return {_mm_cvttps_epi32(floats)}; }
    __m128 floats() const { return _mm_cvtepi32_ps(value); }
    // The lanes of a mask are 0 or -1.
    Wholes lessOneWhere(__m128 mask) const { return {_mm_add_epi32(value, _mm_castps_si128(mask))}; }
};

}
}

#include "colour/hls_to_bgr_sse.h"

namespace rux::w7 {
namespace {

inline __m128 lowFloats(Words words)
{
    return _mm_cvtepi32_ps(_mm_unpacklo_epi16(words.value, _mm_setzero_si128()));
}

inline __m128 highFloats(Words words)
{
    return _mm_cvtepi32_ps(_mm_unpackhi_epi16(words.value, _mm_setzero_si128()));
}

inline Words wordsOf(Wholes low, Wholes high)
{
    return {_mm_packs_epi32(low.value, high.value)};
}

inline BgrWords convertHalf(const uint8_t* hue, Words lightness, Words saturation)
{
    const BgrWholes low = convertFour(hue, lowFloats(lightness), lowFloats(saturation));
    const BgrWholes high = convertFour(hue + 8, highFloats(lightness), highFloats(saturation));
    return {wordsOf(low.blue, high.blue), wordsOf(low.green, high.green), wordsOf(low.red, high.red)};
}

}
}
