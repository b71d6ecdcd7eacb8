// The largest element of a float image.
//
// The operation stands here once; each level's file gives the routine that finds it. Elements are moved as their bits.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

void findLargest(const uint8_t* src, int32_t srcStep, ruxiSize roiSize, uint8_t* max);

}

ruxStatus RUXCALL ruxiMax_32f_C1R(const float* src, int32_t srcStep, ruxiSize roiSize, float* max)
{
    if (auto failure = firstFailure(pointers(src, max), sizes(roiSize), steps(srcStep))) return failure;

    findLargest(bytesOf(src), srcStep, roiSize, bytesOf(max));
    return ruxStatusOk;
}

}
