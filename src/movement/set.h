// Fills of rectangular regions.
//
// The operations stand here once; each level's file gives the routine that fills a run.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"
#include "frame/float_environment.h"

namespace rux::RUX_LEVEL {
namespace {

// A run of elements. The streaming flag is for levels that have such stores.
template <typename Element>
void fillRun(uint8_t* dst, Element value, size_t bytes, bool streaming);

constexpr bool mergesRows = thisLevel != px::number;

// Above this many bytes a fill goes past the caches; the 16-bit threshold differs from the others on purpose.
template <typename Element>
constexpr int32_t streamingThreshold = sizeof(Element) == 2 ? 180000 : 0x40000;

template <typename Element>
ruxStatus fillImage(Element value, void* dst, int32_t dstStep, ruxiSize roiSize)
{
    if (auto failure = firstFailure(pointers(dst), sizes(roiSize), steps(dstStep))) return failure;

    const int32_t rowBytes = wrappingProduct(roiSize.width, sizeof(Element));
    const bool streaming = wrappingProduct(rowBytes, roiSize.height) > streamingThreshold<Element>;
    const size_t runBytes = static_cast<size_t>(roiSize.width) * sizeof(Element);
    uint8_t* to = bytesOf(dst);

    // Only bytes merge: a run of wider elements is always one row.
    if (mergesRows && sizeof(Element) == 1 && dstStep == roiSize.width) {
        fillRun(to, value, runBytes * static_cast<size_t>(roiSize.height), streaming);
        return ruxStatusOk;
    }
    for (int32_t y = 0; y < roiSize.height; ++y, to += dstStep) fillRun(to, value, runBytes, streaming);
    return ruxStatusOk;
}

}

ruxStatus RUXCALL ruxiSet_8u_C1R(uint8_t value, uint8_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    return fillImage(value, dst, dstStep, roiSize);
}

ruxStatus RUXCALL ruxiSet_16s_C1R(int16_t value, int16_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    return fillImage(static_cast<uint16_t>(value), dst, dstStep, roiSize);
}

// The value travels as its bits: a signalling NaN stays one.
ruxStatus RUXCALL ruxiSet_32f_C1R(float value, float* dst, int32_t dstStep, ruxiSize roiSize)
{
    return fillImage(bitsOf(value), dst, dstStep, roiSize);
}

// A plain byte loop at every level: the bytes between may belong to someone else, or not exist.
ruxStatus RUXCALL ruxiSet_8u_C4CR(uint8_t value, uint8_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    if (auto failure = firstFailure(pointers(dst), sizes(roiSize), steps(dstStep))) return failure;

    for (int32_t y = 0; y < roiSize.height; ++y, dst += dstStep) {
        uint8_t* to = dst;
        for (int32_t x = 0; x < roiSize.width; ++x, to += 4) *to = value;
    }
    return ruxStatusOk;
}

}
