// Clamping of floats in place at one level.
//
// The operation stands here once; each level's file gives the routine that clamps. An element equal to the level, be
// it a zero of the other sign, and a NaN stay as they are. Floats travel as their bits: a signalling NaN stays one.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"
#include "frame/float_environment.h"

namespace rux::RUX_LEVEL {
namespace {

// Elements above (or below) the level become the level.
void clampAbove(uint8_t* srcDst, size_t elements, uint32_t level);
void clampBelow(uint8_t* srcDst, size_t elements, uint32_t level);

}

ruxStatus RUXCALL ruxsThreshold_32f_I(float* srcDst, int32_t len, float level, int32_t relOp)
{
    const uint32_t levelBits = bitsOf(level);
    if (auto failure = firstFailure(pointers(srcDst), require(len >= 1, ruxStatusSizeError))) return failure;

    const size_t elements = static_cast<size_t>(len);
    if (relOp == ruxCmpGreater)
        clampAbove(bytesOf(srcDst), elements, levelBits);
    else
        clampBelow(bytesOf(srcDst), elements, levelBits);
    return ruxStatusOk;
}

}
