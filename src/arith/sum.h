// The sum of an 8-bit image.
//
// The operation stands here once; each level's file gives the routine that adds up the image.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"
#include "frame/float_environment.h"

namespace rux::RUX_LEVEL {
namespace {

double sumImage(const uint8_t* src, int32_t srcStep, ruxiSize roiSize);

}

ruxStatus RUXCALL ruxiSum_8u_C1R(const uint8_t* src, int32_t srcStep, ruxiSize roiSize, double* sum)
{
    if (auto failure = firstFailure(pointers(src, sum), sizes(roiSize), steps(srcStep))) return failure;

    const DoublePrecision precision;
    store<double>(sum, sumImage(src, srcStep, roiSize));
    return ruxStatusOk;
}

}
