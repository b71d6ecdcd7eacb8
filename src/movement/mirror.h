// Mirroring of images in place.
//
// The operations stand here once; each level's file gives the routines that exchange the pixels of two rows.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

// Pixels: their size, and the bytes of it that move.
struct ThreeBytes {
    static constexpr size_t size = 3;
    static constexpr size_t moved = 3;
};

struct ThreeBytesAndAlpha {
    static constexpr size_t size = 4;
    static constexpr size_t moved = 3;
};

struct TwoBytes {
    static constexpr size_t size = 2;
    static constexpr size_t moved = 2;
};

// Pixel j of one run changes place with pixel j of the other.
template <typename Pixel>
void exchange(uint8_t* a, uint8_t* b, size_t pixels);

// Pixel j of one run changes place with pixel pixels - 1 - j of the other.
template <typename Pixel>
void exchangeReversed(uint8_t* a, uint8_t* b, size_t pixels);

// The first half of a row with its second half; the middle pixel of an odd width stays.
template <typename Pixel>
inline void reverse(uint8_t* row, size_t pixels)
{
    const size_t half = pixels / 2;
    exchangeReversed<Pixel>(row, row + (pixels - half) * Pixel::size, half);
}

template <typename Pixel>
ruxStatus mirror(void* srcDst, int32_t srcDstStep, ruxiSize roiSize, ruxAxis flip)
{
    const bool isAxis = flip == ruxAxsHorizontal || flip == ruxAxsVertical || flip == ruxAxsBoth;
    if (auto failure = firstFailure(pointers(srcDst), steps(srcDstStep), sizes(roiSize),
                                    require(isAxis, ruxStatusFlipMode)))
        return failure;

    const ptrdiff_t step = srcDstStep;
    const size_t width = static_cast<size_t>(roiSize.width);
    uint8_t* top = bytesOf(srcDst);
    if (flip == ruxAxsVertical) {
        for (int32_t y = 0; y < roiSize.height; ++y, top += step) reverse<Pixel>(top, width);
        return ruxStatusOk;
    }
    uint8_t* bottom = top + (roiSize.height - 1) * step;
    for (int32_t pair = 0; pair < roiSize.height / 2; ++pair, top += step, bottom -= step) {
        if (flip == ruxAxsHorizontal)
            exchange<Pixel>(top, bottom, width);
        else
            exchangeReversed<Pixel>(top, bottom, width);
    }
    if (flip == ruxAxsBoth && roiSize.height % 2 == 1) reverse<Pixel>(top, width);
    return ruxStatusOk;
}

template <typename Pixel>
inline void exchangePixel(uint8_t* a, uint8_t* b)
{
    struct Moved {
        uint8_t bytes[Pixel::moved];
    };
    const auto ofA = load<Moved>(a);
    const auto ofB = load<Moved>(b);
    store(a, ofB);
    store(b, ofA);
}

template <typename Pixel>
inline void exchangeSingly(uint8_t* a, uint8_t* b, size_t pixels)
{
    for (; pixels > 0; --pixels, a += Pixel::size, b += Pixel::size) exchangePixel<Pixel>(a, b);
}

template <typename Pixel>
inline void exchangeReversedSingly(uint8_t* a, uint8_t* b, size_t pixels)
{
    for (b += pixels * Pixel::size; pixels > 0; --pixels, a += Pixel::size)
        exchangePixel<Pixel>(a, b -= Pixel::size);
}

}

ruxStatus RUXCALL ruxiMirror_8u_C3IR(uint8_t* srcDst, int32_t srcDstStep, ruxiSize roiSize, ruxAxis flip)
{
    return mirror<ThreeBytes>(srcDst, srcDstStep, roiSize, flip);
}

ruxStatus RUXCALL ruxiMirror_8u_AC4IR(uint8_t* srcDst, int32_t srcDstStep, ruxiSize roiSize, ruxAxis flip)
{
    return mirror<ThreeBytesAndAlpha>(srcDst, srcDstStep, roiSize, flip);
}

ruxStatus RUXCALL ruxiMirror_16u_C1IR(uint16_t* srcDst, int32_t srcDstStep, ruxiSize roiSize, ruxAxis flip)
{
    return mirror<TwoBytes>(srcDst, srcDstStep, roiSize, flip);
}

}
