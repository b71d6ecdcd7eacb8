// Canny edges from two gradient images.
//
// The operations stand here once; each level's file gives the routine that finds the edges.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

// Steps in bytes.
struct CannyImages {
    const uint8_t* dx;
    ptrdiff_t dxStep;
    const uint8_t* dy;
    ptrdiff_t dyStep;
    uint8_t* dst;
    ptrdiff_t dstStep;
    int32_t width;
    int32_t height;
    uint8_t* buffer;
};

void cannyEdges(const CannyImages& images, float lowThresh, float highThresh);

}

ruxStatus RUXCALL ruxiCannyGetSize(ruxiSize roiSize, int32_t* bufferSize)
{
    if (auto failure = firstFailure(sizes(roiSize), pointers(bufferSize))) return failure;

    store<int32_t>(bufferSize, 12 * (roiSize.width + 2) * (roiSize.height + 2));
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiCanny_16s8u_C1R(const int16_t* srcDx, int32_t srcDxStep, const int16_t* srcDy, int32_t srcDyStep,
                                      uint8_t* dst, int32_t dstStep, ruxiSize roiSize, float lowThresh,
                                      float highThresh, uint8_t* buffer)
{
    if (auto failure = firstFailure(pointers(srcDx, srcDy, dst, buffer), steps(srcDxStep, srcDyStep, dstStep),
                                    sizes(roiSize),
                                    require(srcDxStep % 2 == 0 && srcDyStep % 2 == 0, ruxStatusStepNotPixelMultiple),
                                    require(!(lowThresh < 0 || lowThresh > highThresh), ruxStatusBadArgument)))
        return failure;

    cannyEdges({bytesOf(srcDx), srcDxStep, bytesOf(srcDy), srcDyStep, dst, dstStep, roiSize.width, roiSize.height,
                buffer},
               lowThresh, highThresh);
    return ruxStatusOk;
}

}
