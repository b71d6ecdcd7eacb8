// Interleaved YCbCr 4:2:2 to RGB of 16 bits a pixel.
//
// The operations stand here once; each level's file gives the routine for a row.
#pragma once

#include "colour/packed16.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Layout>
void interleavedRow(InterleavedRow src, RgbRow dst, size_t width);

template <typename Layout>
ruxStatus convert422(const uint8_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    if (auto failure = firstFailure(pointers(src, dst), sizes(roiSize), steps(srcStep, dstStep))) return failure;

    const RowState state;
    const int32_t dstWords = dstStep >> 1;
    const size_t width = static_cast<size_t>(roiSize.width);
    uint8_t* to = bytesOf(dst);

    // A contiguous image is one row, cut where its last pixels no longer make eight.
    if (wrappingProduct(roiSize.width, 2) == srcStep && dstWords == roiSize.width && width % 2 == 0) {
        const size_t pixels = width * static_cast<size_t>(roiSize.height);
        const size_t eights = pixels & ~size_t(7);
        interleavedRow<Layout>({src}, {to}, eights);
        interleavedRow<Layout>({src + eights * 2}, {to + eights * 2}, pixels - eights);
        return ruxStatusOk;
    }
    // The 8-bit conversion: three bytes for each row, and a count of words for a stride in bytes.
    if (width == 1) {
        convertColumn<ycbcr422Pairs>(src, srcStep, to, dstWords, roiSize.height);
        return ruxStatusOk;
    }
    for (int32_t y = 0; y < roiSize.height; ++y, src += srcStep, to += 2 * static_cast<ptrdiff_t>(dstWords))
        interleavedRow<Layout>({src}, {to}, width);
    return ruxStatusOk;
}

}

ruxStatus RUXCALL ruxiYCbCr422ToRGB555_8u16u_C2C3R(const uint8_t* src, int32_t srcStep, uint16_t* dst,
                                                   int32_t dstStep, ruxiSize roiSize)
{
    return convert422<Rgb555>(src, srcStep, dst, dstStep, roiSize);
}

ruxStatus RUXCALL ruxiYCbCr422ToRGB565_8u16u_C2C3R(const uint8_t* src, int32_t srcStep, uint16_t* dst,
                                                   int32_t dstStep, ruxiSize roiSize)
{
    return convert422<Rgb565>(src, srcStep, dst, dstStep, roiSize);
}

ruxStatus RUXCALL ruxiYCbCr422ToBGR555_8u16u_C2C3R(const uint8_t* src, int32_t srcStep, uint16_t* dst,
                                                   int32_t dstStep, ruxiSize roiSize)
{
    return convert422<Bgr555>(src, srcStep, dst, dstStep, roiSize);
}

ruxStatus RUXCALL ruxiYCbCr422ToBGR565_8u16u_C2C3R(const uint8_t* src, int32_t srcStep, uint16_t* dst,
                                                   int32_t dstStep, ruxiSize roiSize)
{
    return convert422<Bgr565>(src, srcStep, dst, dstStep, roiSize);
}

}
