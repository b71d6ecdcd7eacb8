// Sliding median of 16-bit samples.
//
// The operation stands here once; each level's file gives the routines for the three kinds of mask. The output is the
// median of the input, never of earlier outputs, also in place.
#pragma once

#include "frame/checks.h"
#include "frame/work_memory.h"
#include "signal/median_scalar.h"

namespace rux::RUX_LEVEL {
namespace {

// All of dst, for three samples and more.
void medianOfThree(const uint8_t* src, uint8_t* dst, size_t samples);
void medianOfFive(const uint8_t* src, uint8_t* dst, size_t samples);

// dst holds the input; the mask is odd and 7 at least. The memory is two arrays of 32-bit words of mask elements,
// rounded up to a multiple of 8.
void medianOfMany(uint8_t* dst, size_t samples, size_t mask, uint8_t* window, uint8_t* ring);

inline ruxStatus filterMedian(const uint8_t* src, uint8_t* dst, size_t samples, int32_t mask)
{
    if (samples >= 3 && mask == 3) {
        medianOfThree(src, dst, samples);
        return ruxStatusOk;
    }
    if (samples >= 3 && mask == 5) {
        medianOfFive(src, dst, samples);
        return ruxStatusOk;
    }
    copyVector(src, dst, samples * 2);
    if (samples < 3 || mask == 1) return ruxStatusOk;

    const int64_t room = (int64_t{mask} + 7) & ~int64_t{7};
    const WorkMemory<int32_t> memory(2 * room);
    if (!memory) return ruxStatusMemoryAllocated;
    int32_t* const first = memory;
    medianOfMany(dst, samples, static_cast<size_t>(mask), bytesOf(first), bytesOf(first + room));
    return ruxStatusOk;
}

}

ruxStatus RUXCALL ruxsFilterMedian_16s(const int16_t* src, int16_t* dst, int32_t len, int32_t maskSize)
{
    if (auto failure = firstFailure(pointers(src, dst), require(len >= 1 && maskSize >= 1, ruxStatusSizeError)))
        return failure;

    const bool even = maskSize % 2 == 0;
    if (auto failure = filterMedian(bytesOf(src), bytesOf(dst), static_cast<size_t>(len), maskSize - even))
        return failure;
    return even ? ruxStatusEvenMedianMask : ruxStatusOk;
}

}
