// The ring in which the rows of a filter in place wait until no later window reads the rows where they land.
#pragma once

#include "frame/bytes.h"
#include "frame/work_memory.h"

namespace rux::RUX_LEVEL {
namespace {

inline void copyRow(const uint8_t* src, uint8_t* dst, size_t bytes)
{
    size_t x = 0;
    for (; bytes - x >= sizeof(uint64_t); x += sizeof(uint64_t)) store(dst + x, load<uint64_t>(src + x));
    for (; x < bytes; ++x) dst[x] = src[x];
}

// Runs the rows of a call: filterRow(to) filters the next row into a row of the ring; then, where another is to come,
// advance(inFirstPhases) moves on to it, before a row of the image is overwritten.
//
// The second phase, rows anchorY to 2 * anchorY, runs in full however low the region is: rows below a low region are
// read, and written down to row anchorY.
template <typename FilterRow, typename Advance>
void runRing(uint8_t* const* ring, uint8_t* image, ptrdiff_t stride, ruxiSize roiSize, int32_t anchorY,
             FilterRow filterRow, Advance advance)
{
    const int64_t delay = anchorY;
    const int64_t ringRows = delay + 1;
    const int64_t secondPhaseEnd = 2 * delay + 1;
    const int64_t filtered = roiSize.height > secondPhaseEnd ? roiSize.height : secondPhaseEnd;
    const int64_t end = filtered > delay + roiSize.height ? filtered : delay + roiSize.height;
    int64_t slot = 0;   // y modulo ringRows
    for (int64_t y = 0; y < end; ++y) {
        if (y < filtered) filterRow(ring[slot]);
        if (y < filtered - 1) advance(y < secondPhaseEnd);
        slot = slot + 1 < ringRows ? slot + 1 : 0;
        if (y < delay) continue;
        copyRow(ring[slot], image, static_cast<size_t>(roiSize.width));
        image += stride;
    }
}

// The ring's rows and the table of their places.
struct Ring {
    Ring(int32_t anchorY, int32_t width)
        : places(static_cast<int64_t>(anchorY) + 1), rows(places ? (static_cast<int64_t>(anchorY) + 1) * width : 0)
    {
        if (!rows) return;
        for (int64_t i = 0; i <= anchorY; ++i) places[i] = rows + i * width;
    }
    explicit operator bool() const { return static_cast<bool>(rows); }

    WorkMemory<uint8_t*> places;
    WorkMemory<uint8_t> rows;
};

}
}
