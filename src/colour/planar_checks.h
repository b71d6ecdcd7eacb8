// The checks of the conversions from planes to RGB.
#pragma once

#include "colour/pixel_rows.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

// Neither array is looked into before what stands before it holds; the array of steps itself is not checked.
inline ruxStatus planarFailure(const uint8_t* const src[3], const int32_t srcStep[3], const void* dst, int32_t dstStep,
                               ruxiSize roiSize)
{
    if (auto failure = firstFailure(pointers(src, dst), sizes(roiSize))) return failure;
    if (auto failure = pointers(src[0], src[1], src[2])) return failure;
    return steps(srcStep[0], srcStep[1], srcStep[2], dstStep);
}

}
}
