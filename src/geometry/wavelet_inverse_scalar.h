// The row pass in double, rounded to float once.
#pragma once

#include "geometry/wavelet_inverse.h"
#include "geometry/wavelet_scalar.h"

namespace rux::RUX_LEVEL {
namespace {

float* makeReversedTaps(const PickedTaps& from)
{
    return reversedTaps<1>(from);
}

inline double sumOfProducts(const RowPhase& phase, int32_t j)
{
    double sum = 0.0;
    for (int32_t k = 0; k < phase.count; ++k) sum += static_cast<double>(phase.src[j + k]) * phase.reversed[k];
    return sum;
}

inline float sampleOf(const RowPhase& low, const RowPhase& high, int32_t j)
{
    const float lowPart = roundedToSingle(sumOfProducts(low, j));
    return roundedToSingle(sumOfProducts(high, j) + lowPart);
}

void filterRow(RowPhases low, RowPhases high, uint8_t* dst, int32_t samples)
{
    for (int32_t j = 0; j < samples / 2; ++j, dst += 8) {
        store(dst, sampleOf(low.first, high.first, j));
        store(dst + 4, sampleOf(low.second, high.second, j));
    }
}

}
}
