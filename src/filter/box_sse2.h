// What the box filter asks of eight words in an SSE2 register.
#pragma once

#include "lanes/pixel_words8.h"

namespace rux::RUX_LEVEL {
namespace {

using Words = SaturatingWords8;

class HighProduct {
public:
    explicit HighProduct(uint16_t factor) : factor(factor) {}
    Words operator()(Words a) const { return highProductUnsigned(a, factor); }

private:
    uint16_t factor;
};

class ShiftWords {
public:
    explicit ShiftWords(int32_t count) : count(_mm_cvtsi32_si128(count)) {}
    Words logical(Words a) const { return {_mm_srl_epi16(a.value, count)}; }
    Words arithmetic(Words a) const { return {_mm_sra_epi16(a.value, count)}; }

private:
    __m128i count;
};

inline Words runningSums(Words a)
{
    const __m128i pairs = _mm_add_epi16(a.value, _mm_slli_si128(a.value, 2));
    const __m128i fours = _mm_add_epi16(pairs, _mm_slli_si128(pairs, 4));
    return {_mm_add_epi16(fours, _mm_slli_si128(fours, 8))};
}

inline Words runningSums32(Words a)
{
    const __m128i pairs = _mm_add_epi32(a.value, _mm_slli_si128(a.value, 4));
    return {_mm_add_epi32(pairs, _mm_slli_si128(pairs, 8))};
}

inline Words lastDoubleWord(Words a)
{
    return {_mm_shuffle_epi32(a.value, _MM_SHUFFLE(3, 3, 3, 3))};
}

inline Words lastWord(Words a)
{
    return lastDoubleWord({_mm_shufflehi_epi16(a.value, _MM_SHUFFLE(3, 3, 3, 3))});
}

inline Words broadcastInt32(int32_t value)
{
    return {_mm_set1_epi32(value)};
}

inline int32_t firstInt32(Words a)
{
    return _mm_cvtsi128_si32(a.value);
}

inline Words doubleWordDifference(Words a, Words b)
{
    return {_mm_sub_epi32(a.value, b.value)};
}

inline Words highWordsDown(Words a)
{
    return {_mm_srli_epi32(a.value, 16)};
}

inline Words lowBytesOfDoubleWords()
{
    return {_mm_set1_epi32(0xFF)};
}

}
}
