// The fast path of the row filter: sums of 16-bit multiplications and additions, a lane of bytes at a time. The general
// path takes them for kernels of one or two coefficients, and divides in its own way.
//
// Words is the lane; the level's finishes make integers of double words of sums.
//
// A multiplication and addition of neighbouring words gives the sums of every second pixel. From the same words, the
// pixels from x + 2i on, the even outputs take the taps 2i and 2i + 1, the odd ones the taps 2i - 1 and 2i:
//   a[x]     = k0 p[x] + k1 p[x+1]   +   k2 p[x+2] + k3 p[x+3]   + ...
//   a[x + 1] =  0 p[x] + k0 p[x+1]   +   k1 p[x+2] + k2 p[x+3]   + ...
// The last step stands on the last tap's pixel, so that nothing beyond is read: of an odd number of taps it is one like
// the others, of an even number it gives the odd outputs their last tap.
// No product of a byte and a word, and no sum of two, leaves 32 bits; the sums of pairs wrap as the contract has it.
#pragma once

#include "filter/row.h"
#include "frame/work_memory.h"

namespace rux::RUX_LEVEL {
namespace {

struct EvenAndOdd {
    Words evenLow, evenHigh, oddLow, oddHigh;
};

inline Words lowWords(Words bytes)
{
    return interleaveLowBytes(bytes, Words::broadcast(0));
}

inline Words highWords(Words bytes)
{
    return interleaveHighBytes(bytes, Words::broadcast(0));
}

// The taps of a step, for even and for odd outputs.
struct TapPairs {
    Words even, odd;
};

inline void addTaps(EvenAndOdd& sums, const uint8_t* from, const TapPairs& taps)
{
    const Words pixels = Words::load(from);
    const Words low = lowWords(pixels);
    const Words high = highWords(pixels);
    sums.evenLow = doubleWordSum(sums.evenLow, multiplyAddPairs(low, taps.even));
    sums.evenHigh = doubleWordSum(sums.evenHigh, multiplyAddPairs(high, taps.even));
    sums.oddLow = doubleWordSum(sums.oddLow, multiplyAddPairs(low, taps.odd));
    sums.oddHigh = doubleWordSum(sums.oddHigh, multiplyAddPairs(high, taps.odd));
}

inline EvenAndOdd sumsOfTaps(const uint8_t* src, const TapPairs* steps, int32_t size)
{
    const Words zero = Words::broadcast(0);
    EvenAndOdd sums = {zero, zero, zero, zero};
    const ptrdiff_t last = size / 2;
    for (ptrdiff_t i = 0; i < last; ++i) addTaps(sums, src + 2 * i, steps[i]);
    addTaps(sums, src + size - 1, steps[last]);
    return sums;
}

// The saturation of sums to words and of words to bytes is that of sums to bytes.
template <typename Finish>
inline void filterLane(Finish finish, const uint8_t* src, uint8_t* dst, const TapPairs* steps, int32_t size)
{
    const EvenAndOdd sums = sumsOfTaps(src, steps, size);
    const Words even = packWords(finish(sums.evenLow), finish(sums.evenHigh));
    const Words odd = packWords(finish(sums.oddLow), finish(sums.oddHigh));
    interleaveHalves(packBytes(even, odd)).store(dst);
}

// Of at least one lane; the last one may lie over its neighbour.
template <int unrolledSize, typename Finish>
inline void filterInLanes(Finish finish, const uint8_t* src, uint8_t* dst, int32_t width, const TapPairs* steps,
                          int32_t size)
{
    constexpr int32_t lane = 2 * Words::count;
    const int32_t taps = unrolledSize > 0 ? unrolledSize : size;
    for (int32_t x = 0; x < width - lane; x += lane) filterLane(finish, src + x, dst + x, steps, taps);
    filterLane(finish, src + width - lane, dst + width - lane, steps, taps);
}

inline bool fitsWord(int32_t value)
{
    return value == static_cast<int16_t>(value);
}

inline bool allTapsFitWords(const Kernel& kernel)
{
    for (int32_t t = 0; t < kernel.size; ++t)
        if (!fitsWord(kernel.tap(t))) return false;
    return true;
}

inline void repackTaps(const Kernel& kernel, TapPairs* steps)
{
    const auto tap = [&](int32_t t) { return static_cast<int16_t>(t >= 0 && t < kernel.size ? kernel.tap(t) : 0); };
    const int32_t last = kernel.size / 2;
    for (int32_t i = 0; i <= last; ++i)
        steps[i] = {broadcastPair(tap(2 * i), tap(2 * i + 1)), broadcastPair(tap(2 * i - 1), tap(2 * i))};
    if (kernel.size % 2 == 0) steps[last].odd = broadcastPair(0, tap(kernel.size - 1));
}

// The work area of the fast path. The steps take 16 bytes for each tap and at most 32 more, which the row's part has.
class FastPath {
public:
    FastPath(const Kernel& kernel, int32_t width)
        : work(takesTo(kernel, width) ? static_cast<int64_t>(kernel.size) * 4 + width : 0)
    {
    }
    explicit operator bool() const { return static_cast<bool>(work); }
    TapPairs* steps() const { return reinterpret_cast<TapPairs*>(static_cast<int32_t*>(work)); }

private:
    static bool takesTo(const Kernel& kernel, int32_t width)
    {
        return kernel.size >= 3 && width >= 16 && allTapsFitWords(kernel);
    }

    WorkMemory<int32_t> work;
};

// The longest kernel that never takes the fast path, and how many pixels of its rows go in whole lanes.
constexpr int32_t shortKernel = 2;

inline int32_t pixelsInLanes(const Kernel& kernel, int32_t width)
{
    constexpr int32_t lane = 2 * Words::count;
    return kernel.size <= shortKernel && allTapsFitWords(kernel) ? width - width % lane : 0;
}

inline RowImages columnsOf(const RowImages& images, int32_t from, int32_t to)
{
    return {images.src + from, images.srcStride, images.dst + from, images.dstStride,
            {to - from, images.roiSize.height}};
}

template <typename Finish>
inline void filterImageInLanes(Finish finish, const RowImages& images, const TapPairs* steps, int32_t size)
{
    const auto filterWith = [&](auto filterRow) {
        forEachRow(images, [&](const uint8_t* src, uint8_t* dst) {
            filterRow(finish, src, dst, images.roiSize.width, steps, size);
        });
    };
    switch (size) {
    case 1: return filterWith(filterInLanes<1, Finish>);
    case 2: return filterWith(filterInLanes<2, Finish>);
    case 3: return filterWith(filterInLanes<3, Finish>);
    case 5: return filterWith(filterInLanes<5, Finish>);
    default: return filterWith(filterInLanes<0, Finish>);
    }
}

struct Whole {
    Words operator()(Words sums) const { return sums; }
};

// Shifted and Scaled are the divisions of the path.
template <typename Shifted, typename Scaled>
inline void filterImageInLanes(const RowImages& images, const Kernel& kernel, const Divisor& divisor, TapPairs* steps)
{
    repackTaps(kernel, steps);
    switch (divisor.division) {
    case Division::none: return filterImageInLanes(Whole(), images, steps, kernel.size);
    case Division::shift: return filterImageInLanes(Shifted(divisor.shift), images, steps, kernel.size);
    case Division::factor: return filterImageInLanes(Scaled(divisor.factor), images, steps, kernel.size);
    }
}

}
}
