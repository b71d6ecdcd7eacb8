// Planes of hue, lightness and saturation to interleaved B, G, R.
//
// The operation stands here once; each level's file gives the routine for a row and what it holds meanwhile, HlsState.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

struct HlsRow {
    const uint8_t* hue;
    const uint8_t* lightness;
    const uint8_t* saturation;

    HlsRow at(size_t x) const { return {hue + x, lightness + x, saturation + x}; }
};

void hlsRow(HlsRow src, uint8_t* dst, size_t width);

constexpr float oneUnit = 0.003921568859f;     // 1/255, the nearest float
constexpr float oneDegree = 0.01666666754f;    // 1/60, the nearest float

// What the hue gives each channel: a weight w of at most 60 stands for m1 + (m2 - m1) * w / 60, and a greater one for
// m2. Weight 0 is m1 exactly.
constexpr int upperColour = 90;

template <typename Real>
struct HueWeights {
    static constexpr int channels = 4;   // blue, green, red, and one that fills a vector
    alignas(16) Real of[256][channels];
};

template <typename Real>
constexpr Real weightOfHue(Real hue)
{
    return hue < 60 ? hue : hue < 180 ? Real(upperColour) : hue < 240 ? static_cast<Real>(240.0 - hue) : Real(0);
}

// Each step is rounded to Real.
template <typename Real>
constexpr HueWeights<Real> makeHueWeights()
{
    HueWeights<Real> weights = {};
    for (int i = 0; i < 256; ++i) {
        const Real green = static_cast<Real>(i * 360.0 * oneUnit);
        Real red = static_cast<Real>(green + 120.0);
        if (red > 360) red = static_cast<Real>(red - 360.0);
        Real blue = static_cast<Real>(green - 120.0);
        if (blue < 0) blue = static_cast<Real>(blue + 360.0);
        weights.of[i][0] = weightOfHue(blue);
        weights.of[i][1] = weightOfHue(green);
        weights.of[i][2] = weightOfHue(red);
    }
    return weights;
}

}

ruxStatus RUXCALL ruxiHLSToBGR_8u_P3C3R(const uint8_t* const src[3], int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        ruxiSize roiSize)
{
    if (auto failure = pointers(src, dst)) return failure;
    if (auto failure = firstFailure(pointers(src[0], src[1], src[2]), steps(srcStep, dstStep), sizes(roiSize)))
        return failure;

    const HlsState state;
    HlsRow row = {src[0], src[1], src[2]};
    for (int32_t y = 0; y < roiSize.height; ++y, row = row.at(static_cast<size_t>(srcStep)), dst += dstStep)
        hlsRow(row, dst, static_cast<size_t>(roiSize.width));
    return ruxStatusOk;
}

}
