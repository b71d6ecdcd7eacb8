// Sums of a block's measures in MMX registers: what m6 and a6 share.
#pragma once

#include "frame/mmx_state.h"

namespace rux::RUX_LEVEL {
namespace {

using Samples = Samples8;
using Registers = MmxState;

inline uint32_t sumOfDoubleWords(__m64 sums)
{
    return static_cast<uint32_t>(_mm_cvtsi64_si32(_mm_add_pi32(sums, _mm_srli_si64(sums, 32))));
}

// |a - b|: one of the two differences saturates to 0.
inline Samples absoluteDifference(Samples a, Samples b)
{
    return subtractSaturated(a, b) | subtractSaturated(b, a);
}

class SquareSum {
public:
    void add(Samples p, Samples s) { add(absoluteDifference(p, s)); }
    void add(Samples a)
    {
        const Words8 words = widened(a);
        low = _mm_add_pi32(low, _mm_madd_pi16(words.low.value, words.low.value));
        high = _mm_add_pi32(high, _mm_madd_pi16(words.high.value, words.high.value));
    }
    int32_t total() const { return static_cast<int32_t>(sumOfDoubleWords(_mm_add_pi32(low, high))); }

private:
    __m64 low = _mm_setzero_si64();
    __m64 high = _mm_setzero_si64();
};

}
}
