// Planar, tightly packed YUV 4:2:0 to RGB.
//
// The operation stands here once; each level's file gives the routine for a pair of rows.
#pragma once

#include "colour/rows420.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

void rowPair(PlanarRowPair src, RgbRowPair dst, size_t width);

}

ruxStatus RUXCALL ruxiYUV420ToRGB_8u_P3C3(const uint8_t* const src[3], uint8_t* dst, ruxiSize roiSize)
{
    if (auto failure = firstFailure(pointers(src, dst), sizes(roiSize))) return failure;
    if (auto failure = pointers(src[0], src[1], src[2])) return failure;

    const StreamedRowState state;
    const ptrdiff_t width = roiSize.width;
    const ptrdiff_t chromaWidth = width / 2 + width % 2;
    convertRows420<yuv, Rgb24>(rowPair, {src[0], src[1], src[2]}, {width, chromaWidth, chromaWidth}, dst, 3 * width,
                               roiSize);
    return ruxStatusOk;
}

}
