// The maximum filter in lanes: how the ring's rows come together.
#pragma once

#include "filter/maximum_rows.h"

namespace rux::RUX_LEVEL {
namespace {

// The work area: a ring of as many rows as the mask has, and a block of its own for the passes of a wide mask. A mask
// of one row does without the ring, but not where the outputs overwrite what the pixels behind them need.
class MaximumWork {
public:
    MaximumWork(const MaximumImages& images, size_t maskWidth, int32_t maskHeight)
        : ringStride(roundedUpTo32(static_cast<int64_t>(images.width))),
          needsRing(maskHeight > 1 || static_cast<size_t>(images.dst - images.src) < maskWidth),
          needsPasses(maskWidth > widestInOnePass), ring(needsRing ? ringStride * maskHeight : 0),
          passes(needsPasses && needsRing == hasRing()
                     ? static_cast<int64_t>(images.width) + static_cast<int64_t>(maskWidth) : 0)
    {
    }
    explicit operator bool() const { return needsRing == hasRing() && needsPasses == static_cast<bool>(passes); }
    bool hasRing() const { return static_cast<bool>(ring); }
    uint8_t* row(int32_t index) const { return ring + static_cast<ptrdiff_t>(index * ringStride); }
    uint8_t* scratch() const { return passes; }

private:
    int64_t ringStride;
    bool needsRing;
    bool needsPasses;
    WorkMemory<uint8_t> ring;
    WorkMemory<uint8_t> passes;
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

// Up to this height two rows of outputs at a time, which share all rows but one each, cost less. They must not overlap.
constexpr int32_t highestInPairs = 9;

// The rows that two rows of outputs share, held so that the compiler sees that no store changes their places.
template <int count>
struct SharedRows {
    explicit SharedRows(uint8_t* const* from)
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

    uint8_t* rows[count];
};

// Two rows of outputs. first holds the newest row's maxima, which take the place of the oldest row; so the last lane,
// which lies over its neighbour, is loaded before that one is written.
template <int count>
inline void combinePair(uint8_t* const* rows, uint8_t* first, uint8_t* second, size_t width)
{
    uint8_t* const oldest = rows[0];
    const SharedRows<count> shared(rows + 1);
    const auto stepFrom = [=](auto before, auto behind, size_t x) {
        using Each = decltype(before);
        const Each maximum = shared.template maximumAt<Each>(x);
        behind.store(oldest + x);
        larger8(maximum, before).store(first + x);
        larger8(maximum, behind).store(second + x);
    };
    const auto step = [=](auto lane, size_t x) {
        using Each = decltype(lane);
        stepFrom(Each::load(oldest + x), Each::load(first + x), x);
    };
    size_t x = 0;
    if (width < Lane::size) {
        for (; x < width; ++x) step(OneByte(), x);
        return;
    }
    const size_t last = width - Lane::size;
    const Lane before = Lane::load(oldest + last);
    const Lane behind = Lane::load(first + last);
    for (; x + Lane::size < last; x += 2 * Lane::size) {
        step(Lane(), x);
        step(Lane(), x + Lane::size);
    }
    if (x < last) step(Lane(), x);
    stepFrom(before, behind, last);
}

inline void combinePair(uint8_t* const* rows, int32_t shared, uint8_t* first, uint8_t* second, size_t width)
{
    switch (shared) {
    case 1: return combinePair<1>(rows, first, second, width);
    case 2: return combinePair<2>(rows, first, second, width);
    case 3: return combinePair<3>(rows, first, second, width);
    case 4: return combinePair<4>(rows, first, second, width);
    case 5: return combinePair<5>(rows, first, second, width);
    case 6: return combinePair<6>(rows, first, second, width);
    case 7: return combinePair<7>(rows, first, second, width);
    default: return combinePair<8>(rows, first, second, width);
    }
}

// No row of outputs is written before the source rows up to the newest one of its mask have been read.
inline void filterInPairs(const MaximumImages& images, SlidRows& slid, int32_t maskHeight, const MaximumWork& work)
{
    for (int32_t i = 0; i < maskHeight - 1; ++i) slid.next(work.row(i));

    uint8_t* dst = images.dst;
    int32_t oldest = 0;
    for (int32_t rest = images.height; rest > 0; rest -= 2, dst += 2 * images.dstStride) {
        uint8_t* rows[highestInPairs];
        for (int32_t i = 0; i < maskHeight; ++i) rows[i] = work.row((oldest + i) % maskHeight);
        oldest = (oldest + 2) % maskHeight;

        slid.next(rows[maskHeight - 1]);
        if (rest > 1) {
            slid.next(dst);
            combinePair(rows, maskHeight - 1, dst, dst + images.dstStride, images.width);
        } else {
            for (int32_t i = 1; i < maskHeight - 1; ++i) maximaOfTwoRows(rows[0], rows[i], rows[0], images.width);
            maximaOfTwoRows(rows[0], rows[maskHeight - 1], dst, images.width);
        }
    }
}

// Rows in blocks of the mask's height. A window that starts in a block's row i holds the rest of that block, whose
// maxima have been gathered from its end on, and i rows of the next one, whose maxima gather in row 0 as they come:
// three maxima a pixel, however high the mask is. The rows of the next block take the places that are used up.
inline void filterInBlocks(const MaximumImages& images, SlidRows& slid, int32_t maskHeight, const MaximumWork& work)
{
    const size_t width = images.width;
    uint8_t* const gathered = work.row(0);
    for (int32_t i = 0; i < maskHeight - 1; ++i) slid.next(work.row(i));

    int32_t i = 0;
    for (int32_t y = 0; y < images.height; ++y) {
        uint8_t* const dst = images.dst + y * images.dstStride;
        uint8_t* const newest = work.row(i > 0 ? i - 1 : maskHeight - 1);
        slid.next(newest);
        if (i == 0)
            for (int32_t row = maskHeight - 2; row > 0; --row)
                maximaOfTwoRows(work.row(row), work.row(row + 1), work.row(row), width);
        if (i <= 1)
            maximaOfTwoRows(gathered, work.row(1), dst, width);
        else
            gatherRow(newest, gathered, work.row(i), dst, width);
        i = i + 1 < maskHeight ? i + 1 : 0;
    }
}

inline void filterRows(const MaximumImages& images, size_t maskWidth, int32_t maskHeight, const MaximumWork& work)
{
    SlidRows slid(images, maskWidth, work);
    if (maskHeight == 1)
        for (int32_t y = 0; y < images.height; ++y) {
            uint8_t* const dst = images.dst + y * images.dstStride;
            slid.next(work.hasRing() ? work.row(0) : dst);
            if (work.hasRing()) maximaOfTaps<1>(work.row(0), dst, images.width, 0, 0);
        }
    else if (maskHeight <= highestInPairs && images.dstStride >= static_cast<ptrdiff_t>(images.width))
        filterInPairs(images, slid, maskHeight, work);
    else
        filterInBlocks(images, slid, maskHeight, work);
}

// filterRows, in what the level's registers ask for.
void filterRowsInState(const MaximumImages& images, size_t maskWidth, int32_t maskHeight, const MaximumWork& work);

ruxStatus filterMaximum(const MaximumImages& images, size_t maskWidth, int32_t maskHeight)
{
    const MaximumWork work(images, maskWidth, maskHeight);
    if (!work) return ruxStatusMemoryAllocated;

    filterRowsInState(images, maskWidth, maskHeight, work);
    return ruxStatusOk;
}

}
}
