// Reordering of the channels of three-byte pixels.
//
// The operations stand here once; each level's file gives the routines that reorder a row.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

// Which source channel goes to each destination channel.
struct ChannelOrder {
    int32_t of[3];
};

// dst may be src: all of a pixel is read before any of it is written.
void swapRow(const uint8_t* src, uint8_t* dst, size_t pixels, ChannelOrder order);

inline bool isValid(ChannelOrder order)
{
    for (const int32_t channel : order.of)
        if (channel < 0 || channel > 2) return false;
    return true;
}

inline void swapPixel(const uint8_t* src, uint8_t* dst, ChannelOrder order)
{
    const uint8_t first = src[order.of[0]];
    const uint8_t second = src[order.of[1]];
    const uint8_t third = src[order.of[2]];
    dst[0] = first;
    dst[1] = second;
    dst[2] = third;
}

inline void swapPixels(const uint8_t* src, uint8_t* dst, size_t pixels, ChannelOrder order)
{
    for (; pixels > 0; --pixels, src += 3, dst += 3) swapPixel(src, dst, order);
}

ruxStatus swapChannels(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize roiSize,
                       const int32_t* dstOrder)
{
    if (auto failure = firstFailure(pointers(src, dst, dstOrder), sizes(roiSize), steps(srcStep, dstStep)))
        return failure;
    const auto order = load<ChannelOrder>(dstOrder);
    if (auto failure = require(isValid(order), ruxStatusChannelOrder)) return failure;

    size_t pixels = static_cast<size_t>(roiSize.width);
    int32_t rows = roiSize.height;
    if (srcStep == dstStep && dstStep == int64_t{roiSize.width} * 3) {
        pixels *= static_cast<size_t>(rows);
        rows = 1;
    }
    for (; rows > 0; --rows, src += srcStep, dst += dstStep) swapRow(src, dst, pixels, order);
    return ruxStatusOk;
}

}

ruxStatus RUXCALL ruxiSwapChannels_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                          ruxiSize roiSize, const int32_t dstOrder[3])
{
    return swapChannels(src, srcStep, dst, dstStep, roiSize, dstOrder);
}

ruxStatus RUXCALL ruxiSwapChannels_8u_C3IR(uint8_t* srcDst, int32_t srcDstStep, ruxiSize roiSize,
                                           const int32_t dstOrder[3])
{
    return swapChannels(srcDst, srcDstStep, srcDst, srcDstStep, roiSize, dstOrder);
}

}
