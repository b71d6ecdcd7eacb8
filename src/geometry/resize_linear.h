// Linear interpolation: two taps on each axis, in units of 1/16384.
//
// Source rows are scaled along x into rows of 16 bits, in units of 1/64 of a grey level; two of those are blended. The
// level gives the two row routines and with them the rounding: px rounds, the others truncate.
#pragma once

#include "frame/work_memory.h"
#include "geometry/resize_axis.h"

namespace rux::RUX_LEVEL {
namespace {

constexpr int32_t linearOne = 16384;

// row[j] = (weights[2j] * p0 + weights[2j + 1] * p1 + bias) >> 8, p0 and p1 the bytes at offsets[j]: 16320 at most.
void scaleRowLinear(const uint8_t* src, const int32_t* offsets, const uint16_t* weights, uint16_t* row, int32_t width);

// dst[j] = (lower[j] * weight + upper[j] * (16384 - weight) + bias) >> 20: 255 at most.
void blendRowsLinear(const uint16_t* upper, const uint16_t* lower, uint16_t weight, uint8_t* dst, int32_t width);

// Calls place(entry, index, weight of the second tap). The image's last pixel is the second tap of the pair before it,
// with all the weight, so that nothing past the image is read; the rectangle's edge is no limit.
template <typename Place>
inline void placeLinear(const Axis& axis, Place place)
{
    const int32_t last = axis.imageLength - 1 - axis.imageStart;
    forEachPosition(axis, [&](int32_t entry, double position, int32_t index) {
        if (index == last)
            place(entry, index - 1, linearOne);
        else
            place(entry, index, truncated(resizeEpsilon + (position - index) * 16384.0));
    });
}

ruxStatus resizeLinear(const Axis& x, const Axis& y, const uint8_t* origin, int32_t srcStep, uint8_t* dst,
                       int32_t dstStep)
{
    WorkMemory<int32_t> yOffsets(y.length);
    WorkMemory<int32_t> xOffsets(x.length);
    WorkMemory<uint16_t> yFractions(y.length);
    WorkMemory<uint16_t> xFractions(int64_t{2} * x.length);
    if (!yOffsets || !xOffsets || !yFractions || !xFractions) return ruxStatusMemoryAllocated;

    placeLinear(y, [&](int32_t i, int32_t index, int32_t weight) {
        yOffsets[i] = wrappingProduct(index, srcStep);
        yFractions[i] = static_cast<uint16_t>(weight);
    });
    placeLinear(x, [&](int32_t j, int32_t index, int32_t weight) {
        xOffsets[j] = index;
        xFractions[2 * j] = static_cast<uint16_t>(linearOne - weight);
        xFractions[2 * j + 1] = static_cast<uint16_t>(weight);
    });

    const WorkMemory<uint16_t> firstRow(int64_t{x.length} + spareColumns);
    const WorkMemory<uint16_t> secondRow(firstRow ? int64_t{x.length} + spareColumns : 0);
    if (!firstRow || !secondRow) {
        yOffsets.leak(), xOffsets.leak(), yFractions.leak(), xFractions.leak();   // so the contract has it
        return ruxStatusMemoryAllocated;
    }
    const auto scaleRow = [&](int64_t offset, uint16_t* row) {
        scaleRowLinear(origin + offset, xOffsets, xFractions, row, x.length);
    };

    // Each source row is scaled once for all the destination rows between it and the next. The row above the rectangle,
    // an offset of -srcStep, is never read: it stands only for the row before the one that is scaled here.
    uint16_t* lower = firstRow;
    uint16_t* upper = secondRow;
    scaleRow(0, lower);
    int64_t previous = int64_t{yOffsets[0]} - 1;
    for (int32_t i = 0; i < y.length; ++i, dst += dstStep) {
        const int64_t offset = yOffsets[i];
        if (offset > previous) {
            uint16_t* const row = upper;
            upper = lower;
            lower = row;
            scaleRow(offset + srcStep, lower);
            if (offset > previous + srcStep) scaleRow(offset, upper);
            previous = offset;
        }
        blendRowsLinear(upper, lower, yFractions[i], dst, x.length);
    }
    return ruxStatusOk;
}

}
}
