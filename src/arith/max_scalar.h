// The largest element, found one by one: a NaN is above nothing, and nothing is above a NaN.
#pragma once

#include "arith/max.h"

namespace rux::RUX_LEVEL {
namespace {

// Where the first of the largest elements stands, counting from one that is given.
inline const uint8_t* largestIn(const uint8_t* row, int32_t width, const uint8_t* best)
{
    float largest = load<float>(best);
    for (int32_t x = 0; x < width; ++x, row += 4) {
        const float value = load<float>(row);
        if (value > largest) {
            largest = value;
            best = row;
        }
    }
    return best;
}

// Not inlined: the compiler must not take the element that was compared for the bits that are moved.
[[gnu::noinline]] void copyElement(const uint8_t* from, uint8_t* to)
{
    store<uint32_t>(to, load<uint32_t>(from));
}

}
}
