// MPEG-2 quantisation for an encoder, in place.
//
// The operations stand here once; each level's file quantises a block, and says what it leaves in *count.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

// Coefficients 1 to 63; the DC is left alone.
void quantiseIntra(uint8_t* coefficients, int32_t quantScale, const uint8_t* matrix, int32_t* count);

void quantise(uint8_t* coefficients, int32_t quantScale, const uint8_t* matrix, int32_t* count);

// What one unit of a coefficient counts for before it is divided and weighted.
constexpr int32_t intraUnit = 32;
constexpr int32_t nonIntraUnit = 16;

constexpr int32_t largestLevel = 2047;

}

ruxStatus RUXCALL ruxiQuantIntra_MPEG2_16s_C1I(int16_t* srcDst, int32_t quantScale, const float* matrix,
                                               int32_t* count)
{
    if (auto failure =
            firstFailure(pointers(srcDst, matrix, count), require(quantScale != 0, ruxStatusDivideByZero)))
        return failure;

    quantiseIntra(bytesOf(srcDst), quantScale, bytesOf(matrix), count);
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiQuant_MPEG2_16s_C1I(int16_t* srcDst, int32_t quantScale, const float* matrix, int32_t* count)
{
    if (auto failure =
            firstFailure(pointers(srcDst, matrix, count), require(quantScale != 0, ruxStatusDivideByZero)))
        return failure;

    quantise(bytesOf(srcDst), quantScale, bytesOf(matrix), count);
    return ruxStatusOk;
}

}
