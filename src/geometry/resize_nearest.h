// Nearest neighbour: a gather through two tables of offsets, the same at all levels.
#pragma once

#include "frame/work_memory.h"
#include "geometry/resize_axis.h"

namespace rux::RUX_LEVEL {
namespace {

inline void gatherRow(const uint8_t* src, const int32_t* offsets, uint8_t* dst, int32_t width)
{
    int32_t x = 0;
    for (; x + 4 <= width; x += 4) {
        const uint8_t a = src[offsets[x]];
        const uint8_t b = src[offsets[x + 1]];
        const uint8_t c = src[offsets[x + 2]];
        const uint8_t d = src[offsets[x + 3]];
        dst[x] = a;
        dst[x + 1] = b;
        dst[x + 2] = c;
        dst[x + 3] = d;
    }
    for (; x < width; ++x) dst[x] = src[offsets[x]];
}

inline void repeatRow(const uint8_t* row, uint8_t* dst, int32_t width)
{
    int32_t x = 0;
    for (; x + 16 <= width; x += 16) {
        const uint64_t low = load<uint64_t>(row + x);
        const uint64_t high = load<uint64_t>(row + x + 8);
        store(dst + x, low);
        store(dst + x + 8, high);
    }
    for (; x < width; ++x) dst[x] = row[x];
}

ruxStatus resizeNearest(const Axis& x, const Axis& y, const uint8_t* origin, int32_t srcStep, uint8_t* dst,
                        int32_t dstStep)
{
    const WorkMemory<int32_t> yOffsets(y.length);
    const WorkMemory<int32_t> xOffsets(x.length);
    if (!yOffsets || !xOffsets) return ruxStatusMemoryAllocated;
    forEachPosition(y, [&](int32_t i, double, int32_t index) { yOffsets[i] = wrappingProduct(index, srcStep); });
    forEachPosition(x, [&](int32_t j, double, int32_t index) { xOffsets[j] = index; });

    const bool rowsStandApart = dstStep >= x.length;
    for (int32_t i = 0; i < y.length; ++i, dst += dstStep) {
        if (rowsStandApart && i > 0 && yOffsets[i] == yOffsets[i - 1])
            repeatRow(dst - dstStep, dst, x.length);
        else
            gatherRow(origin + yOffsets[i], xOffsets, dst, x.length);
    }
    return ruxStatusOk;
}

}
}
