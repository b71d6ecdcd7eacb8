// Hue, lightness and saturation pixel by pixel, in double.
#pragma once

#include "frame/float_environment.h"

namespace rux::RUX_LEVEL {
namespace {

using HlsState = DoublePrecision;

}
}

#include "colour/hls_to_bgr.h"

namespace rux::RUX_LEVEL {
namespace {

constexpr HueWeights<double> hueWeights = makeHueWeights<double>();

// A saturation of 0 needs no case of its own: m2 = l, m1 = 2 l - l = l, and every channel is l + 0.
inline void convertPixel(HlsRow src, uint8_t* bgr)
{
    const double l = *src.lightness * double(oneUnit);
    const double s = *src.saturation * double(oneUnit);
    const double m2 = l <= 0.5 ? (s + 1.0) * l : l + s - s * l;
    const double m1 = l + l - m2;
    const double difference = m2 - m1;
    const double* const weights = hueWeights.of[*src.hue];
    for (int c = 0; c < 3; ++c) {
        const double value = weights[c] > 60 ? m2 : m1 + difference * weights[c] * double(oneDegree);
        bgr[c] = static_cast<uint8_t>(static_cast<int32_t>(value * 255.0 + 1e-07));
    }
}

// Not inlined: the compiler's truncation saves the precision that HlsState has set before.
[[gnu::noinline]] void hlsRow(HlsRow src, uint8_t* dst, size_t width)
{
    for (size_t x = 0; x < width; ++x) convertPixel(src.at(x), dst + x * 3);
}

}
}
