// Mirroring pixel by pixel.
#pragma once

#include "movement/mirror.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Pixel>
void exchange(uint8_t* a, uint8_t* b, size_t pixels)
{
    exchangeSingly<Pixel>(a, b, pixels);
}

template <typename Pixel>
void exchangeReversed(uint8_t* a, uint8_t* b, size_t pixels)
{
    exchangeReversedSingly<Pixel>(a, b, pixels);
}

}
}
