// Halving a plane in both directions.
//
// The operation stands here once; each level's file gives the row.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

// Makes a row from two, of which twice its width is read.
void halveRows(const uint8_t* upper, const uint8_t* lower, uint8_t* dst, int32_t width);

// The remaining samples of a row.
inline void halveSamples(const uint8_t* upper, const uint8_t* lower, uint8_t* dst, int32_t width)
{
    for (int32_t x = 0; x < width; ++x, upper += 2, lower += 2)
        dst[x] = static_cast<uint8_t>((upper[0] + upper[1] + lower[0] + lower[1] + 3) >> 2);
}

}

ruxStatus RUXCALL ruxiSampleDownH2V2_JPEG_8u_C1R(
    const uint8_t* src, int32_t srcStep, ruxiSize srcRoiSize, uint8_t* dst, int32_t dstStep, ruxiSize dstRoiSize)
{
    if (auto failure = firstFailure(pointers(src), steps(srcStep), sizes(srcRoiSize),
                                    pointers(dst), steps(dstStep), sizes(dstRoiSize)))
        return failure;

    for (int32_t y = 0; y < dstRoiSize.height; ++y) {
        halveRows(src, src + srcStep, dst, dstRoiSize.width);
        src += 2 * static_cast<ptrdiff_t>(srcStep);
        dst += dstStep;
    }
    return ruxStatusOk;
}

}
