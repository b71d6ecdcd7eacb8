// What a6 and w7 share of the conversions from RGB: the 2x2 blocks in 16-bit products, and the last pixels of a 4:2:2
// row.
#pragma once

#include "colour/rgb_to_ycbcr_blocks.h"

namespace rux::RUX_LEVEL {
namespace {

// hi(scale a, weight), the scale taken into the factor as far as 16 bits hold it.
template <int32_t weight, int scale>
inline Words scaledProduct(Words a)
{
    constexpr int32_t factor = weight * scale;
    if constexpr (factor >= 0 && factor <= 0xFFFF) return highProductUnsigned(a, factor);
    if constexpr (factor < 0 && factor >= -0x8000) return highProduct(a, static_cast<int16_t>(factor));
    if constexpr (factor < -0x8000) return highProduct(a + a, static_cast<int16_t>(factor / 2));
    return highProductUnsigned(shiftedLeft<8>(a), factor / 256);
}

template <const Component& of, int scale>
inline Words scaledSum(RgbWords pixels)
{
    return shiftedRight<of.rounding.shift>(
        scaledProduct<of.weights.red, scale>(pixels.red) + scaledProduct<of.weights.green, scale>(pixels.green) +
        scaledProduct<of.weights.blue, scale>(pixels.blue) + Words::broadcast(of.rounding.addend));
}

inline Words mergedLuma(RgbPairs pairs)
{
    return mergeBytes(scaledSum<blockLuma420, 128>(pairs.even), scaledSum<blockLuma420, 128>(pairs.odd));
}

[[gnu::always_inline]] inline void blockTo420(RgbRows from, Planes420 to)
{
    const RgbPairs upper = loadPairs(from.upper);
    const RgbPairs lower = loadPairs(from.lower);
    mergedLuma(upper).store(to.luma);
    mergedLuma(lower).store(to.lowerLuma);
    const RgbWords sum = upper.even + upper.odd + (lower.even + lower.odd);
    storeChroma(scaledSum<blockCb420, 32>(sum), to.cb);
    storeChroma(scaledSum<blockCr420, 32>(sum), to.cr);
}

void rowPairTo420(RgbRows src, Planes420 dst, size_t pixels)
{
    rowPairTo420Blocks<blockTo420>(src, dst, pixels);
}

// Fewer than four pixels behind the blocks: a pair of which neither luma is rounded, and a lone one.
inline void lastPixelsTo422(const uint8_t* src, uint8_t* dst, size_t pixels)
{
    if (pixels >= 2) {
        pairTo422(unroundedLuma, src, dst);
        src += 6, dst += 4, pixels -= 2;
    }
    if (pixels != 0) loneTo422(vectorLoneLuma, vectorLoneCb, src, dst);
}

}
}
