// RGB to YCbCr: to planes in 4:2:0 and to interleaved pairs in 4:2:2.
//
// The operations stand here once; each level's file gives the routines for a pair of rows and for a row.
#pragma once

#include "colour/rgb_to_ycbcr_scalar.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

// The 2x2 blocks of two rows of an even number of pixels.
void rowPairTo420(RgbRows src, Planes420 dst, size_t pixels);

void rowTo422(const uint8_t* src, uint8_t* dst, size_t width);

// A chroma sample of two pixels, for want of a partner row or column.
inline void storeChromaOfTwo(RgbSum sum, uint8_t* cb, uint8_t* cr)
{
    *cb = component(cbOfTwo, sum);
    *cr = component(crOfTwo, sum);
}

inline void lastColumnTo420(RgbRows src, Planes420 dst)
{
    const RgbSum upper = pixelAt(src.upper);
    const RgbSum lower = pixelAt(src.lower);
    dst.luma[0] = component(roundedLuma, upper);
    dst.lowerLuma[0] = component(roundedLuma, lower);
    storeChromaOfTwo(upper + lower, dst.cb, dst.cr);
}

inline void lastRowTo420(const uint8_t* src, uint8_t* luma, uint8_t* cb, uint8_t* cr, size_t width)
{
    for (; width >= 2; width -= 2, src += 6, luma += 2, ++cb, ++cr) {
        const RgbSum left = pixelAt(src);
        const RgbSum right = pixelAt(src + 3);
        luma[0] = component(roundedLuma, left);
        luma[1] = component(roundedLuma, right);
        storeChromaOfTwo(left + right, cb, cr);
    }
    if (width == 0) return;
    const RgbSum corner = pixelAt(src);
    luma[0] = component(roundedLuma, corner);
    cb[0] = component(cbOfOne, corner);
    cr[0] = component(crOfOne, corner);
}

}

ruxStatus RUXCALL ruxiRGBToYCbCr420_8u_C3P3R(const uint8_t* src, int32_t srcStep, uint8_t* const dst[3],
                                             const int32_t dstStep[3], ruxiSize roiSize)
{
    if (auto failure = firstFailure(pointers(src, dst), sizes(roiSize))) return failure;
    if (auto failure = pointers(dst[0], dst[1], dst[2])) return failure;
    if (auto failure = steps(srcStep, dstStep[0], dstStep[1], dstStep[2])) return failure;

    const RowState state;
    const size_t width = static_cast<size_t>(roiSize.width);
    const size_t paired = width & ~size_t(1);
    uint8_t* luma = dst[0];
    uint8_t* cb = dst[1];
    uint8_t* cr = dst[2];
    for (int32_t pairs = roiSize.height / 2; pairs > 0; --pairs) {
        const RgbRows rows = {src, src + srcStep};
        const Planes420 planes = {luma, luma + dstStep[0], cb, cr};
        rowPairTo420(rows, planes, paired);
        if (width != paired) lastColumnTo420(rows.at(paired), planes.at(paired));
        src += 2 * static_cast<ptrdiff_t>(srcStep);
        luma += 2 * static_cast<ptrdiff_t>(dstStep[0]);
        cb += dstStep[1];
        cr += dstStep[2];
    }
    if (roiSize.height % 2 != 0) lastRowTo420(src, luma, cb, cr, width);
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiRGBToYCbCr422_8u_C3C2R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                             ruxiSize roiSize)
{
    if (auto failure = firstFailure(pointers(src, dst), sizes(roiSize), steps(srcStep, dstStep))) return failure;

    const StreamedRowState state;
    for (int32_t y = 0; y < roiSize.height; ++y, src += srcStep, dst += dstStep)
        rowTo422(src, dst, static_cast<size_t>(roiSize.width));
    return ruxStatusOk;
}

}
