// MPEG-2 inverse quantisation, saturation and mismatch control, in place.
//
// The operations stand here once; each level's file reconstructs the coefficients and gives the sum of all 64, of which
// only the parity matters.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

// Coefficients 1 to 63; the DC passes unchanged and counts in the sum.
int32_t reconstructIntra(uint8_t* coefficients, int32_t quantScale, const uint8_t* matrix);

int32_t reconstruct(uint8_t* coefficients, int32_t quantScale, const uint8_t* matrix);

// All weights 16.
int32_t reconstructFlat(uint8_t* coefficients, int32_t quantScale);

// An even sum toggles the lowest bit of the last coefficient.
inline void controlMismatch(uint8_t* coefficients, int32_t sum)
{
    if (sum & 1) return;
    uint8_t* const last = coefficients + 2 * 63;
    store(last, static_cast<uint16_t>(load<uint16_t>(last) ^ 1));
}

}

ruxStatus RUXCALL ruxiQuantInvIntra_MPEG2_16s_C1I(int16_t* srcDst, int32_t quantScale, const int16_t* matrix)
{
    if (auto failure = firstFailure(pointers(srcDst, matrix))) return failure;

    const int32_t sum = reconstructIntra(bytesOf(srcDst), quantScale, bytesOf(matrix));
    controlMismatch(bytesOf(srcDst), sum);
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiQuantInv_MPEG2_16s_C1I(int16_t* srcDst, int32_t quantScale, const int16_t* matrix)
{
    if (auto failure = firstFailure(pointers(srcDst))) return failure;

    const int32_t sum = matrix ? reconstruct(bytesOf(srcDst), quantScale, bytesOf(matrix))
                               : reconstructFlat(bytesOf(srcDst), quantScale);
    controlMismatch(bytesOf(srcDst), sum);
    return ruxStatusOk;
}

}
