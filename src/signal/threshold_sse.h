// Clamping in vectors of four.
//
// The vector minimum and maximum return their second operand where the two are equal or one is a NaN: with the element
// in second place it stays.
#pragma once

#include "lanes/four_floats.h"
#include "lanes/spread.h"
#include "signal/threshold.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Clamp>
inline void clampVectors(uint8_t* srcDst, size_t elements, uint32_t levelBits, Clamp clamp)
{
    const FourFloats level = spread<FourFloats>(levelBits);
    const auto clampOne = [&](uint8_t* at) {
        FourFloats{clamp(level.value, FourFloats::loadOne(at).value)}.storeOne(at);
    };

    // Up to the boundary singly: a store across two cache lines costs two.
    size_t head = isAligned(srcDst, 4) ? bytesToBoundary(srcDst, 16) / 4 : 0;
    if (head > elements) head = elements;
    elements -= head;
    for (; head > 0; --head, srcDst += 4) clampOne(srcDst);

    for (; elements >= 16; elements -= 16, srcDst += 64)
        for (int at = 0; at < 64; at += 16)
            FourFloats{clamp(level.value, FourFloats::load(srcDst + at).value)}.store(srcDst + at);
    for (; elements >= 4; elements -= 4, srcDst += 16)
        FourFloats{clamp(level.value, FourFloats::load(srcDst).value)}.store(srcDst);
    for (; elements > 0; --elements, srcDst += 4) clampOne(srcDst);
}

void clampAbove(uint8_t* srcDst, size_t elements, uint32_t level)
{
    clampVectors(srcDst, elements, level, [](__m128 limit, __m128 x) { return _mm_min_ps(limit, x); });
}

void clampBelow(uint8_t* srcDst, size_t elements, uint32_t level)
{
    clampVectors(srcDst, elements, level, [](__m128 limit, __m128 x) { return _mm_max_ps(limit, x); });
}

}
}
