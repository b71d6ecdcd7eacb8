// Division of a float image by a constant: a multiplication by the constant's reciprocal, rounded to float.
//
// The operation stands here once; each level's file gives the reciprocal and the routines that scale the rows.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"
#include "frame/float_environment.h"

namespace rux::RUX_LEVEL {
namespace {

float reciprocalOf(float value);
void scaleRow(uint8_t* srcDst, size_t elements, float factor);
void finishRows();

inline void clearRow(uint8_t* dst, size_t elements)
{
    for (size_t i = 0; i < elements; ++i) store<uint32_t>(dst + i * 4, 0);
}

}

ruxStatus RUXCALL ruxiDivC_32f_C1IR(float value, float* srcDst, int32_t srcDstStep, ruxiSize roiSize)
{
    // A NaN is neither below nor above 0.0 and is refused as 0.0 is.
    if (auto failure = firstFailure(pointers(srcDst), sizes(roiSize), steps(srcDstStep),
                                    require(value < 0.0f || value > 0.0f, ruxStatusDivideByZero)))
        return failure;

    const DoublePrecision precision;
    const float factor = reciprocalOf(value);
    if (factor == 1.0f) return ruxStatusOk;

    const size_t elements = static_cast<size_t>(roiSize.width);
    uint8_t* row = bytesOf(srcDst);
    for (int32_t y = 0; y < roiSize.height; ++y, row += srcDstStep) {
        if (factor == 0.0f)
            clearRow(row, elements);   // also a NaN becomes +0.0
        else
            scaleRow(row, elements, factor);
    }
    finishRows();
    return ruxStatusOk;
}

}
