// ReduceBits in SSE2 registers.
#include <emmintrin.h>

#include "colour/reduce_bits_sse.h"

namespace rux::w7 {
namespace {

struct RowState {
    RowState() {}
    ~RowState() {}
};

constexpr size_t bytesAtOnce = 16;

}
}

#include "colour/reduce_bits_ordered.h"
#include "colour/reduce_bits_wave.h"

namespace rux::w7 {
namespace {

inline __m128 truncated(__m128 values)
{
    return _mm_cvtepi32_ps(_mm_cvttps_epi32(values));
}

inline __m128 bytesOfLevels(__m128 levels)
{
    return _mm_castsi128_ps(_mm_cvttps_epi32(levels));
}

inline void loadSamples(const uint8_t* from, __m128* samples)
{
    const __m128i zero = _mm_setzero_si128();
#pragma GCC unroll 3
    for (int i = 0; i < 3; ++i, from += 16, samples += 4) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
        const __m128i low = _mm_unpacklo_epi8(bytes, zero);
        const __m128i high = _mm_unpackhi_epi8(bytes, zero);
        samples[0] = _mm_cvtepi32_ps(_mm_unpacklo_epi16(low, zero));
        samples[1] = _mm_cvtepi32_ps(_mm_unpackhi_epi16(low, zero));
        samples[2] = _mm_cvtepi32_ps(_mm_unpacklo_epi16(high, zero));
        samples[3] = _mm_cvtepi32_ps(_mm_unpackhi_epi16(high, zero));
    }
}

inline void storeSamples(const __m128* levels, uint8_t* to)
{
#pragma GCC unroll 3
    for (int i = 0; i < 3; ++i, to += 16, levels += 4) {
        const __m128i low = _mm_packs_epi32(_mm_cvttps_epi32(levels[0]), _mm_cvttps_epi32(levels[1]));
        const __m128i high = _mm_packs_epi32(_mm_cvttps_epi32(levels[2]), _mm_cvttps_epi32(levels[3]));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_packus_epi16(low, high));
    }
}

}
}
