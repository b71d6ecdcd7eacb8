// Cubic interpolation: the polynomial through four neighbours on each axis, in forward differences.
//
// For neighbours a, b, c, d at -1, 0, 1, 2 and a place t:
//   e1 = b - a, e2 = (c - b) - e1, e3 = d - 3c + 3b - a, u = 1 + t, h = u * t / 2, q = (t - 1) * h / 3
//   value = a + e1 * u + e2 * h + e3 * q
// Source rows are scaled along x into rows of floats, unclamped; four of those are combined. The level gives the two
// row routines and with them precision and order of the steps.
#pragma once

#include "frame/work_memory.h"
#include "geometry/resize_axis.h"

namespace rux::RUX_LEVEL {
namespace {

// Two roundings of one third; each has its place.
constexpr float cubicThirdAbove = 0x1.555556p-2f;
constexpr float cubicThirdBelow = 0x1.555554p-2f;

using CubicRows = const float* const[4];

// offsets name the second of the four pixels. Offsets and fractions go on past the width, and so does the row's room.
void scaleRowCubic(const uint8_t* src, const int32_t* offsets, const float* fractions, float* row, int32_t width);

void combineRowsCubic(CubicRows& rows, float fraction, uint8_t* dst, int32_t width);

// Calls place(entry, index, t). Where four pixels would leave the image they move inward, and t moves against them, so
// that the polynomial extrapolates from real pixels; the rectangle's edge is no limit.
template <typename Place>
inline void placeCubic(const Axis& axis, Place place)
{
    forEachPosition(axis, [&](int32_t entry, double position, int32_t index) {
        const int32_t absolute = index + axis.imageStart;
        if (absolute == axis.imageLength - 1) {
            place(entry, index - 2, 2.0f);
            return;
        }
        if (absolute == 0)
            ++index;
        else if (absolute == axis.imageLength - 2)
            --index;
        place(entry, index, static_cast<float>(position - index));
    });
}

// Four row buffers in the order of the source rows that they hold; rotating them moves names, not pixels.
class CubicRing {
public:
    CubicRing(float* a, float* b, float* c, float* d) : rows{a, b, c, d} {}
    CubicRows& inOrder() const { return rows; }
    float* operator[](int place) const { return rows[place]; }

    // The first count rows: each takes the place before it, the first the last of them.
    void rotate(int count)
    {
        float* const first = rows[0];
        for (int place = 1; place < count; ++place) rows[place - 1] = rows[place];
        rows[count - 1] = first;
    }

private:
    float* rows[4];
};

ruxStatus resizeCubic(const Axis& x, const Axis& y, const uint8_t* origin, int32_t srcStep, uint8_t* dst,
                      int32_t dstStep)
{
    const int64_t columns = int64_t{x.length} + spareColumns;
    WorkMemory<int32_t> yOffsets(y.length);
    WorkMemory<int32_t> xOffsets(columns);
    WorkMemory<float> yFractions(y.length);
    WorkMemory<float> xFractions(columns);
    if (!yOffsets || !xOffsets || !yFractions || !xFractions) return ruxStatusMemoryAllocated;

    placeCubic(y, [&](int32_t i, int32_t index, float t) {
        yOffsets[i] = wrappingProduct(index, srcStep);
        yFractions[i] = t;
    });
    placeCubic(x, [&](int32_t j, int32_t index, float t) {
        xOffsets[j] = index;
        xFractions[j] = t;
    });
    repeatLast<int32_t>(xOffsets, x.length);
    repeatLast<float>(xFractions, x.length);

    const WorkMemory<float> firstRow(columns);
    const WorkMemory<float> secondRow(firstRow ? columns : 0);
    const WorkMemory<float> thirdRow(secondRow ? columns : 0);
    const WorkMemory<float> fourthRow(thirdRow ? columns : 0);
    if (!fourthRow) {
        yOffsets.leak(), xOffsets.leak(), yFractions.leak(), xFractions.leak();   // so the contract has it
        return ruxStatusMemoryAllocated;
    }
    const auto scaleRow = [&](int64_t offset, float* row) {
        scaleRowCubic(origin + offset, xOffsets, xFractions, row, x.length);
    };

    // Each source row is scaled once: a step of one row costs one pass, a step of four or more costs four.
    const int64_t step = srcStep;
    CubicRing ring(firstRow, secondRow, thirdRow, fourthRow);
    scaleRow(yOffsets[0] - step, ring[1]);
    scaleRow(yOffsets[0], ring[2]);
    scaleRow(yOffsets[0] + step, ring[3]);
    int64_t previous = int64_t{yOffsets[0]} - 1;
    for (int32_t i = 0; i < y.length; ++i, dst += dstStep) {
        const int64_t offset = yOffsets[i];
        if (offset > previous) {
            ring.rotate(4);
            scaleRow(offset + 2 * step, ring[3]);
            if (offset >= previous + 2 * step) {
                ring.rotate(3);
                scaleRow(offset + step, ring[2]);
            }
            if (offset >= previous + 3 * step) {
                ring.rotate(2);
                scaleRow(offset, ring[1]);
            }
            if (offset >= previous + 4 * step) scaleRow(offset - step, ring[0]);
            previous = offset;
        }
        combineRowsCubic(ring.inOrder(), yFractions[i], dst, x.length);
    }
    return ruxStatusOk;
}

}
}
