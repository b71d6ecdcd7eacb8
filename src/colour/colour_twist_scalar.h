// The colour twist pixel by pixel, in double. The level gives the rounding.
#pragma once

#include "colour/colour_twist.h"
#include "frame/float_environment.h"
#include "frame/rounding.h"

namespace rux::RUX_LEVEL {
namespace {

// The nearest integer, ties to even, of a value between 0 and 255.
int32_t nearestInteger(double value);

// Neither comparison holds for a NaN, which gives 0.
inline uint8_t nearestByte(double value)
{
    if (value >= 255.0) return 255;
    return value > 0.0 ? static_cast<uint8_t>(nearestInteger(value)) : 0;
}

// Not inlined: compilers move arithmetic over a change of the control registers.
[[gnu::noinline]] void twistRow(const uint8_t* src, uint8_t* dst, size_t width, const double* matrix)
{
    for (; width > 0; --width, src += 3, dst += 3) {
        const double c0 = src[0], c1 = src[1], c2 = src[2];
        for (int i = 0; i < 3; ++i) {
            const double* const row = matrix + 4 * i;
            dst[i] = nearestByte(row[0] * c0 + row[3] + row[1] * c1 + row[2] * c2);
        }
    }
}

void twistImage(const TwistImages& images, const TwistMatrix& matrix)
{
    double factors[12];
    for (int i = 0; i < 12; ++i) factors[i] = matrix.of[i / 4][i % 4];
    const DoublePrecision precision;
    const DoubleRounding rounding(Rounding::nearest);
    images.forEachRow([&](const uint8_t* src, uint8_t* dst, size_t width) { twistRow(src, dst, width, factors); });
}

}
}
