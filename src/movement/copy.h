// Copies of rectangular regions.
//
// The operations stand here once; each level's file gives the routines that move a row.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

// A row of elements, or a whole contiguous image. The streaming flag is for levels that have such stores.
template <typename Element>
void copyRun(const uint8_t* src, uint8_t* dst, size_t bytes, bool streaming);

// A row in which only the bytes with a mask byte other than 0 are copied.
void copyMaskedRun(const uint8_t* src, uint8_t* dst, const uint8_t* mask, size_t count);

constexpr bool mergesRows = thisLevel != px::number;
constexpr int32_t streamingThreshold = 0x20000;

template <typename Element, int32_t channels>
ruxStatus copyImage(const void* src, int32_t srcStep, void* dst, int32_t dstStep, ruxiSize roiSize)
{
    if (auto failure = firstFailure(pointers(src, dst), sizes(roiSize), steps(srcStep, dstStep))) return failure;

    const int32_t rowBytes = wrappingProduct(roiSize.width, channels * static_cast<int32_t>(sizeof(Element)));
    const bool streaming = wrappingProduct(rowBytes, roiSize.height) > streamingThreshold;
    const size_t runBytes = static_cast<size_t>(roiSize.width) * channels * sizeof(Element);
    const uint8_t* from = bytesOf(src);
    uint8_t* to = bytesOf(dst);

    if (mergesRows && srcStep == dstStep && dstStep == rowBytes) {
        copyRun<Element>(from, to, runBytes * static_cast<size_t>(roiSize.height), streaming);
        return ruxStatusOk;
    }
    for (int32_t y = 0; y < roiSize.height; ++y, from += srcStep, to += dstStep)
        copyRun<Element>(from, to, runBytes, streaming);
    return ruxStatusOk;
}

inline void copyMaskedBytes(const uint8_t* src, uint8_t* dst, const uint8_t* mask, size_t count)
{
    for (size_t x = 0; x < count; ++x)
        if (mask[x]) dst[x] = src[x];
}

}

ruxStatus RUXCALL ruxiCopy_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    return copyImage<uint8_t, 1>(src, srcStep, dst, dstStep, roiSize);
}

ruxStatus RUXCALL ruxiCopy_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    return copyImage<uint8_t, 3>(src, srcStep, dst, dstStep, roiSize);
}

ruxStatus RUXCALL ruxiCopy_8u_C4R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    return copyImage<uint8_t, 4>(src, srcStep, dst, dstStep, roiSize);
}

ruxStatus RUXCALL ruxiCopy_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    return copyImage<uint16_t, 1>(src, srcStep, dst, dstStep, roiSize);
}

// Floats travel as their bits: a signalling NaN stays one.
ruxStatus RUXCALL ruxiCopy_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, ruxiSize roiSize)
{
    return copyImage<uint32_t, 1>(src, srcStep, dst, dstStep, roiSize);
}

ruxStatus RUXCALL ruxiCopy_8u_C1MR(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                   ruxiSize roiSize, const uint8_t* mask, int32_t maskStep)
{
    if (auto failure =
            firstFailure(pointers(src, dst, mask), sizes(roiSize), steps(srcStep, dstStep, maskStep)))
        return failure;

    for (int32_t y = 0; y < roiSize.height; ++y, src += srcStep, dst += dstStep, mask += maskStep)
        copyMaskedRun(src, dst, mask, static_cast<size_t>(roiSize.width));
    return ruxStatusOk;
}

// A plain byte loop at every level: the fourth byte of a pixel may belong to someone else, or not exist.
ruxStatus RUXCALL ruxiCopy_8u_C3AC4R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                     ruxiSize roiSize)
{
    if (auto failure = firstFailure(pointers(src, dst), sizes(roiSize), steps(srcStep, dstStep))) return failure;

    for (int32_t y = 0; y < roiSize.height; ++y, src += srcStep, dst += dstStep) {
        const uint8_t* from = src;
        uint8_t* to = dst;
        for (int32_t x = 0; x < roiSize.width; ++x, from += 3, to += 4) {
            to[0] = from[0];
            to[1] = from[1];
            to[2] = from[2];
        }
    }
    return ruxStatusOk;
}

}
