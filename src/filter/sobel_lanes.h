// A row's part of the Sobel kernels on all the pixels of a lane.
//
// Bytes become words by their places, even and odd, without moving: two loads, one pixel to the left and one to the
// right, hold every neighbour at a place where it is wanted. The words take their order at the end.
#pragma once

#include "filter/sobel.h"

namespace rux::RUX_LEVEL {
namespace {

// The words of pixels 0, 2, 4 ... and of pixels 1, 3, 5 ... of a block.
template <typename Lane>
struct PixelWords {
    Lane even;
    Lane odd;

    // Of the lower and the upper half of the block, in raster order.
    Lane lower() const { return interleaveLow16(even, odd); }
    Lane upper() const { return interleaveHigh16(even, odd); }

    friend PixelWords operator+(PixelWords a, PixelWords b) { return {add16(a.even, b.even), add16(a.odd, b.odd)}; }
    friend PixelWords operator-(PixelWords a, PixelWords b)
    {
        return {subtract16(a.even, b.even), subtract16(a.odd, b.odd)};
    }
};

template <typename Lane>
inline PixelWords<Lane> widened(Lane pixels)
{
    return {evenBytes(pixels), oddBytes(pixels)};
}

template <typename Lane>
inline PixelWords<Lane> alongBlock(DerivativeX, const uint8_t* at)
{
    return widened(Lane::load(at + 1)) - widened(Lane::load(at - 1));
}

// s(-1), s(1), s(3) ... and s(0), s(2), s(4) ... from the left load; s(1), s(3), s(5) ... and s(2), s(4), s(6) ... from
// the right one. H(0) = s(-1) + s(0) + s(0) + s(1) and H(1) = s(0) + s(1) + s(1) + s(2) share s(0) + s(1).
template <typename Lane, RowOrder rowOrder>
inline PixelWords<Lane> alongBlock(DerivativeY<rowOrder>, const uint8_t* at)
{
    const PixelWords<Lane> left = widened(Lane::load(at - 1));
    const PixelWords<Lane> right = widened(Lane::load(at + 1));
    const Lane middle = add16(left.odd, right.even);
    return {add16(add16(left.even, left.odd), middle), add16(middle, add16(right.even, right.odd))};
}

}
}
