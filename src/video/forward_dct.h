// Forward 8x8 DCT.
//
// The operations stand here once; each level's file gives the transform. The 8-bit form takes 0 .. 255 as they are.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Sample>
void forwardTransform(const uint8_t* samples, ptrdiff_t stride, uint8_t* coefficients);

}

ruxStatus RUXCALL ruxiDCT8x8Fwd_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst)
{
    if (auto failure = firstFailure(pointers(src, dst), steps(srcStep))) return failure;

    forwardTransform<int16_t>(bytesOf(src), srcStep, bytesOf(dst));
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiDCT8x8Fwd_8u16s_C1R(const uint8_t* src, int32_t srcStep, int16_t* dst)
{
    if (auto failure = firstFailure(pointers(src, dst), steps(srcStep))) return failure;

    forwardTransform<uint8_t>(src, srcStep, bytesOf(dst));
    return ruxStatusOk;
}

}
