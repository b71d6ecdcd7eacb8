// Median filters with a horizontal and a cross-shaped window, centred on the output pixel.
//
// The operations stand here once; each level's file gives the routine that filters an image.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

// The windows; their values are the mask codes.
enum class Window { row3 = 31, row5 = 51, cross3 = 33, cross5 = 55 };

template <Window window>
void medianImage(const uint8_t* src, ptrdiff_t srcStep, uint8_t* dst, ptrdiff_t dstStep, ruxiSize roiSize);

template <Window first, Window second>
ruxStatus medianFilter(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize roiSize,
                       int32_t maskCode)
{
    const Window window = static_cast<Window>(maskCode);
    if (auto failure = firstFailure(pointers(src, dst), sizes(roiSize), steps(srcStep, dstStep),
                                    require(window == first || window == second, ruxStatusMaskSize)))
        return failure;

    const auto filter = window == first ? medianImage<first> : medianImage<second>;
    filter(src, srcStep, dst, dstStep, roiSize);
    return ruxStatusOk;
}

}

ruxStatus RUXCALL ruxiFilterMedianHoriz_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                               ruxiSize roiSize, int32_t maskCode)
{
    return medianFilter<Window::row3, Window::row5>(src, srcStep, dst, dstStep, roiSize, maskCode);
}

ruxStatus RUXCALL ruxiFilterMedianCross_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                               ruxiSize roiSize, int32_t maskCode)
{
    return medianFilter<Window::cross3, Window::cross5>(src, srcStep, dst, dstStep, roiSize, maskCode);
}

}
