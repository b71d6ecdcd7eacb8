// The box filter in MMX registers. The level gives HighProduct and the 3x3 rows.
#pragma once

#include "frame/mmx_state.h"
#include "lanes/pixel_words4.h"

namespace rux::RUX_LEVEL {
namespace {

using Words = SaturatingWords4;

class ShiftWords {
public:
    explicit ShiftWords(int32_t count) : count(_mm_cvtsi32_si64(count)) {}
    Words logical(Words a) const { return {_mm_srl_pi16(a.value, count)}; }
    Words arithmetic(Words a) const { return {_mm_sra_pi16(a.value, count)}; }

private:
    __m64 count;
};

inline Words runningSums(Words a)
{
    const __m64 pairs = _mm_add_pi16(a.value, _mm_slli_si64(a.value, 16));
    return {_mm_add_pi16(pairs, _mm_slli_si64(pairs, 32))};
}

inline Words runningSums32(Words a)
{
    return {_mm_add_pi32(a.value, _mm_slli_si64(a.value, 32))};
}

inline Words lastDoubleWord(Words a)
{
    return {_mm_unpackhi_pi32(a.value, a.value)};
}

inline Words lastWord(Words a)
{
    return lastDoubleWord({_mm_unpackhi_pi16(a.value, a.value)});
}

inline Words broadcastInt32(int32_t value)
{
    return {_mm_set1_pi32(value)};
}

inline int32_t firstInt32(Words a)
{
    return _mm_cvtsi64_si32(a.value);
}

inline Words doubleWordDifference(Words a, Words b)
{
    return {_mm_sub_pi32(a.value, b.value)};
}

inline Words highWordsDown(Words a)
{
    return {_mm_srli_pi32(a.value, 16)};
}

inline Words lowBytesOfDoubleWords()
{
    return {_mm_set1_pi32(0xFF)};
}

}
}
