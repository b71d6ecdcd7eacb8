// Inverse 8x8 DCT.
//
// The operations stand here once; each level's file gives the transform and the three ways in which it ends.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

struct LevelShift {
    int16_t shift;
    uint8_t clipMin;
    uint8_t clipMax;
};

void inverseToWords(const int16_t* coefficients, uint8_t* dst, ptrdiff_t stride);

// Clamped to 0 .. 255; eight bytes of a row are written.
void inverseToBytes(const int16_t* coefficients, uint8_t* dst, ptrdiff_t stride);

// Shifted, then clamped to clipMin .. clipMax.
void inverseToShiftedBytes(const int16_t* coefficients, uint8_t* dst, ptrdiff_t stride, LevelShift level);

}

ruxStatus RUXCALL ruxiDCT8x8Inv_16s_C1R(const int16_t* src, int16_t* dst, int32_t dstStep)
{
    if (auto failure = firstFailure(pointers(src, dst), steps(dstStep))) return failure;

    inverseToWords(src, bytesOf(dst), dstStep);
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiDCT8x8Inv_16s8u_C1R(const int16_t* src, uint8_t* dst, int32_t dstStep)
{
    if (auto failure = firstFailure(pointers(src, dst), steps(dstStep))) return failure;

    inverseToBytes(src, dst, dstStep);
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiDCT8x8InvLSClip_16s8u_C1R(const int16_t* src, uint8_t* dst, int32_t dstStep,
                                                int16_t levelShift, uint8_t clipMin, uint8_t clipMax)
{
    if (auto failure = firstFailure(pointers(src, dst), steps(dstStep))) return failure;

    inverseToShiftedBytes(src, dst, dstStep, {levelShift, clipMin, clipMax});
    return ruxStatusOk;
}

}
