// RGB to YCbCr pixel by pixel. No result leaves 0..255, so that nothing is clamped.
#pragma once

#include "colour/ycbcr_matrices.h"
#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

struct RgbSum {
    int32_t red, green, blue;
};

inline RgbSum operator+(RgbSum a, RgbSum b)
{
    return {a.red + b.red, a.green + b.green, a.blue + b.blue};
}

inline RgbSum pixelAt(const uint8_t* src)
{
    return {src[0], src[1], src[2]};
}

inline uint8_t component(Component of, RgbSum sum)
{
    const int32_t weighted = sum.red * of.weights.red + sum.green * of.weights.green + sum.blue * of.weights.blue;
    return static_cast<uint8_t>((weighted + of.rounding.addend) >> of.rounding.shift);
}

struct RgbRows {
    const uint8_t* upper;
    const uint8_t* lower;

    RgbRows at(size_t x) const { return {upper + x * 3, lower + x * 3}; }
};

// Two rows of luma and the row of chroma that they share.
struct Planes420 {
    uint8_t* luma;
    uint8_t* lowerLuma;
    uint8_t* cb;
    uint8_t* cr;

    Planes420 at(size_t evenX) const
    {
        return {luma + evenX, lowerLuma + evenX, cb + evenX / 2, cr + evenX / 2};
    }
};

// A pair of pixels as Y0, Cb, Y1, Cr. Only the luma of its first pixel may be rounded.
inline void pairTo422(Component firstLuma, const uint8_t* src, uint8_t* dst)
{
    const RgbSum left = pixelAt(src);
    const RgbSum right = pixelAt(src + 3);
    dst[0] = component(firstLuma, left);
    dst[1] = component(cbOfPair, left + right);
    dst[2] = component(unroundedLuma, right);
    dst[3] = component(crOfPair, left + right);
}

// A lone last pixel as Y, Cb.
inline void loneTo422(Component luma, Component cb, const uint8_t* src, uint8_t* dst)
{
    dst[0] = component(luma, pixelAt(src));
    dst[1] = component(cb, pixelAt(src));
}

}
}
