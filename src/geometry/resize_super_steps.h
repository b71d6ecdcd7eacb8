// Steps of supersampling that several levels take pixel by pixel.
#pragma once

#include "geometry/resize_super.h"

namespace rux::RUX_LEVEL {
namespace {

// A row of whole boxes in three steps: adds rows of bytes onto sums; sums[j] becomes the sum of box j, the last box
// cut short where the columns end; dst[j] = trunc(sums[j] * norm + 0.5).
void addRows(uint32_t* sums, const uint8_t* src, int32_t srcStep, int32_t rows, int32_t columns);
void compactWhole(uint32_t* sums, int32_t columns, int32_t whole, int32_t boxes);
void writeMeans(const uint32_t* sums, double norm, uint8_t* dst, int32_t width);

inline void reduceInSteps(const Reduction& reduction, uint32_t* sums, int32_t columns, const uint8_t* src,
                          int32_t srcStep, uint8_t* dst)
{
    clearSums(sums, columns);
    addRows(sums, src, srcStep, reduction.y.whole, columns);
    compactWhole(sums, columns, reduction.x.whole, reduction.x.length);
    writeMeans(sums, reduction.norm, dst, reduction.x.length);
}

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
