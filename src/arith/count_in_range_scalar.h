// Floats in a range, element by element: a NaN is not.
#pragma once

#include "arith/count_in_range.h"

namespace rux::RUX_LEVEL {
namespace {

int32_t countFloats(const CountedImage& image, uint32_t lowerBound, uint32_t upperBound)
{
    const float lower = floatOf(lowerBound);
    const float upper = floatOf(upperBound);
    uint32_t count = 0;
    image.forEachRow([&](const uint8_t* row) {
        for (int32_t x = 0; x < image.roiSize.width; ++x, row += 4) {
            const float value = load<float>(row);
            if (value >= lower && value <= upper) ++count;
        }
    });
    return static_cast<int32_t>(count);
}

}
}
