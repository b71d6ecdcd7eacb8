// Accumulation of an 8-bit image into a float image, with or without a weight.
//
// The operations stand here once; each level's file gives the routines for a row.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"
#include "frame/float_environment.h"

namespace rux::RUX_LEVEL {
namespace {

// srcDst = srcDst + src
struct Plain {};

// srcDst = srcDst + (src - srcDst) * alpha
struct Weighted {
    float alpha;
};

template <typename Weight>
void accumulateRow(Weight weight, const uint8_t* src, uint8_t* srcDst, size_t elements);

// These two operations have checks of their own: every wrong number is a size error, and an empty image is none.
template <typename Weight>
ruxStatus accumulate(Weight weight, const uint8_t* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                     ruxiSize roiSize)
{
    const int32_t rowBytes = wrappingProduct(roiSize.width, 4);
    if (auto failure = firstFailure(
            pointers(src, srcDst),
            require(roiSize.width >= 0 && roiSize.height >= 0, ruxStatusSizeError),
            require(srcStep >= roiSize.width && srcDstStep >= rowBytes && srcDstStep % 4 == 0, ruxStatusSizeError)))
        return failure;
    if (roiSize.width == 0 || roiSize.height == 0) return ruxStatusOk;

    const DoublePrecision precision;
    uint8_t* to = bytesOf(srcDst);
    size_t elements = static_cast<size_t>(roiSize.width);
    int32_t rows = roiSize.height;
    if (rows == 1 || (srcStep == roiSize.width && srcDstStep == rowBytes)) {
        elements *= static_cast<size_t>(rows);
        rows = 1;
    }
    for (; rows > 0; --rows, src += srcStep, to += srcDstStep) accumulateRow(weight, src, to, elements);
    return ruxStatusOk;
}

}

ruxStatus RUXCALL ruxiAdd_8u32f_C1IR(const uint8_t* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                     ruxiSize roiSize)
{
    return accumulate(Plain(), src, srcStep, srcDst, srcDstStep, roiSize);
}

ruxStatus RUXCALL ruxiAddWeighted_8u32f_C1IR(const uint8_t* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                             ruxiSize roiSize, float alpha)
{
    return accumulate(Weighted{alpha}, src, srcStep, srcDst, srcDstStep, roiSize);
}

}
