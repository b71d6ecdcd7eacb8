// Conversion of four samples at a time: MMX widens them, SSE makes them floats.
#include <xmmintrin.h>

#include "frame/mmx_state.h"
#include "lanes/four_floats.h"
#include "signal/convert.h"

namespace rux::a6 {
namespace {

[[gnu::noinline]] void floatsFromFours(const uint8_t* src, uint8_t* dst, size_t fours)
{
    const MmxState state;
    const __m128 zero = _mm_setzero_ps();
    for (; fours > 0; --fours, src += 8, dst += 16) {
        const __m64 words = load<__m64>(src);
        // A word twice in 32 bits, shifted right with its sign: the sample.
        const __m128 low = _mm_cvtpi32_ps(zero, _mm_srai_pi32(_mm_unpacklo_pi16(words, words), 16));
        const __m128 high = _mm_cvtpi32_ps(zero, _mm_srai_pi32(_mm_unpackhi_pi16(words, words), 16));
        FourFloats{_mm_movelh_ps(low, high)}.store(dst);
    }
}

// The stack converts the rest, outside the MMX state.
void floatsFromWords(const uint8_t* src, uint8_t* dst, size_t samples)
{
    const size_t fours = samples / 4;
    floatsFromFours(src, dst, fours);
    floatsFromWordsSingly(src + fours * 8, dst + fours * 16, samples % 4);
}

}
}
