// ReduceBits in SSE registers, with the bytes of the ordered dither in MMX registers.
#include "colour/reduce_bits_sse.h"
#include "frame/mmx_state.h"

namespace rux::a6 {
namespace {

using RowState = MmxState;

constexpr size_t bytesAtOnce = 8;

}
}

#include "colour/reduce_bits_ordered.h"
#include "colour/reduce_bits_wave.h"

namespace rux::a6 {
namespace {

// From 2^23 on a float has no fraction: the sum is rounded to an integer, down or up, and up is taken back.
inline __m128 truncated(__m128 values)
{
    const __m128 noFraction = all(0x1p23f);
    const __m128 rounded = _mm_sub_ps(_mm_add_ps(values, noFraction), noFraction);
    return _mm_sub_ps(rounded, _mm_and_ps(_mm_cmpgt_ps(rounded, values), all(1.0f)));
}

// 2^23 + n has n in its lowest bits.
inline __m128 bytesOfLevels(__m128 levels)
{
    return _mm_add_ps(truncated(levels), all(0x1p23f));
}

inline __m128 floatsOf(__m64 words)
{
    const __m64 zero = _mm_setzero_si64();
    const __m128 low = _mm_cvtpi32_ps(_mm_setzero_ps(), _mm_unpacklo_pi16(words, zero));
    return _mm_movelh_ps(low, _mm_cvtpi32_ps(_mm_setzero_ps(), _mm_unpackhi_pi16(words, zero)));
}

inline void loadSamples(const uint8_t* from, __m128* samples)
{
    const __m64 zero = _mm_setzero_si64();
#pragma GCC unroll 3
    for (int i = 0; i < 3; ++i, from += 8, samples += 2) {
        const __m64 bytes = load<__m64>(from);
        samples[0] = floatsOf(_mm_unpacklo_pi8(bytes, zero));
        samples[1] = floatsOf(_mm_unpackhi_pi8(bytes, zero));
    }
}

inline __m64 wordsOf(__m128 levels)
{
    return _mm_packs_pi32(_mm_cvttps_pi32(levels), _mm_cvttps_pi32(_mm_movehl_ps(levels, levels)));
}

inline void storeSamples(const __m128* levels, uint8_t* to)
{
#pragma GCC unroll 3
    for (int i = 0; i < 3; ++i, to += 8, levels += 2)
        store(to, _mm_packs_pu16(wordsOf(levels[0]), wordsOf(levels[1])));
}

}
}
