// Supersampling with float sums, pixel by pixel: what is added is added in double, what is kept is kept in float.
#pragma once

#include "geometry/resize_super.h"
#include "geometry/resize_super_steps.h"

namespace rux::RUX_LEVEL {
namespace {

void addRows(float* sums, const uint8_t* src, int32_t srcStep, int32_t rows, int32_t columns)
{
    for (; rows > 0; --rows, src += srcStep)
        for (int32_t j = 0; j < columns; ++j) sums[j] = static_cast<float>(double(src[j]) + sums[j]);
}

void addWeightedRow(float* sums, const uint8_t* src, double weight, int32_t columns)
{
    addWeightedPixels(sums, src, weight, 0, columns);
}

void compactBoxes(float* sums, const Box* boxes, int32_t count)
{
    for (int32_t k = 0; k < count; ++k) {
        const Box& box = boxes[k];
        const float* element = sums + box.first;
        double sum = box.head != 0.0 ? *element++ * box.head : 0.0;
        for (int32_t n = box.count; n > 0; --n) sum += *element++;
        if (box.tail != 0.0) sum += *element * box.tail;
        sums[k] = static_cast<float>(sum);
    }
}

void writeMeans(const uint32_t* sums, double norm, uint8_t* dst, int32_t width)
{
    writeMeansSingly(sums, norm, dst, 0, width);
}

void writeMeans(const float* sums, double norm, uint8_t* dst, int32_t width)
{
    writeMeansSingly(sums, norm, dst, 0, width);
}

}
}
