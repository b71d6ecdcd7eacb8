// Sums of a column's pixels in a window of rows, in words: two lanes of words for a lane of bytes.
//
// The level gives the lane Words.
#pragma once

#include "filter/column_sums.h"

namespace rux::RUX_LEVEL {
namespace {

// A step takes a lane of bytes.
constexpr int stepPixels = 2 * Words::count;

struct WordHalves {
    Words low, high;
};

inline WordHalves widened(const uint8_t* from)
{
    const Words bytes = Words::load(from);
    const Words zero = Words::broadcast(0);
    return {interleaveLowBytes(bytes, zero), interleaveHighBytes(bytes, zero)};
}

inline WordHalves sum(WordHalves a, WordHalves b)
{
    return {wrappingSum(a.low, b.low), wrappingSum(a.high, b.high)};
}

inline WordHalves difference(WordHalves a, WordHalves b)
{
    return {wrappingDifference(a.low, b.low), wrappingDifference(a.high, b.high)};
}

inline WordHalves loadSums(const uint16_t* from)
{
    return {Words::load(from), Words::load(from + Words::count)};
}

inline void storeSums(WordHalves sums, uint16_t* to)
{
    sums.low.store(to);
    sums.high.store(to + Words::count);
}

inline void addToWordSums(uint16_t* sums, const uint8_t* row, size_t count)
{
    size_t i = 0;
    for (; count - i >= stepPixels; i += stepPixels) storeSums(sum(loadSums(sums + i), widened(row + i)), sums + i);
    addFrom(sums, row, i, count);
}

inline void exchangeInWordSums(uint16_t* sums, const uint8_t* entering, const uint8_t* leaving, size_t count)
{
    size_t i = 0;
    for (; count - i >= stepPixels; i += stepPixels) {
        const WordHalves change = difference(widened(entering + i), widened(leaving + i));
        storeSums(sum(loadSums(sums + i), change), sums + i);
    }
    exchangeFrom(sums, entering, leaving, i, count);
}

template <int size>
inline Words sumOfColumns(const uint16_t* columns)
{
    Words sum = Words::load(columns);
    for (int i = 1; i < size; ++i) sum = wrappingSum(sum, Words::load(columns + i));
    return sum;
}

template <int size, typename Mean>
inline void filterStep(const Mean& mean, const uint16_t* columns, uint8_t* dst)
{
    const Words low = mean(sumOfColumns<size>(columns));
    const Words high = mean(sumOfColumns<size>(columns + Words::count));
    packBytes(low, high).store(dst);
}

// A row of means of as many neighbouring columns; mean takes a lane of sums or a single one. The last step may lie over
// its neighbour.
template <int size, typename Mean>
inline void filterNeighbours(const Mean& mean, const uint16_t* columns, uint8_t* dst, int32_t width)
{
    if (width < stepPixels) {
        for (int32_t x = 0; x < width; ++x) {
            int32_t sum = 0;
            for (int i = 0; i < size; ++i) sum += columns[x + i];
            dst[x] = mean(sum);
        }
        return;
    }
    const ptrdiff_t last = width - stepPixels;
    for (ptrdiff_t x = 0; x < last; x += stepPixels) filterStep<size>(mean, columns + x, dst + x);
    filterStep<size>(mean, columns + last, dst + last);
}

}
}
