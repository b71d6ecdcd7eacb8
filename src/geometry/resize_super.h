// Supersampling: each destination pixel is the mean over the box of source pixels that it covers.
//
// The rows of a box are summed into one row of sums, the first and the last row by the part of them that lies in the
// box; the sums are compacted along the row in the same way, and scaled. Where both scales are whole the sums are
// integers and exact; otherwise they are floats, and precision and order of the additions are the level's.
#pragma once

#include "frame/work_memory.h"
#include "geometry/resize_axis.h"

namespace rux::RUX_LEVEL {
namespace {

struct ReducedAxis {
    int32_t sourceLength;   // of the rectangle, within the image
    int32_t length;         // destination pixels
    double scale;           // source pixels per destination pixel
    int32_t whole;          // the scale's whole part
    bool hasFraction;
};

struct Reduction {
    ReducedAxis x;
    ReducedAxis y;
    double norm;
};

// Source pixels of a row that make one destination pixel: one with weight head unless that is 0, then `count` whole
// ones, then one with weight tail unless that is 0.
struct Box {
    int32_t first;
    int32_t count;
    double head;
    double tail;
};

// What counts as no part of a pixel.
constexpr double negligiblePart = 1e-07;

// Zeros behind the sums of a row: a box may reach past what was summed.
constexpr int32_t spareSums = 24;

// A destination row where both scales are whole, so that its boxes stand `x.whole` apart in integer sums.
void reduceWholeRow(const Reduction& reduction, uint32_t* sums, int32_t columns, const uint8_t* src, int32_t srcStep,
                    uint8_t* dst);

// Adds `rows` rows of bytes onto float sums.
void addRows(float* sums, const uint8_t* src, int32_t srcStep, int32_t rows, int32_t columns);

// Adds a row of bytes, each multiplied by weight.
void addWeightedRow(float* sums, const uint8_t* src, double weight, int32_t columns);

// In place: sums[j] becomes the sum of box j.
void compactBoxes(float* sums, const Box* boxes, int32_t count);

// dst[j] = trunc(sums[j] * norm + 0.5), its low 8 bits.
void writeMeans(const float* sums, double norm, uint8_t* dst, int32_t width);

inline int32_t floored(double value)
{
    const int32_t whole = truncated(value);
    return value < whole ? whole - 1 : whole;
}

inline ReducedAxis layReducedAxis(int32_t sourceLength, double factor, int32_t regionLength)
{
    const double scale = 1.0 / factor;
    return {sourceLength, producedLength(sourceLength, factor, regionLength), scale, floored(scale),
            scale - truncated(scale) != 0.0};
}

// How many columns the sums of a row take; none for scales beyond 32 bits.
inline int32_t summedColumns(const ReducedAxis& x)
{
    const uint32_t wanted = static_cast<uint32_t>(truncated(x.scale * (x.length + 1.0))) + 1;
    const int32_t columns = static_cast<int32_t>(wanted);
    return columns > x.sourceLength ? x.sourceLength : columns < 0 ? 0 : columns;
}

// A run of pixels that goes far past the summed columns, cut to where zeros are at hand. It loses eights of them, so
// that a body which adds eights and then single ones cuts the rest as before.
inline int32_t withinSums(int32_t count, int32_t available)
{
    if (count < 0) return 0;
    const int32_t kept = available + 11;
    return count <= kept + 7 ? count : kept + ((count - kept) & 7);
}

// The boxes of a row, no more than the pixels that it makes. Returns how many.
inline int32_t listBoxes(const ReducedAxis& x, int32_t columns, Box* boxes)
{
    int32_t made = 0;
    if (!x.hasFraction) {
        for (int64_t first = 0; first < columns && made < x.length; first += x.whole) {
            const int32_t at = static_cast<int32_t>(first);
            boxes[made++] = {at, withinSums(x.whole, columns - at), 0.0, 0.0};
        }
        return made;
    }
    double carry = x.scale - x.whole;
    boxes[made++] = {0, withinSums(x.whole, columns), 0.0, carry};
    const int64_t limit = int64_t{columns} - x.whole;
    for (int64_t position = x.whole; position < limit && made < x.length;) {
        const double top = 1.0 - carry;
        const double remaining = x.scale - top;
        const int32_t whole = floored(negligiblePart + remaining);
        carry = remaining - whole;

        // A first pixel that is too small to count is made up for by one more whole pixel.
        const bool hasHead = top > negligiblePart;
        const int32_t count = hasHead ? whole : whole + 1;
        const int32_t at = static_cast<int32_t>(position);
        boxes[made++] = {at, withinSums(count, columns - at - hasHead), hasHead ? top : 0.0,
                         carry > negligiblePart ? carry : 0.0};
        position += hasHead + (count > 0 ? count : 0);
    }
    return made;
}

template <typename Sum>
inline void clearSums(Sum* sums, int32_t columns)
{
    for (int32_t j = 0; j < columns + spareSums; ++j) sums[j] = 0;
}

ruxStatus superSampleWhole(const Reduction& reduction, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                           int32_t dstStep)
{
    const int32_t columns = summedColumns(reduction.x);
    const WorkMemory<uint32_t> sums(int64_t{columns} + spareSums);
    if (!sums) return ruxStatusMemoryAllocated;

    for (int32_t i = 0; i < reduction.y.length; ++i, dst += dstStep) {
        reduceWholeRow(reduction, sums, columns, src, srcStep, dst);
        src += static_cast<ptrdiff_t>(reduction.y.whole) * srcStep;
    }
    return ruxStatusOk;
}

ruxStatus superSampleFractional(const Reduction& reduction, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                int32_t dstStep)
{
    // One block: the boxes of a row, found once for all rows, and the sums, on a 32-byte boundary.
    const ReducedAxis& y = reduction.y;
    const int32_t columns = summedColumns(reduction.x);
    const int64_t sumBytes = (int64_t{columns} + spareSums + 7) / 8 * 32;
    const WorkMemory<uint8_t> work(sumBytes + int64_t{reduction.x.length} * int64_t{sizeof(Box)});
    if (!work) return ruxStatusMemoryAllocated;
    float* const sums = reinterpret_cast<float*>(static_cast<uint8_t*>(work));
    Box* const boxes = reinterpret_cast<Box*>(work + sumBytes);
    const int32_t boxCount = listBoxes(reduction.x, columns, boxes);

    const auto addWholeRows = [&](int32_t rows) {
        if (rows < 1) return;
        addRows(sums, src, srcStep, rows, columns);
        src += static_cast<ptrdiff_t>(rows) * srcStep;
    };
    double carry = y.scale - y.whole;
    for (int32_t i = 0; i < y.length; ++i, dst += dstStep) {
        clearSums(sums, columns);
        if (i == 0 || !y.hasFraction) {
            addWholeRows(y.whole);
            if (carry != 0.0) addWeightedRow(sums, src, carry, columns);
        } else {
            const double top = 1.0 - carry;
            const double remaining = y.scale - top;
            const int32_t whole = floored(negligiblePart + remaining);
            carry = remaining - whole;
            if (top > negligiblePart) {
                addWeightedRow(sums, src, top, columns);
                src += srcStep;
            }
            addWholeRows(whole);
            if (carry > negligiblePart) addWeightedRow(sums, src, carry, columns);
        }
        compactBoxes(sums, boxes, boxCount);
        writeMeans(sums, reduction.norm, dst, reduction.x.length);
    }
    return ruxStatusOk;
}

inline ruxStatus superSample(const Reduction& reduction, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                             int32_t dstStep)
{
    if (reduction.x.hasFraction || reduction.y.hasFraction)
        return superSampleFractional(reduction, src, srcStep, dst, dstStep);
    return superSampleWhole(reduction, src, srcStep, dst, dstStep);
}

}
}
