// Power function of a vector with one exponent.
//
// The operation stands here once; each level's file gives the routine for the vector.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"
#include "frame/float_environment.h"

namespace rux::RUX_LEVEL {
namespace {

// The status of the last special event, or ruxStatusOk. The exponent is given by its bits.
ruxStatus raiseVector(const uint8_t* src, uint32_t y, uint8_t* dst, size_t elements);

}

ruxStatus RUXCALL ruxsPowx_32f_A11(const float* src, float y, float* dst, int32_t len)
{
    const uint32_t exponent = bitsOf(y);
    if (auto failure = firstFailure(require(len >= 1, ruxStatusSizeError), pointers(src, dst))) return failure;

    return raiseVector(bytesOf(src), exponent, bytesOf(dst), static_cast<size_t>(len));
}

}
