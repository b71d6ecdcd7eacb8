// Hue, lightness and saturation in vectors of four floats, in blocks of two lanes of pixels: 8 at a6, 16 at w7.
//
// The level gives what converts between integers and floats: Wholes, four whole numbers from 0 to 256.
#pragma once

#include <xmmintrin.h>

#include "frame/rounding.h"

namespace rux::RUX_LEVEL {
namespace {

// The compiler has rounded the hues to nearest; so is all that is computed with them.
struct HlsState {
    HlsState() : rounding(Rounding::nearest) {}

    RowState rows;
    VectorRounding rounding;
};

}
}

#include "colour/hls_to_bgr.h"
#include "colour/rgb_vector_stores.h"

namespace rux::RUX_LEVEL {
namespace {

constexpr HueWeights<float> hueWeights = makeHueWeights<float>();

inline __m128 all(float value)
{
    return _mm_set1_ps(value);
}

// mask ? a : b
inline __m128 chosen(__m128 mask, __m128 a, __m128 b)
{
    return _mm_or_ps(_mm_and_ps(mask, a), _mm_andnot_ps(mask, b));
}

// trunc(v * 255 + 1e-7), the sum being the contract's double, without doubles. v is a float from 0 to 1.
//
// q = trunc(fl(v * 255) + 2^-14) is the result or one more, for the addend is above the error of the product. It is
// one more exactly where d = v * 255 - q, which is (256 v - q) - v, is below -1e-7. Where -v / 2 < d < 0 both
// differences are exact, and d is a multiple of 2^-32, of which none lies between -1e-7 and its float: from q = 1 on
// the last place of v is 2^-32 or more. Elsewhere rounding, which is monotonic, leaves d on its side.
inline Wholes unitsOf(__m128 v)
{
    const Wholes q = Wholes::truncated(_mm_add_ps(_mm_mul_ps(v, all(255.0f)), all(0x1p-14f)));
    const __m128 excess = _mm_sub_ps(_mm_sub_ps(_mm_mul_ps(v, all(256.0f)), q.floats()), v);
    return q.lessOneWhere(_mm_cmplt_ps(excess, all(-1e-7f)));
}

struct BgrFloats {
    __m128 blue, green, red;
};

// The weights of every second pixel.
inline BgrFloats weightsOf(const uint8_t* hue)
{
    const __m128 first = _mm_load_ps(hueWeights.of[hue[0]]);
    const __m128 second = _mm_load_ps(hueWeights.of[hue[2]]);
    const __m128 third = _mm_load_ps(hueWeights.of[hue[4]]);
    const __m128 fourth = _mm_load_ps(hueWeights.of[hue[6]]);
    const __m128 lowBlueGreen = _mm_unpacklo_ps(first, second);
    const __m128 highBlueGreen = _mm_unpacklo_ps(third, fourth);
    return {_mm_movelh_ps(lowBlueGreen, highBlueGreen), _mm_movehl_ps(highBlueGreen, lowBlueGreen),
            _mm_movelh_ps(_mm_unpackhi_ps(first, second), _mm_unpackhi_ps(third, fourth))};
}

struct BgrWholes {
    Wholes blue, green, red;
};

// A saturation of 0 needs no case of its own: m2 = l, m1 = 2 l - l = l, and every channel is l + 0.
inline BgrWholes convertFour(const uint8_t* hue, __m128 lightness, __m128 saturation)
{
    const __m128 l = _mm_mul_ps(lightness, all(oneUnit));
    const __m128 s = _mm_mul_ps(saturation, all(oneUnit));
    const __m128 m2 = chosen(_mm_cmple_ps(l, all(0.5f)), _mm_mul_ps(_mm_add_ps(s, all(1.0f)), l),
                             _mm_sub_ps(_mm_add_ps(l, s), _mm_mul_ps(s, l)));
    const __m128 m1 = _mm_sub_ps(_mm_add_ps(l, l), m2);
    const __m128 difference = _mm_sub_ps(m2, m1);
    const auto channel = [=](__m128 weight) {
        const __m128 between = _mm_add_ps(m1, _mm_mul_ps(_mm_mul_ps(difference, weight), all(oneDegree)));
        return unitsOf(chosen(_mm_cmpgt_ps(weight, all(60.0f)), m2, between));
    };
    const BgrFloats weights = weightsOf(hue);
    return {channel(weights.blue), channel(weights.green), channel(weights.red)};
}

struct BgrWords {
    Words blue, green, red;
};

// Every second pixel of a block, lightness and saturation being words from 0 to 255. The level converts words to floats
// and back.
BgrWords convertHalf(const uint8_t* hue, Words lightness, Words saturation);

inline void convertBlock(HlsRow src, uint8_t* dst)
{
    const Words lowBytes = Words::broadcast(0xFF);
    const Words lightness = Words::load(src.lightness);
    const Words saturation = Words::load(src.saturation);
    const BgrWords even = convertHalf(src.hue, lightness & lowBytes, saturation & lowBytes);
    const BgrWords odd =
        convertHalf(src.hue + 1, shiftedRightUnsigned<8>(lightness), shiftedRightUnsigned<8>(saturation));
    storeBlock<OrdinaryStores>(Rgb24(), {even.blue, odd.blue, even.green, odd.green, even.red, odd.red}, dst);
}

// What is left over behind the blocks goes through a block of its own. Not inlined: compilers move arithmetic over a
// change of the control register.
[[gnu::noinline]] void hlsRow(HlsRow src, uint8_t* dst, size_t width)
{
    size_t x = 0;
    for (; width - x >= blockPixels; x += blockPixels) convertBlock(src.at(x), dst + x * 3);
    if (x == width) return;

    uint8_t hue[blockPixels] = {};
    uint8_t lightness[blockPixels] = {};
    uint8_t saturation[blockPixels] = {};
    uint8_t bgr[3 * blockPixels];
    copyShortRow(src.hue + x, hue, width - x);
    copyShortRow(src.lightness + x, lightness, width - x);
    copyShortRow(src.saturation + x, saturation, width - x);
    convertBlock({hue, lightness, saturation}, bgr);
    copyShortRow(bgr, dst + x * 3, (width - x) * 3);
}

}
}
