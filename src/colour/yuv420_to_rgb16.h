// Planar YUV 4:2:0 to RGB of 16 bits a pixel.
//
// The operations stand here once; each level's file gives the routine for a pair of rows.
#pragma once

#include "colour/planar_checks.h"
#include "colour/packed16.h"
#include "colour/rows420.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Layout>
void rowPair(PlanarRowPair src, RgbRowPair dst, size_t width);

template <typename Layout>
ruxStatus convert420(const uint8_t* const src[3], const int32_t srcStep[3], uint16_t* dst, int32_t dstStep,
                     ruxiSize roiSize)
{
    if (auto failure = planarFailure(src, srcStep, dst, dstStep, roiSize)) return failure;

    const RowState state;
    const ptrdiff_t dstWords = dstStep >> 1;
    convertRows420<yuv, Layout>(rowPair<Layout>, {src[0], src[1], src[2]}, {srcStep[0], srcStep[1], srcStep[2]},
                                bytesOf(dst), 2 * dstWords, roiSize);
    return ruxStatusOk;
}

}

ruxStatus RUXCALL ruxiYUV420ToBGR555_8u16u_P3C3R(const uint8_t* const src[3], const int32_t srcStep[3], uint16_t* dst,
                                                 int32_t dstStep, ruxiSize roiSize)
{
    return convert420<Bgr555>(src, srcStep, dst, dstStep, roiSize);
}

ruxStatus RUXCALL ruxiYUV420ToBGR565_8u16u_P3C3R(const uint8_t* const src[3], const int32_t srcStep[3], uint16_t* dst,
                                                 int32_t dstStep, ruxiSize roiSize)
{
    return convert420<Bgr565>(src, srcStep, dst, dstStep, roiSize);
}

}
