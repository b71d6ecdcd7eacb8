// Sum and mean of a vector of floats.
//
// The operations stand here once; each level's file gives the sum in double, in its own order of additions.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"
#include "frame/float_environment.h"

namespace rux::RUX_LEVEL {
namespace {

// Called under DoublePrecision.
double sumOf(const uint8_t* src, size_t elements, int32_t hint);

// The elements added to a sum one by one.
inline double sumSingly(const uint8_t* src, size_t elements, double sum)
{
    for (; elements > 0; --elements, src += 4) sum += load<float>(src);
    return sum;
}

}

ruxStatus RUXCALL ruxsSum_32f(const float* src, int32_t len, float* sum, int32_t hint)
{
    if (auto failure = firstFailure(pointers(src, sum), require(len >= 1, ruxStatusSizeError))) return failure;

    const DoublePrecision precision;
    store(sum, roundedToSingle(sumOf(bytesOf(src), static_cast<size_t>(len), hint)));
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxsMean_32f(const float* src, int32_t len, float* mean, int32_t hint)
{
    if (auto failure = firstFailure(pointers(src, mean), require(len >= 1, ruxStatusSizeError))) return failure;

    const DoublePrecision precision;
    store(mean, roundedToSingle(sumOf(bytesOf(src), static_cast<size_t>(len), hint) / len));
    return ruxStatusOk;
}

}
