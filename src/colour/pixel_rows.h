// A row of luma and chroma as it lies in memory, and the layouts of RGB.
#pragma once

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

struct Chroma {
    int32_t u, v;
};

// Three planes; one chroma sample for each pair of pixels, and one of its own for a lone last pixel.
struct PlanarRow {
    const uint8_t* luma;
    const uint8_t* u;
    const uint8_t* v;

    PlanarRow at(size_t evenX) const { return {luma + evenX, u + evenX / 2, v + evenX / 2}; }
    int32_t lumaAt(size_t x) const { return luma[x]; }
    Chroma pairChroma() const { return {*u, *v}; }
    Chroma loneChroma() const { return {*u, *v}; }
};

// Y0, U, Y1, V for each pair of pixels. A lone last pixel is Y, U and takes V from the pair before it.
struct InterleavedRow {
    const uint8_t* pairs;

    InterleavedRow at(size_t evenX) const { return {pairs + evenX * 2}; }
    int32_t lumaAt(size_t x) const { return pairs[x * 2]; }
    Chroma pairChroma() const { return {pairs[1], pairs[3]}; }
    Chroma loneChroma() const { return {pairs[1], pairs[-1]}; }
};

// The strides of the planes, in bytes.
struct PlaneSteps {
    ptrdiff_t luma, u, v;
};

inline PlanarRow nextRow(PlanarRow row, PlaneSteps steps)
{
    return {row.luma + steps.luma, row.u + steps.u, row.v + steps.v};
}

// Two rows of luma over one of chroma.
struct PlanarRowPair {
    PlanarRow upper;
    const uint8_t* lowerLuma;

    PlanarRowPair at(size_t evenX) const { return {upper.at(evenX), lowerLuma + evenX}; }
};

struct RgbRow {
    uint8_t* pixels;

    template <typename Layout>
    RgbRow at(size_t x) const { return {pixels + x * Layout::pixelBytes}; }
};

struct RgbRowPair {
    uint8_t* upper;
    uint8_t* lower;

    template <typename Layout>
    RgbRowPair at(size_t x) const { return {upper + x * Layout::pixelBytes, lower + x * Layout::pixelBytes}; }
};

// R, G, B.
struct Rgb24 {
    static constexpr size_t pixelBytes = 3;
};

// R, G, B, 0.
struct Rgb0 {
    static constexpr size_t pixelBytes = 4;
};

}
}
