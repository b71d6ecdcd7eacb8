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

// Maxima of the mask's width of pixels. Those of a narrower window come first, and of windows four times as wide as
// long as a mask needs more than four of them: so a wide mask costs a pass more for every fourfold of its width. The
// last pass lays two to four windows over the mask. scratch is two rows of width + maskWidth bytes.
inline void slideMaximum(const uint8_t* src, uint8_t* to, size_t width, size_t maskWidth, uint8_t* scratch)
{
    if (maskWidth <= 5) return maximaOfFewTaps(maskWidth, src, to, width, 1, maskWidth - 1);

    uint8_t* maxima = scratch;
    uint8_t* spare = scratch + width + maskWidth;
    size_t window = maskWidth <= 9 ? 3 : 4;
    maximaOfFewTaps(window, src, maxima, width + maskWidth - window, 1, window - 1);
    for (; 4 * window < maskWidth; window *= 4) {
        maximaOfTaps<4>(maxima, spare, width + maskWidth - 4 * window, window, 3 * window);
        uint8_t* const wider = spare;
        spare = maxima;
        maxima = wider;
    }
    maximaOfFewTaps((maskWidth + window - 1) / window, maxima, to, width, window, maskWidth - window);
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
