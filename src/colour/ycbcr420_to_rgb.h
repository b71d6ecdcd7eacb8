// Planar YCbCr 4:2:0 to RGB.
//
// The operation stands here once; each level's file gives the routine for a pair of rows.
#pragma once

#include "colour/planar_checks.h"
#include "colour/rows420.h"

namespace rux::RUX_LEVEL {
namespace {

void rowPair(PlanarRowPair src, RgbRowPair dst, size_t width);

}

ruxStatus RUXCALL ruxiYCbCr420ToRGB_8u_P3C3R(const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst,
                                             int32_t dstStep, ruxiSize roiSize)
{
    if (auto failure = planarFailure(src, srcStep, dst, dstStep, roiSize)) return failure;

    const RowState state;
    convertRows420<ycbcr420, Rgb24>(rowPair, {src[0], src[1], src[2]}, {srcStep[0], srcStep[1], srcStep[2]}, dst,
                                    dstStep, roiSize);
    return ruxStatusOk;
}

}
