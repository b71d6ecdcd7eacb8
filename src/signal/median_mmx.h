// Medians of four samples at a time.
#pragma once

#include "frame/mmx_state.h"

namespace rux::RUX_LEVEL {
namespace {

using Lanes = SaturatingWords4;

}
}

#include "signal/median_lanes.h"

namespace rux::RUX_LEVEL {
namespace {

inline Lanes advanced(Lanes vector, Lanes next)
{
    return {_mm_or_si64(_mm_srli_si64(vector.value, 16), _mm_slli_si64(next.value, 48))};
}

inline Lanes retarded(Lanes previous, Lanes vector)
{
    return {_mm_or_si64(_mm_srli_si64(previous.value, 48), _mm_slli_si64(vector.value, 16))};
}

[[gnu::noinline]] void medianOfThree(const uint8_t* src, uint8_t* dst, size_t samples)
{
    const MmxState state;
    medianOfThreeInLanes(src, dst, samples);
}

[[gnu::noinline]] void medianOfFive(const uint8_t* src, uint8_t* dst, size_t samples)
{
    const MmxState state;
    medianOfFiveInLanes(src, dst, samples);
}

[[gnu::noinline]] void medianOfMany(uint8_t* dst, size_t samples, size_t mask, uint8_t* window, uint8_t* ring)
{
    const MmxState state;
    medianOfManyInLanes(dst, samples, mask, window, ring);
}

}
}
