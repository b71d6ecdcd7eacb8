// Conversion between 8-bit and float images.
//
// The operations stand here once; each level's file gives the routines that convert.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"
#include "frame/rounding.h"

namespace rux::RUX_LEVEL {
namespace {

// A run of elements. The streaming flag is for the level that decides by size.
void floatsFromBytes(const uint8_t* src, uint8_t* dst, size_t elements, bool streaming);

// The rows of a conversion to bytes; a contiguous image is one row.
struct Rows {
    const uint8_t* src;
    int32_t srcStep;
    uint8_t* dst;
    int32_t dstStep;
    size_t elements;
    int32_t count;
};

template <typename ConvertRow>
inline void forEachRow(Rows rows, ConvertRow convertRow)
{
    for (; rows.count > 0; --rows.count, rows.src += rows.srcStep, rows.dst += rows.dstStep)
        convertRow(rows.src, rows.dst, rows.elements);
}

// All rows under the level's control of rounding: x at or above 255 becomes 255, x at or below 0 becomes 0, any other
// is rounded.
void bytesFromFloats(Rounding rounding, const Rows& rows);

// Whether rows of bytes, and those of as many floats, follow each other without a gap.
inline bool isContiguous(int32_t byteStep, int32_t floatStep, int32_t width)
{
    return byteStep == width && floatStep == int64_t{byteStep} * 4;
}

}

ruxStatus RUXCALL ruxiConvert_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                        ruxiSize roiSize)
{
    if (auto failure = firstFailure(pointers(src, dst), sizes(roiSize), steps(srcStep, dstStep))) return failure;

    uint8_t* to = bytesOf(dst);
    const size_t width = static_cast<size_t>(roiSize.width);
    const size_t elements = width * static_cast<size_t>(roiSize.height);
    if (isContiguous(srcStep, dstStep, roiSize.width)) {
        floatsFromBytes(src, to, elements, elements > 52428);
        return ruxStatusOk;
    }
    const bool streaming = elements > 104858 && width > 256;
    for (int32_t y = 0; y < roiSize.height; ++y, src += srcStep, to += dstStep)
        floatsFromBytes(src, to, width, streaming);
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiConvert_32f8u_C1R(const float* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        ruxiSize roiSize, int32_t roundMode)
{
    if (auto failure = firstFailure(pointers(src, dst), sizes(roiSize), steps(srcStep, dstStep))) return failure;

    Rows rows = {bytesOf(src), srcStep, dst, dstStep, static_cast<size_t>(roiSize.width), roiSize.height};
    if (isContiguous(dstStep, srcStep, roiSize.width)) {
        rows.elements *= static_cast<size_t>(rows.count);
        rows.count = 1;
    }
    bytesFromFloats(roundMode == 1 ? Rounding::nearest : Rounding::towardZero, rows);
    return ruxStatusOk;
}

}
