// Clamping element by element.
#pragma once

#include "signal/threshold.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Exceeds>
inline void clampElements(uint8_t* srcDst, size_t elements, uint32_t levelBits, Exceeds exceeds)
{
    const float level = floatOf(levelBits);
    for (size_t i = 0; i < elements; ++i)
        if (exceeds(load<float>(srcDst + i * 4), level)) store(srcDst + i * 4, levelBits);
}

void clampAbove(uint8_t* srcDst, size_t elements, uint32_t level)
{
    clampElements(srcDst, elements, level, [](float x, float limit) { return x > limit; });
}

void clampBelow(uint8_t* srcDst, size_t elements, uint32_t level)
{
    clampElements(srcDst, elements, level, [](float x, float limit) { return x < limit; });
}

}
}
