// Rows as the vector conversions take them: one or a 4:2:0 pair, block by block.
#pragma once

#include "colour/blocks.h"
#include "colour/pixel_rows.h"

namespace rux::RUX_LEVEL {
namespace {

// A word for each pair of pixels: chroma in the high byte, as a signed number around 0; the low byte is 0.
struct ChromaBlock {
    Words u, v;
};

// The luma stays as bytes: even pixels in the low bytes of the words, odd ones in the high.
struct PixelBlock {
    Words luma;
    ChromaBlock chroma;
};

inline void prefetchRow(PlanarRow src)
{
    prefetch(src.luma);
    prefetch(src.u);
    prefetch(src.v);
}

inline void prefetchRow(PlanarRowPair src)
{
    prefetchRow(src.upper);
    prefetch(src.lowerLuma);
}

inline void prefetchRow(InterleavedRow src)
{
    prefetch(src.pairs);
}

inline PixelBlock loadBlock(PlanarRow src)
{
    const Words zero = Words::broadcast(0);
    const Words signs = Words::broadcast(static_cast<int16_t>(0x8000));
    return {Words::load(src.luma),
            {interleaveLowBytes(zero, loadHalf(src.u)) ^ signs, interleaveLowBytes(zero, loadHalf(src.v)) ^ signs}};
}

inline PixelBlock loadBlock(InterleavedRow src)
{
    const Words first = Words::load(src.pairs);
    const Words second = Words::load(src.pairs + blockPixels);
    const Words lowBytes = Words::broadcast(0xFF);
    const Words signs = Words::broadcast(static_cast<int16_t>(0x8080));
    const Words chroma = packBytes(shiftedRightUnsigned<8>(first), shiftedRightUnsigned<8>(second)) ^ signs;
    return {packBytes(first & lowBytes, second & lowBytes),
            {shiftedLeft<8>(chroma), chroma & Words::broadcast(static_cast<int16_t>(0xFF00))}};
}

// Room for a whole block, that a row shorter than one is copied into and out of.
template <typename Row>
struct Stage;

template <>
struct Stage<PlanarRow> {
    uint8_t luma[blockPixels] = {};
    uint8_t u[blockPixels / 2] = {};
    uint8_t v[blockPixels / 2] = {};

    Stage(PlanarRow src, size_t pixels)
    {
        copyShortRow(src.luma, luma, pixels);
        copyShortRow(src.u, u, pixels / 2);
        copyShortRow(src.v, v, pixels / 2);
    }
    PlanarRow row() const { return {luma, u, v}; }
};

template <>
struct Stage<InterleavedRow> {
    uint8_t pairs[2 * blockPixels] = {};

    Stage(InterleavedRow src, size_t pixels) { copyShortRow(src.pairs, pairs, 2 * pixels); }
    InterleavedRow row() const { return {pairs}; }
};

template <>
struct Stage<PlanarRowPair> {
    Stage<PlanarRow> upper;
    uint8_t lowerLuma[blockPixels] = {};

    Stage(PlanarRowPair src, size_t pixels) : upper(src.upper, pixels)
    {
        copyShortRow(src.lowerLuma, lowerLuma, pixels);
    }
    PlanarRowPair row() const { return {upper.row(), lowerLuma}; }
};

template <>
struct Stage<RgbRow> {
    uint8_t pixels[4 * blockPixels];

    RgbRow row() { return {pixels}; }
    void copyTo(RgbRow dst, size_t bytes) const { copyShortRow(pixels, dst.pixels, bytes); }
};

template <>
struct Stage<RgbRowPair> {
    uint8_t upper[4 * blockPixels];
    uint8_t lower[4 * blockPixels];

    RgbRowPair row() { return {upper, lower}; }
    void copyTo(RgbRowPair dst, size_t bytes) const
    {
        copyShortRow(upper, dst.upper, bytes);
        copyShortRow(lower, dst.lower, bytes);
    }
};

}
}
