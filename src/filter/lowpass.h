// Rounded mean of 3x3 or 5x5 pixels, from sums of columns and rows that slide over the image.
//
// The operation stands here once; each level's file gives the routine that filters the image.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"
#include "frame/work_memory.h"

namespace rux::RUX_LEVEL {
namespace {

// The image with the pixel where the first output's mask starts.
struct MaskedImages {
    const uint8_t* src;
    ptrdiff_t srcStride;
    uint8_t* dst;
    ptrdiff_t dstStride;
    int32_t width;
    int32_t height;
};

// Of a mask with that many rows and columns.
template <int size>
ruxStatus filterMean(const MaskedImages& images);

}

ruxStatus RUXCALL ruxiFilterLowpass_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           ruxiSize roiSize, int32_t maskCode)
{
    if (auto failure = firstFailure(pointers(src, dst), sizes(roiSize), steps(srcStep, dstStep),
                                    require(maskCode == 33 || maskCode == 55, ruxStatusMaskSize)))
        return failure;

    const ptrdiff_t stride = srcStep;
    if (maskCode == 33)
        return filterMean<3>({src - stride - 1, stride, dst, dstStep, roiSize.width, roiSize.height});
    return filterMean<5>({src - 2 * stride - 2, stride, dst, dstStep, roiSize.width, roiSize.height});
}

}
