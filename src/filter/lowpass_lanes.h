// The lowpass filter over lanes of words: sums of columns, then of neighbouring columns.
//
// The level gives the lane Words. A sum of 25 bytes and its addend stay below 6389, and the factors are positive
// words: products of signed words serve every level.
#pragma once

#include "filter/lowpass.h"
#include "filter/word_sums.h"

namespace rux::RUX_LEVEL {
namespace {

template <int size>
struct RoundedMean;

template <>
struct RoundedMean<3> {
    Words operator()(Words sums) const
    {
        return highProduct(wrappingSum(sums, Words::broadcast(5)), Words::broadcast(7281));
    }
    uint8_t operator()(int32_t sum) const { return static_cast<uint8_t>(((sum + 5) * 7281) >> 16); }
};

// The product's high word is the first 16 of the 18 bits.
template <>
struct RoundedMean<5> {
    Words operator()(Words sums) const
    {
        return shiftedRightUnsigned<2>(
            highProduct(wrappingSum(sums, Words::broadcast(13)), Words::broadcast(10485)));
    }
    uint8_t operator()(int32_t sum) const { return static_cast<uint8_t>(((sum + 13) * 10485) >> 18); }
};

template <int size>
inline void filterRows(const MaskedImages& images, uint16_t* columns)
{
    const size_t count = static_cast<size_t>(images.width) + size - 1;
    for (size_t i = 0; i < count; ++i) columns[i] = 0;
    for (int row = 0; row < size; ++row) addToWordSums(columns, images.src + row * images.srcStride, count);

    for (int32_t y = 0;; ++y) {
        filterNeighbours<size>(RoundedMean<size>(), columns, images.dst + y * images.dstStride, images.width);
        if (y == images.height - 1) return;
        const uint8_t* const leaving = images.src + y * images.srcStride;
        exchangeInWordSums(columns, leaving + size * images.srcStride, leaving, count);
    }
}

// filterRows, in what the level's registers ask for.
template <int size>
void filterRowsInState(const MaskedImages& images, uint16_t* columns);

template <int size>
ruxStatus filterMean(const MaskedImages& images)
{
    const int64_t count = static_cast<int64_t>(images.width) + size - 1;
    const WorkMemory<uint16_t> columns((count + 15) / 16 * 16);
    if (!columns) return ruxStatusMemoryAllocated;

    filterRowsInState<size>(images, columns);
    return ruxStatusOk;
}

}
}
