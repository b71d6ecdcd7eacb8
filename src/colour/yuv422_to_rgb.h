// YUV 4:2:2 to RGB, from interleaved pairs and from planes, and from planes to four bytes a pixel.
//
// The operations stand here once; each level's file gives the routines for a row.
#pragma once

#include "colour/planar_checks.h"
#include "colour/rgb_scalar.h"

namespace rux::RUX_LEVEL {
namespace {

// Widths above 1.
void interleavedRow(InterleavedRow src, RgbRow dst, size_t width);

void planarRow(PlanarRow src, RgbRow dst, size_t width);

void planarRowToRgb0(PlanarRow src, RgbRow dst, size_t width);

template <typename Row>
void convertPlanes(Row row, const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst, int32_t dstStep,
                   ruxiSize size)
{
    const PlaneSteps steps = {srcStep[0], srcStep[1], srcStep[2]};
    PlanarRow from = {src[0], src[1], src[2]};
    for (int32_t y = 0; y < size.height; ++y, from = nextRow(from, steps), dst += dstStep)
        row(from, RgbRow{dst}, static_cast<size_t>(size.width));
}

}

ruxStatus RUXCALL ruxiYUV422ToRGB_8u_C2C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           ruxiSize roiSize)
{
    if (auto failure = firstFailure(pointers(src, dst), sizes(roiSize), steps(srcStep, dstStep))) return failure;

    const StreamedRowState state;
    if (roiSize.width == 1) {
        convertColumn<yuv>(src, srcStep, dst, dstStep, roiSize.height);
        return ruxStatusOk;
    }
    for (int32_t y = 0; y < roiSize.height; ++y, src += srcStep, dst += dstStep)
        interleavedRow({src}, {dst}, static_cast<size_t>(roiSize.width));
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiYUV422ToRGB_8u_P3C3R(const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst,
                                           int32_t dstStep, ruxiSize roiSize)
{
    if (auto failure = planarFailure(src, srcStep, dst, dstStep, roiSize)) return failure;

    const RowState state;
    convertPlanes(planarRow, src, srcStep, dst, dstStep, roiSize);
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiYUV422ToRGB_8u_P3AC4R(const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst,
                                            int32_t dstStep, ruxiSize roiSize)
{
    if (auto failure = planarFailure(src, srcStep, dst, dstStep, roiSize)) return failure;

    const StreamedRowState state;
    convertPlanes(planarRowToRgb0, src, srcStep, dst, dstStep, roiSize);
    return ruxStatusOk;
}

}
