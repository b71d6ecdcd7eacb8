// Box filter: the mean of a mask, by a multiplication with an approximate reciprocal of its area.
//
// The operations stand here once; each level's file gives the routines that a row goes through.
#pragma once

#include "filter/box_ring.h"
#include "frame/bytes.h"
#include "frame/checks.h"
#include "frame/float_environment.h"
#include "frame/rounding.h"
#include "frame/work_memory.h"

namespace rux::RUX_LEVEL {
namespace {

// A sum s has the mean (s * factor) >> shift.
struct Reciprocal {
    int32_t factor;
    int32_t shift;
};

// For every column that a row of outputs needs, the sum of the mask's height of pixels. Where the area lets a whole
// mask's sum fit, a level may keep words of 16 bits.
struct Columns {
    int32_t* sums;
    size_t count;       // width + maskWidth - 1
    int32_t width;      // outputs in a row
    int32_t maskWidth;
    bool fitWords;
    Reciprocal reciprocal;
};

// 255 * 257 is 65535.
constexpr int64_t largestAreaOfWords = 257;

void clearColumns(const Columns& columns);
void addRow(const Columns& columns, const uint8_t* row);
void exchangeRow(const Columns& columns, const uint8_t* entering, const uint8_t* leaving);
void filterColumns(const Columns& columns, uint8_t* dst);

// A row of means over 3x3 pixels, of which the first stands at src.
void filterThreeRows(const uint8_t* src, ptrdiff_t stride, uint8_t* dst, int32_t width);

// What a call that is not in place ends with.
void fenceStores();

// px and m6 sum rows directly only in place.
constexpr bool hasRowsOf3x3 = thisLevel >= a6::number;

constexpr bool is3x3(ruxiSize maskSize)
{
    return maskSize.width == 3 && maskSize.height == 3;
}

// v * 2^32 with v = 1 / area in single precision, as an integer: rounded down, but what lies right below an integer,
// as it does for some areas above 2^25, becomes that integer. From an area of 4 on it stays below 2^31. Not inlined:
// the caller has set the stack's precision.
[[gnu::noinline]] uint32_t scaledReciprocal(double area)
{
    const double scaled = roundedToSingle(1.0 / area) * 4294967296.0;
    if (thisLevel == px::number) return static_cast<uint32_t>(static_cast<int32_t>(scaled + 0.000009));

    const DoubleRounding rounding(Rounding::nearest);
    return static_cast<uint32_t>(roundDouble(scaled - 0.49999));
}

Reciprocal reciprocalOf(ruxiSize maskSize)
{
    const DoublePrecision precision;
    uint32_t scaled = scaledReciprocal(static_cast<double>(maskSize.width) * static_cast<double>(maskSize.height));
    int32_t places = 0;
    for (; places < 24 && !(scaled >> 31); ++places) scaled <<= 1;

    if (thisLevel == w7::number) return {static_cast<int32_t>(scaled >> 20), places + 12};
    return {static_cast<int32_t>((scaled >> 24) + (scaled >> 23 & 1)), places + 8};   // rounded: 128 to 256
}

inline int64_t countOfSums(ruxiSize roiSize, ruxiSize maskSize)
{
    return static_cast<int64_t>(maskSize.width) + roiSize.width + 2;
}

// The first window's columns; the extended source starts where the first output's mask does.
Columns sumColumns(int32_t* sums, const uint8_t* extended, ptrdiff_t stride, ruxiSize roiSize, ruxiSize maskSize)
{
    const int64_t area = static_cast<int64_t>(maskSize.width) * maskSize.height;
    const Columns columns = {sums, static_cast<size_t>(roiSize.width) + static_cast<size_t>(maskSize.width) - 1,
                             roiSize.width, maskSize.width, area <= largestAreaOfWords, reciprocalOf(maskSize)};
    clearColumns(columns);
    for (int32_t j = 0; j < maskSize.height; ++j) addRow(columns, extended + j * stride);
    return columns;
}

ruxStatus filterBox(const uint8_t* extended, ptrdiff_t srcStride, uint8_t* dst, ptrdiff_t dstStride, ruxiSize roiSize,
                    ruxiSize maskSize)
{
    const WorkMemory<int32_t> sums(countOfSums(roiSize, maskSize));
    if (!sums) return ruxStatusMemoryAllocated;

    const Columns columns = sumColumns(sums, extended, srcStride, roiSize, maskSize);
    for (int32_t y = 0;; ++y) {
        filterColumns(columns, dst + y * dstStride);
        if (y == roiSize.height - 1) return ruxStatusOk;
        const uint8_t* const leaving = extended + y * srcStride;
        exchangeRow(columns, leaving + maskSize.height * srcStride, leaving);
    }
}

void filterBox3x3(const uint8_t* extended, ptrdiff_t srcStride, uint8_t* dst, ptrdiff_t dstStride, ruxiSize roiSize)
{
    for (int32_t y = 0; y < roiSize.height; ++y)
        filterThreeRows(extended + y * srcStride, srcStride, dst + y * dstStride, roiSize.width);
}

ruxStatus filterBoxInPlace(uint8_t* image, ptrdiff_t stride, ruxiSize roiSize, ruxiSize maskSize, ruxiPoint anchor)
{
    const WorkMemory<int32_t> sums(countOfSums(roiSize, maskSize));
    if (!sums) return ruxStatusMemoryAllocated;
    const Ring ring(anchor.y, roiSize.width);
    if (!ring) return ruxStatusMemoryAllocated;

    // In the first two phases one flag decides for all rows: a region of anchor.y + 2 rows keeps its first window.
    const bool slidesAtFirst = anchor.y != roiSize.height - 2;
    const uint8_t* extended = image - anchor.y * stride - anchor.x;
    const Columns columns = sumColumns(sums, extended, stride, roiSize, maskSize);
    runRing(ring.places, image, stride, roiSize, anchor.y,
            [&](uint8_t* to) { filterColumns(columns, to); },
            [&](bool inFirstPhases) {
                if (!inFirstPhases || slidesAtFirst)
                    exchangeRow(columns, extended + maskSize.height * stride, extended);
                extended += stride;
            });
    return ruxStatusOk;
}

ruxStatus filterBox3x3InPlace(uint8_t* image, ptrdiff_t stride, ruxiSize roiSize, ruxiPoint anchor)
{
    Ring ring(anchor.y, roiSize.width);
    if (!ring.places) return ruxStatusMemoryAllocated;
    if (!ring.rows) {
        ring.places.leak();
        return ruxStatusMemoryAllocated;
    }

    const uint8_t* extended = image - anchor.y * stride - anchor.x;
    runRing(ring.places, image, stride, roiSize, anchor.y,
            [&](uint8_t* to) { filterThreeRows(extended, stride, to, roiSize.width); },
            [&](bool) { extended += stride; });
    return ruxStatusOk;
}

// The order of the checks of both operations.
constexpr ruxStatus checkBox(ruxStatus pointersAndSteps, ruxiSize roiSize, ruxiSize maskSize, ruxiPoint anchor)
{
    return firstFailure(pointersAndSteps, sizes(roiSize),
                        require(maskSize.width >= 2 && maskSize.height >= 2, ruxStatusMaskSize),
                        require(anchor.x >= 0 && anchor.y >= 0, ruxStatusAnchor),
                        require(anchor.x < maskSize.width && anchor.y < maskSize.height, ruxStatusAnchor));
}

}

ruxStatus RUXCALL ruxiFilterBox_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       ruxiSize roiSize, ruxiSize maskSize, ruxiPoint anchor)
{
    if (auto failure = checkBox(firstFailure(pointers(src, dst), steps(srcStep, dstStep)), roiSize, maskSize, anchor))
        return failure;

    const ptrdiff_t srcStride = srcStep;
    const uint8_t* const extended = src - anchor.y * srcStride - anchor.x;
    ruxStatus status = ruxStatusOk;
    if (hasRowsOf3x3 && is3x3(maskSize))
        filterBox3x3(extended, srcStride, dst, dstStep, roiSize);
    else
        status = filterBox(extended, srcStride, dst, dstStep, roiSize, maskSize);
    fenceStores();
    return status;
}

ruxStatus RUXCALL ruxiFilterBox_8u_C1IR(uint8_t* srcDst, int32_t srcDstStep, ruxiSize roiSize, ruxiSize maskSize,
                                        ruxiPoint anchor)
{
    if (auto failure = checkBox(firstFailure(pointers(srcDst), steps(srcDstStep)), roiSize, maskSize, anchor))
        return failure;

    if (is3x3(maskSize)) return filterBox3x3InPlace(srcDst, srcDstStep, roiSize, anchor);
    return filterBoxInPlace(srcDst, srcDstStep, roiSize, maskSize, anchor);
}

}
