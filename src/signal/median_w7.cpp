// Median in vectors of eight samples.
#include "lanes/saturating_words8.h"
#include "signal/vector_copy_w7.h"

namespace rux::w7 {
namespace {

using Lanes = SaturatingWords8;

}
}

#include "signal/median_lanes.h"

namespace rux::w7 {
namespace {

inline Lanes advanced(Lanes vector, Lanes next)
{
    return {_mm_or_si128(_mm_srli_si128(vector.value, 2), _mm_slli_si128(next.value, 14))};
}

inline Lanes retarded(Lanes previous, Lanes vector)
{
    return {_mm_or_si128(_mm_srli_si128(previous.value, 14), _mm_slli_si128(vector.value, 2))};
}

void medianOfThree(const uint8_t* src, uint8_t* dst, size_t samples)
{
    medianOfThreeInLanes(src, dst, samples);
}

void medianOfFive(const uint8_t* src, uint8_t* dst, size_t samples)
{
    medianOfFiveInLanes(src, dst, samples);
}

void medianOfMany(uint8_t* dst, size_t samples, size_t mask, uint8_t* window, uint8_t* ring)
{
    medianOfManyInLanes(dst, samples, mask, window, ring);
}

}
}
