// Zero crossings of floats by products in double, which no two floats underflow.
#pragma once

#include "signal/sign_change_rate.h"

namespace rux::RUX_LEVEL {
namespace {

// A product that is a NaN is not at or above 0: it counts.
int32_t countChanges32f(const uint8_t* src, size_t samples)
{
    int32_t count = 0;
    for (size_t i = 1; i < samples; ++i) {
        const double product = static_cast<double>(load<float>(src + i * 4 - 4)) * load<float>(src + i * 4);
        count += !(product >= 0);
    }
    return count;
}

}
}
