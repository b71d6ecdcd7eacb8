// Zero crossings of a vector of samples.
//
// The operations stand here once; each level's file gives the routines that count.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

// Places from 1 to samples - 1 whose product with the sample before is negative.
int32_t countChanges16s(const uint8_t* src, size_t samples);
int32_t countChanges32f(const uint8_t* src, size_t samples);

inline int32_t countChanges16sSingly(const uint8_t* src, size_t from, size_t to)
{
    int32_t count = 0;
    for (size_t i = from; i < to; ++i)
        count += int32_t{load<int16_t>(src + i * 2 - 2)} * load<int16_t>(src + i * 2) < 0;
    return count;
}

}

ruxStatus RUXCALL ruxsSignChangeRate_16s(const int16_t* src, int32_t len, int32_t* count)
{
    if (auto failure = firstFailure(pointers(src, count), require(len >= 1, ruxStatusSizeError))) return failure;

    store(count, countChanges16s(bytesOf(src), static_cast<size_t>(len)));
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxsSignChangeRate_32f(const float* src, int32_t len, float* count)
{
    if (auto failure = firstFailure(pointers(src, count), require(len >= 1, ruxStatusSizeError))) return failure;

    store(count, static_cast<float>(countChanges32f(bytesOf(src), static_cast<size_t>(len))));
    return ruxStatusOk;
}

}
