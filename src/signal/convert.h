// Conversion of 16-bit samples to floats; every sample is exact in a float.
//
// The operation stands here once; each level's file gives the routine that converts.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

void floatsFromWords(const uint8_t* src, uint8_t* dst, size_t samples);

inline void floatsFromWordsSingly(const uint8_t* src, uint8_t* dst, size_t samples)
{
    for (size_t i = 0; i < samples; ++i) store<float>(dst + i * 4, load<int16_t>(src + i * 2));
}

}

ruxStatus RUXCALL ruxsConvert_16s32f(const int16_t* src, float* dst, int32_t len)
{
    if (auto failure = firstFailure(pointers(src, dst), require(len >= 1, ruxStatusSizeError))) return failure;

    floatsFromWords(bytesOf(src), bytesOf(dst), static_cast<size_t>(len));
    return ruxStatusOk;
}

}
