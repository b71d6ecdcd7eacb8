// The maximum filter in lanes: how the ring's rows come together.
#pragma once

#include "filter/maximum_rows.h"

namespace rux::RUX_LEVEL {
namespace {

// The work area: a ring of a row more than the mask is high, and two rows for wide masks.
class MaximumWork {
public:
    MaximumWork(size_t width, size_t maskWidth, int32_t maskHeight)
        : ringStride(roundedUpTo32(static_cast<int64_t>(width))),
          ringBytes(ringStride * (static_cast<int64_t>(maskHeight) + 1)),
          bytes(ringBytes + 2 * (static_cast<int64_t>(width) + static_cast<int64_t>(maskWidth)))
    {
    }
    explicit operator bool() const { return static_cast<bool>(bytes); }
    uint8_t* row(int32_t index) const { return bytes + static_cast<ptrdiff_t>(index * ringStride); }
    uint8_t* scratch() const { return bytes + static_cast<ptrdiff_t>(ringBytes); }

private:
    int64_t ringStride;
    int64_t ringBytes;
    WorkMemory<uint8_t> bytes;
};

// The horizontal maxima of one source row after another.
class SlidRows {
public:
    SlidRows(const MaximumImages& images, size_t maskWidth, const MaximumWork& work)
        : src(images.src), stride(images.srcStride), width(images.width), maskWidth(maskWidth),
          scratch(work.scratch())
    {
    }
    void next(uint8_t* to)
    {
        slideMaximum(src, to, width, maskWidth, scratch);
        src += stride;
    }

private:
    const uint8_t* src;
    ptrdiff_t stride;
    size_t width;
    size_t maskWidth;
    uint8_t* scratch;
};

// Up to this height two rows of outputs at a time, which share all rows but one each, cost less.
constexpr int32_t highestInPairs = 9;

// The rows that two rows of outputs share, held so that the compiler sees that no store changes their places.
template <int count>
struct SharedRows {
    explicit SharedRows(const uint8_t* const* from)
    {
        for (int i = 0; i < count; ++i) rows[i] = from[i];
    }

    // Written out by the compiler, from one row on.
    template <typename Each, int row = 0>
    Each maximumAt(size_t x) const
    {
        const Each value = Each::load(rows[row] + x);
        if constexpr (row + 1 < count)
            return larger8(maximumAt<Each, row + 1>(x), value);
        else
            return value;
    }

    const uint8_t* rows[count];
};

// Two rows of outputs from the rows that they share, one before and one behind these.
template <int count>
inline void combinePair(const uint8_t* const* rows, const uint8_t* before, const uint8_t* behind, uint8_t* first,
                        uint8_t* second, size_t width)
{
    const SharedRows<count> shared(rows);
    overLanes(width, [=](auto lane, size_t x) {
        using Each = decltype(lane);
        const Each maximum = shared.template maximumAt<Each>(x);
        larger8(maximum, Each::load(before + x)).store(first + x);
        larger8(maximum, Each::load(behind + x)).store(second + x);
    });
}

inline void combinePair(const uint8_t* const* rows, int32_t shared, const uint8_t* before, const uint8_t* behind,
                        uint8_t* first, uint8_t* second, size_t width)
{
    switch (shared) {
    case 1: return combinePair<1>(rows, before, behind, first, second, width);
    case 2: return combinePair<2>(rows, before, behind, first, second, width);
    case 3: return combinePair<3>(rows, before, behind, first, second, width);
    case 4: return combinePair<4>(rows, before, behind, first, second, width);
    case 5: return combinePair<5>(rows, before, behind, first, second, width);
    case 6: return combinePair<6>(rows, before, behind, first, second, width);
    case 7: return combinePair<7>(rows, before, behind, first, second, width);
    default: return combinePair<8>(rows, before, behind, first, second, width);
    }
}

inline void filterInPairs(const MaximumImages& images, SlidRows& slid, int32_t maskHeight, const MaximumWork& work)
{
    const int32_t ringRows = maskHeight + 1;
    for (int32_t i = 0; i < maskHeight - 1; ++i) slid.next(work.row(i));

    uint8_t* dst = images.dst;
    int32_t oldest = 0;
    for (int32_t y = 0; y < images.height; y += 2, dst += 2 * images.dstStride) {
        uint8_t* rows[highestInPairs + 1];
        for (int32_t i = 0; i < ringRows; ++i) rows[i] = work.row((oldest + i) % ringRows);
        oldest = (oldest + 2) % ringRows;

        slid.next(rows[maskHeight - 1]);
        if (y + 1 < images.height) {
            slid.next(rows[maskHeight]);
            combinePair(rows + 1, maskHeight - 1, rows[0], rows[maskHeight], dst, dst + images.dstStride,
                        images.width);
        } else {
            combinePair(rows + 1, maskHeight - 1, rows[0], rows[0], dst, dst, images.width);
        }
    }
}

// Rows in blocks of the mask's height. A window that starts in a block's row i holds the rest of that block, whose
// maxima have been gathered from its end on, and i rows of the next one, whose maxima gather as they come: three maxima
// a pixel, however high the mask is. The rows of the next block take the places that are used up.
inline void filterInBlocks(const MaximumImages& images, SlidRows& slid, int32_t maskHeight, const MaximumWork& work)
{
    const size_t width = images.width;
    uint8_t* const gathered = work.row(maskHeight);
    for (int32_t i = 0; i < maskHeight - 1; ++i) slid.next(work.row(i));

    int32_t i = 0;
    for (int32_t y = 0; y < images.height; ++y) {
        uint8_t* const dst = images.dst + y * images.dstStride;
        uint8_t* const newest = work.row(i > 0 ? i - 1 : maskHeight - 1);
        slid.next(newest);
        if (i == 0) {
            for (int32_t row = maskHeight - 2; row > 0; --row)
                maximaOfTwoRows(work.row(row), work.row(row + 1), work.row(row), width);
            maximaOfTwoRows(work.row(0), work.row(1), dst, width);
        } else if (i == 1) {
            maximaOfTaps<1>(newest, gathered, width, 0, 0);
            maximaOfTwoRows(newest, work.row(1), dst, width);
        } else {
            gatherRow(newest, gathered, work.row(i), dst, width);
        }
        i = i + 1 < maskHeight ? i + 1 : 0;
    }
}

inline void filterRows(const MaximumImages& images, size_t maskWidth, int32_t maskHeight, const MaximumWork& work)
{
    SlidRows slid(images, maskWidth, work);
    if (maskHeight == 1)
        for (int32_t y = 0; y < images.height; ++y) slid.next(images.dst + y * images.dstStride);
    else if (maskHeight <= highestInPairs)
        filterInPairs(images, slid, maskHeight, work);
    else
        filterInBlocks(images, slid, maskHeight, work);
}

// filterRows, in what the level's registers ask for.
void filterRowsInState(const MaximumImages& images, size_t maskWidth, int32_t maskHeight, const MaximumWork& work);

ruxStatus filterMaximum(const MaximumImages& images, size_t maskWidth, int32_t maskHeight)
{
    const MaximumWork work(images.width, maskWidth, maskHeight);
    if (!work) return ruxStatusMemoryAllocated;

    filterRowsInState(images, maskWidth, maskHeight, work);
    return ruxStatusOk;
}

}
}
