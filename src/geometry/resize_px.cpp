// Resize, pixel by pixel. Linear interpolation rounds at both stages.
#include "geometry/resize.h"
#include "geometry/resize_cubic_scalar.h"
#include "geometry/resize_super_scalar.h"

namespace rux::px {
namespace {

void scaleRowLinear(const uint8_t* src, const int32_t* offsets, const uint16_t* weights, uint16_t* row, int32_t width)
{
    for (int32_t j = 0; j < width; ++j) {
        const uint8_t* const pair = src + offsets[j];
        row[j] = static_cast<uint16_t>((weights[2 * j] * pair[0] + weights[2 * j + 1] * pair[1] + 128) >> 8);
    }
}

void blendRowsLinear(const uint16_t* upper, const uint16_t* lower, uint16_t weight, uint8_t* dst, int32_t width)
{
    const int32_t upperWeight = linearOne - weight;
    for (int32_t j = 0; j < width; ++j)
        dst[j] = static_cast<uint8_t>((lower[j] * weight + upper[j] * upperWeight + 0x80000) >> 20);
}

void addRows(uint32_t* sums, const uint8_t* src, int32_t srcStep, int32_t rows, int32_t columns)
{
    for (; rows > 0; --rows, src += srcStep)
        for (int32_t j = 0; j < columns; ++j) sums[j] += src[j];
}

void compactWhole(uint32_t* sums, int32_t columns, int32_t whole, int32_t boxes)
{
    for (int32_t k = 0, first = 0; k < boxes && first < columns; ++k) {
        const int32_t end = whole < columns - first ? first + whole : columns;
        uint32_t sum = 0;
        for (; first < end; ++first) sum += sums[first];
        sums[k] = sum;
    }
}

void reduceWholeRow(const Reduction& reduction, uint32_t* sums, int32_t columns, const uint8_t* src, int32_t srcStep,
                    uint8_t* dst)
{
    reduceInSteps(reduction, sums, columns, src, srcStep, dst);
}

}
}
