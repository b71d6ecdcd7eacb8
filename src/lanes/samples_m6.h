// What half-pel prediction asks of 8 samples in an MMX register, with an average of logic and a shift.
#pragma once

#include "lanes/samples_mmx.h"

namespace rux::RUX_LEVEL {
namespace {

// (a ^ b) >> 1. Shifting words moves no bit into a neighbour when every byte's lowest bit is 0.
inline Samples8 halfOfDifferingBits(Samples8 a, Samples8 b)
{
    return {_mm_srli_pi16(_mm_and_si64(_mm_xor_si64(a.value, b.value), _mm_set1_pi8(-2)), 1)};
}

// (a + b + 1) >> 1 = (a | b) - ((a ^ b) >> 1)
inline Samples8 average(Samples8 a, Samples8 b)
{
    return wrappingDifference(a | b, halfOfDifferingBits(a, b));
}

}
}
