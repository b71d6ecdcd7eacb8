// In-place sum, difference and product of float images.
//
// The operations stand here once; each level's file gives the routines that combine a row.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"
#include "frame/float_environment.h"

namespace rux::RUX_LEVEL {
namespace {

enum class Combine { sum, difference, product };

// srcDst = srcDst op src over a row of elements.
template <Combine combine>
void combineRow(const uint8_t* src, uint8_t* srcDst, size_t elements);

// The same over pixels of four floats of which the fourth is alpha.
template <Combine combine>
void combineAlphaRow(const uint8_t* src, uint8_t* srcDst, size_t pixels);

template <typename Row>
ruxStatus combineImages(Row row, const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                        ruxiSize roiSize)
{
    if (auto failure = firstFailure(pointers(src, srcDst), sizes(roiSize), steps(srcStep, srcDstStep)))
        return failure;

    const DoublePrecision precision;
    const uint8_t* from = bytesOf(src);
    uint8_t* to = bytesOf(srcDst);
    for (int32_t y = 0; y < roiSize.height; ++y, from += srcStep, to += srcDstStep)
        row(from, to, static_cast<size_t>(roiSize.width));
    return ruxStatusOk;
}

// Three and four channels are one channel with a longer row; a width below 1 is found before any pointer is.
template <Combine combine>
ruxStatus combineChannels(int32_t channels, const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                          ruxiSize roiSize)
{
    if (auto failure = require(roiSize.width >= 1, ruxStatusSizeError)) return failure;
    const ruxiSize elements = {wrappingProduct(roiSize.width, channels), roiSize.height};
    return combineImages(combineRow<combine>, src, srcStep, srcDst, srcDstStep, elements);
}

}

#define RUX_COMBINE(operation, combine)                                                                            \
    ruxStatus RUXCALL ruxi##operation##_32f_C1IR(const float* src, int32_t srcStep, float* srcDst,                 \
                                                 int32_t srcDstStep, ruxiSize roiSize)                             \
    {                                                                                                              \
        return combineImages(combineRow<combine>, src, srcStep, srcDst, srcDstStep, roiSize);                      \
    }                                                                                                              \
    ruxStatus RUXCALL ruxi##operation##_32f_C3IR(const float* src, int32_t srcStep, float* srcDst,                 \
                                                 int32_t srcDstStep, ruxiSize roiSize)                             \
    {                                                                                                              \
        return combineChannels<combine>(3, src, srcStep, srcDst, srcDstStep, roiSize);                             \
    }                                                                                                              \
    ruxStatus RUXCALL ruxi##operation##_32f_C4IR(const float* src, int32_t srcStep, float* srcDst,                 \
                                                 int32_t srcDstStep, ruxiSize roiSize)                             \
    {                                                                                                              \
        return combineChannels<combine>(4, src, srcStep, srcDst, srcDstStep, roiSize);                             \
    }                                                                                                              \
    ruxStatus RUXCALL ruxi##operation##_32f_AC4IR(const float* src, int32_t srcStep, float* srcDst,                \
                                                  int32_t srcDstStep, ruxiSize roiSize)                            \
    {                                                                                                              \
        return combineImages(combineAlphaRow<combine>, src, srcStep, srcDst, srcDstStep, roiSize);                 \
    }

RUX_COMBINE(Add, Combine::sum)           // ruxiAdd_32f_C1IR, C3IR, C4IR, AC4IR
RUX_COMBINE(Sub, Combine::difference)    // ruxiSub_32f_C1IR, C3IR, C4IR, AC4IR
RUX_COMBINE(Mul, Combine::product)       // ruxiMul_32f_C1IR, C3IR, C4IR, AC4IR

#undef RUX_COMBINE

}
