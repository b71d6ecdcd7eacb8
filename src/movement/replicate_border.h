// Copies into a larger image whose margins repeat the edge of the source.
//
// The operations stand here once; each level's file gives the routines that copy and fill a run.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Element>
void copyElements(const uint8_t* src, uint8_t* dst, size_t bytes);

template <typename Element>
void repeatElement(uint8_t* dst, Element value, size_t bytes);

// The last test also refuses borders whose sum with the source would leave 32 bits.
inline bool fits(int32_t source, int32_t border, int32_t destination)
{
    return border >= 0 && destination - border >= source;
}

template <typename Element>
ruxStatus replicateBorder(const void* src, int32_t srcStep, ruxiSize srcRoiSize, void* dst, int32_t dstStep,
                          ruxiSize dstRoiSize, int32_t topBorderHeight, int32_t leftBorderWidth)
{
    if (auto failure = firstFailure(
            pointers(src, dst), steps(srcStep, dstStep), sizes(srcRoiSize, dstRoiSize),
            require(fits(srcRoiSize.width, leftBorderWidth, dstRoiSize.width), ruxStatusSizeError),
            require(fits(srcRoiSize.height, topBorderHeight, dstRoiSize.height), ruxStatusSizeError)))
        return failure;

    const size_t middle = static_cast<size_t>(srcRoiSize.width) * sizeof(Element);
    const size_t left = static_cast<size_t>(leftBorderWidth) * sizeof(Element);
    const size_t row = static_cast<size_t>(dstRoiSize.width) * sizeof(Element);
    const size_t right = row - middle - left;
    const ptrdiff_t step = dstStep;
    const uint8_t* from = bytesOf(src);
    uint8_t* const first = bytesOf(dst) + topBorderHeight * step;

    uint8_t* to = first;
    for (int32_t y = 0; y < srcRoiSize.height; ++y, from += srcStep, to += step) {
        const Element leftmost = load<Element>(from);
        const Element rightmost = load<Element>(from + middle - sizeof(Element));
        repeatElement(to, leftmost, left);
        copyElements<Element>(from, to + left, middle);
        repeatElement(to + left + middle, rightmost, right);
    }
    for (int32_t y = topBorderHeight + srcRoiSize.height; y < dstRoiSize.height; ++y, to += step)
        copyElements<Element>(to - step, to, row);
    to = bytesOf(dst);
    for (int32_t y = 0; y < topBorderHeight; ++y, to += step) copyElements<Element>(first, to, row);
    return ruxStatusOk;
}

}

ruxStatus RUXCALL ruxiCopyReplicateBorder_8u_C1R(const uint8_t* src, int32_t srcStep, ruxiSize srcRoiSize,
                                                 uint8_t* dst, int32_t dstStep, ruxiSize dstRoiSize,
                                                 int32_t topBorderHeight, int32_t leftBorderWidth)
{
    return replicateBorder<uint8_t>(src, srcStep, srcRoiSize, dst, dstStep, dstRoiSize, topBorderHeight,
                                    leftBorderWidth);
}

ruxStatus RUXCALL ruxiCopyReplicateBorder_32s_C1R(const int32_t* src, int32_t srcStep, ruxiSize srcRoiSize,
                                                  int32_t* dst, int32_t dstStep, ruxiSize dstRoiSize,
                                                  int32_t topBorderHeight, int32_t leftBorderWidth)
{
    return replicateBorder<uint32_t>(src, srcStep, srcRoiSize, dst, dstStep, dstRoiSize, topBorderHeight,
                                     leftBorderWidth);
}

}
