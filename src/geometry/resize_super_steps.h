// Steps of supersampling that several levels take pixel by pixel.
#pragma once

#include "geometry/resize_super.h"

namespace rux::RUX_LEVEL {
namespace {

inline void addWeightedPixels(float* sums, const uint8_t* src, double weight, int32_t from, int32_t to)
{
    for (int32_t j = from; j < to; ++j) sums[j] = static_cast<float>(src[j] * weight + sums[j]);
}

template <typename Sum>
inline void writeMeansSingly(const Sum* sums, double norm, uint8_t* dst, int32_t from, int32_t to)
{
    for (int32_t j = from; j < to; ++j)
        dst[j] = static_cast<uint8_t>(static_cast<int64_t>(sums[j] * norm + 0.5));
}

}
}
