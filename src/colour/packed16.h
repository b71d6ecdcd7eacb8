// Pixels of 16 bits: five bits of one component on top, green in the middle, five bits of the other below.
#pragma once

#include "colour/rgb_scalar.h"

namespace rux::RUX_LEVEL {
namespace {

template <int greenBits, bool redOnTop>
struct Packed16 {
    static constexpr size_t pixelBytes = 2;
};

// The names give the components from the low bits up.
using Rgb555 = Packed16<5, false>;
using Rgb565 = Packed16<6, false>;
using Bgr555 = Packed16<5, true>;
using Bgr565 = Packed16<6, true>;

template <int greenBits, bool redOnTop>
inline void storePixel(Packed16<greenBits, redOnTop>, ClampedRgb pixel, uint8_t* to)
{
    const int top = redOnTop ? pixel.red : pixel.blue;
    const int low = redOnTop ? pixel.blue : pixel.red;
    store(to, static_cast<uint16_t>((top >> 3) << (5 + greenBits) | (pixel.green >> (8 - greenBits)) << 5 | low >> 3));
}

}
}
