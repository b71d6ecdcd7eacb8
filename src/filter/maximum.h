// Greatest value in a rectangular mask: horizontal maxima of source rows in a ring, then vertical ones of its rows.
//
// The operation stands here once; each level's file gives the copy and the filter.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"
#include "frame/work_memory.h"

namespace rux::RUX_LEVEL {
namespace {

// The image with the pixel where the first output's mask starts.
struct MaximumImages {
    const uint8_t* src;
    ptrdiff_t srcStride;
    uint8_t* dst;
    ptrdiff_t dstStride;
    size_t width;
    int32_t height;
};

void copyImage(const MaximumImages& images);
ruxStatus filterMaximum(const MaximumImages& images, size_t maskWidth, int32_t maskHeight);

constexpr int64_t roundedUpTo32(int64_t bytes)
{
    return (bytes + 31) & ~static_cast<int64_t>(31);
}

}

ruxStatus RUXCALL ruxiFilterMax_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       ruxiSize roiSize, ruxiSize maskSize, ruxiPoint anchor)
{
    if (auto failure = firstFailure(pointers(src, dst), sizes(roiSize), steps(srcStep, dstStep),
                                    require(maskSize.width >= 1 && maskSize.height >= 1, ruxStatusMaskSize),
                                    require(anchor.x >= 0 && anchor.y >= 0, ruxStatusAnchor),
                                    require(anchor.x < maskSize.width && anchor.y < maskSize.height,
                                            ruxStatusAnchor)))
        return failure;

    const ptrdiff_t srcStride = srcStep;
    const MaximumImages images = {src - anchor.y * srcStride - anchor.x, srcStride, dst, dstStep,
                                  static_cast<size_t>(roiSize.width), roiSize.height};
    if (maskSize.width > 1 || maskSize.height > 1)
        return filterMaximum(images, static_cast<size_t>(maskSize.width), maskSize.height);
    copyImage(images);
    return ruxStatusOk;
}

}
