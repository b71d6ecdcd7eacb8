// Division by a constant, element by element, on the floating-point stack in 32-bit builds.
#pragma once

#include "arith/divide.h"

namespace rux::RUX_LEVEL {
namespace {

// A quotient of two floats, rounded to double and then to float, is the correctly rounded float.
inline float reciprocalOf(float value)
{
    return roundedToSingle(1.0 / value);
}

inline void finishRows() {}

void scaleRow(uint8_t* srcDst, size_t elements, float factor)
{
    for (size_t i = 0; i < elements; ++i)
        store<float>(srcDst + i * 4, load<float>(srcDst + i * 4) * factor);
}

}
}
