// The row pass in double, rounded to float once.
#pragma once

#include "geometry/wavelet_inverse.h"
#include "geometry/wavelet_scalar.h"

namespace rux::RUX_LEVEL {
namespace {

inline double sumOfProducts(const RowPhase& phase, int32_t j)
{
    double sum = 0.0;
    for (int32_t k = 0; k < phase.count; ++k) sum += static_cast<double>(phase.src[j + k]) * phase.reversed[k];
    return sum;
}

template <bool adding>
inline void putSample(uint8_t* dst, double sum)
{
    store(dst, roundedToSingle(adding ? sum + load<float>(dst) : sum));
}

template <bool adding>
void filterRow(RowPhases phases, uint8_t* dst, int32_t samples)
{
    for (int32_t j = 0; j < samples / 2; ++j, dst += 8) {
        putSample<adding>(dst, sumOfProducts(phases.first, j));
        putSample<adding>(dst + 4, sumOfProducts(phases.second, j));
    }
}

}
}
