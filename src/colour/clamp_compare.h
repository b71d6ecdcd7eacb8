// Clamping by comparison.
#pragma once

#include "colour/rgb_scalar.h"

namespace rux::RUX_LEVEL {
namespace {

inline uint8_t clampedByte(int32_t value)
{
    if (value & ~0xFF) return value < 0 ? 0 : 255;
    return static_cast<uint8_t>(value);
}

inline ClampedRgb clamped(Rgb pixel)
{
    return {clampedByte(pixel.red), clampedByte(pixel.green), clampedByte(pixel.blue)};
}

}
}
