// Maxima of rows and along rows, in lanes of the level's width.
//
// The level gives Lane, with larger8 for it.
#pragma once

#include "filter/maximum.h"

namespace rux::RUX_LEVEL {
namespace {

// Where a row is shorter than a lane.
struct OneByte {
    static constexpr size_t size = 1;
    uint8_t value;

    static OneByte load(const uint8_t* from) { return {*from}; }
    void store(uint8_t* to) const { *to = value; }
};

inline OneByte larger8(OneByte a, OneByte b)
{
    return a.value > b.value ? a : b;
}

// Takes a step at each lane of a row. The last one may lie over its neighbour: what a step writes over what it reads
// must be the same a second time, as maxima are.
template <typename Step>
inline void overLanes(size_t count, Step step)
{
    if (count < Lane::size) {
        for (size_t x = 0; x < count; ++x) step(OneByte(), x);
        return;
    }
    const size_t last = count - Lane::size;
    size_t x = 0;
    for (; x + Lane::size < last; x += 2 * Lane::size) {
        step(Lane(), x);
        step(Lane(), x + Lane::size);
    }
    if (x < last) step(Lane(), x);
    step(Lane(), last);
}

// to[x] = max of from[x], from[x + stride], ... of as many taps, the last one at its own distance.
template <int taps>
inline void maximaOfTaps(const uint8_t* from, uint8_t* to, size_t count, size_t stride, size_t last)
{
    overLanes(count, [=](auto lane, size_t x) {
        using Each = decltype(lane);
        const uint8_t* const at = from + x;
        Each maximum = Each::load(at);
        for (int tap = 1; tap < taps - 1; ++tap) maximum = larger8(maximum, Each::load(at + tap * stride));
        if (taps > 1) maximum = larger8(maximum, Each::load(at + last));
        maximum.store(to + x);
    });
}

inline void maximaOfFewTaps(size_t taps, const uint8_t* from, uint8_t* to, size_t count, size_t stride, size_t last)
{
    switch (taps) {
    case 1: return maximaOfTaps<1>(from, to, count, stride, last);
    case 2: return maximaOfTaps<2>(from, to, count, stride, last);
    case 3: return maximaOfTaps<3>(from, to, count, stride, last);
    case 4: return maximaOfTaps<4>(from, to, count, stride, last);
    default: return maximaOfTaps<5>(from, to, count, stride, last);
    }
}

// The same of four taps in place. Lanes are formed before what they read is written: the last one, which lies over its
// neighbour, before all others.
inline void maximaOfFourInPlace(uint8_t* row, size_t count, size_t stride)
{
    const uint8_t* const taps[] = {row, row + stride, row + 2 * stride, row + 3 * stride};
    const auto maximumAt = [&](auto lane, size_t x) {
        using Each = decltype(lane);
        return larger8(larger8(Each::load(taps[0] + x), Each::load(taps[1] + x)),
                       larger8(Each::load(taps[2] + x), Each::load(taps[3] + x)));
    };
    size_t x = 0;
    if (count < Lane::size) {
        for (; x < count; ++x) maximumAt(OneByte(), x).store(row + x);
        return;
    }
    const size_t last = count - Lane::size;
    const Lane behind = maximumAt(Lane(), last);
    for (; x + Lane::size < last; x += 2 * Lane::size) {
        const Lane first = maximumAt(Lane(), x);
        const Lane second = maximumAt(Lane(), x + Lane::size);
        first.store(row + x);
        second.store(row + x + Lane::size);
    }
    if (x < last) maximumAt(Lane(), x).store(row + x);
    behind.store(row + last);
}

constexpr size_t widestInOnePass = 5;

// Maxima of windows, then of windows four times as wide as long as a mask needs more than four of them: so a wide mask
// costs a pass more for every fourfold of its width. The last pass lays two to four windows over the mask.
inline void slideInPasses(const uint8_t* src, uint8_t* to, size_t width, size_t maskWidth, uint8_t* scratch)
{
    size_t window = maskWidth <= 9 ? 3 : 4;
    maximaOfFewTaps(window, src, scratch, width + maskWidth - window, 1, window - 1);
    for (; 4 * window < maskWidth; window *= 4)
        maximaOfFourInPlace(scratch, width + maskWidth - 4 * window, window);
    maximaOfFewTaps((maskWidth + window - 1) / window, scratch, to, width, window, maskWidth - window);
}

// Maxima of the mask's width of pixels. A mask of more than one pass takes a row of width + maskWidth bytes.
inline void slideMaximum(const uint8_t* src, uint8_t* to, size_t width, size_t maskWidth, uint8_t* scratch)
{
    if (maskWidth <= widestInOnePass)
        maximaOfFewTaps(maskWidth, src, to, width, 1, maskWidth - 1);
    else
        slideInPasses(src, to, width, maskWidth, scratch);
}

inline void maximaOfTwoRows(const uint8_t* a, const uint8_t* b, uint8_t* to, size_t width)
{
    overLanes(width, [=](auto lane, size_t x) {
        using Each = decltype(lane);
        larger8(Each::load(a + x), Each::load(b + x)).store(to + x);
    });
}

// What is gathered takes in the newest row; with what a block has left it is an output.
inline void gatherRow(const uint8_t* newest, uint8_t* gathered, const uint8_t* left, uint8_t* dst, size_t width)
{
    overLanes(width, [=](auto lane, size_t x) {
        using Each = decltype(lane);
        const Each maximum = larger8(Each::load(newest + x), Each::load(gathered + x));
        maximum.store(gathered + x);
        larger8(maximum, Each::load(left + x)).store(dst + x);
    });
}

inline void copyImageInLanes(const MaximumImages& images)
{
    for (int32_t y = 0; y < images.height; ++y)
        maximaOfTaps<1>(images.src + y * images.srcStride, images.dst + y * images.dstStride, images.width, 0, 0);
}

}
}
