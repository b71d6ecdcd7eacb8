// Inverse quantisation coefficient by coefficient. Products wrap at 32 bits, and a quotient at 16 before it is clamped.
#pragma once

#include "video/inverse_quantisation.h"

namespace rux::RUX_LEVEL {
namespace {

inline int32_t storeClamped(uint8_t* at, int32_t quotient)
{
    const int32_t wrapped = static_cast<int16_t>(quotient);
    const int32_t clamped = wrapped < -2048 ? -2048 : wrapped > 2047 ? 2047 : wrapped;
    store(at, static_cast<int16_t>(clamped));
    return clamped;
}

inline int32_t signOf(int32_t value)
{
    return (value > 0) - (value < 0);
}

// d = v * 2 * quantScale * matrix[k] / 32
int32_t reconstructIntra(uint8_t* coefficients, int32_t quantScale, const uint8_t* matrix)
{
    int32_t sum = load<int16_t>(coefficients);
    for (int k = 1; k < 64; ++k) {
        uint8_t* const at = coefficients + 2 * k;
        sum += storeClamped(at, load<int16_t>(at) * (2 * quantScale) * load<int16_t>(matrix + 2 * k) / 32);
    }
    return sum;
}

// d = (2 * v + sign(v)) * quantScale * matrix[k] / 32; a zero gives a zero.
int32_t reconstruct(uint8_t* coefficients, int32_t quantScale, const uint8_t* matrix)
{
    int32_t sum = 0;
    for (int k = 0; k < 64; ++k) {
        uint8_t* const at = coefficients + 2 * k;
        const int32_t v = load<int16_t>(at);
        sum += storeClamped(at, load<int16_t>(matrix + 2 * k) * quantScale * (2 * v + signOf(v)) / 32);
    }
    return sum;
}

// d = (v * 2 * quantScale + sign(v) * quantScale) / 2
int32_t reconstructFlat(uint8_t* coefficients, int32_t quantScale)
{
    int32_t sum = 0;
    for (int k = 0; k < 64; ++k) {
        uint8_t* const at = coefficients + 2 * k;
        const int32_t v = load<int16_t>(at);
        sum += storeClamped(at, (v * (2 * quantScale) + signOf(v) * quantScale) / 2);
    }
    return sum;
}

}
}
