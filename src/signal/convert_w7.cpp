// Conversion of eight samples at a time.
#include <emmintrin.h>

#include "signal/convert.h"

namespace rux::w7 {
namespace {

// A word twice in 32 bits, shifted right with its sign: the sample.
inline void convertEight(const uint8_t* src, uint8_t* dst)
{
    const __m128i words = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src));
    const __m128 low = _mm_cvtepi32_ps(_mm_srai_epi32(_mm_unpacklo_epi16(words, words), 16));
    const __m128 high = _mm_cvtepi32_ps(_mm_srai_epi32(_mm_unpackhi_epi16(words, words), 16));
    _mm_storeu_ps(reinterpret_cast<float*>(dst), low);
    _mm_storeu_ps(reinterpret_cast<float*>(dst + 16), high);
}

void floatsFromWords(const uint8_t* src, uint8_t* dst, size_t samples)
{
    // Up to the destination's boundary singly: a store across two cache lines costs two.
    size_t head = isAligned(dst, 4) ? bytesToBoundary(dst, 16) / 4 : 0;
    if (head > samples) head = samples;
    floatsFromWordsSingly(src, dst, head);
    src += head * 2, dst += head * 4, samples -= head;

    for (; samples >= 16; samples -= 16, src += 32, dst += 64) {
        convertEight(src, dst);
        convertEight(src + 16, dst + 32);
    }
    if (samples >= 8) {
        convertEight(src, dst);
        samples -= 8, src += 16, dst += 32;
    }
    floatsFromWordsSingly(src, dst, samples);
}

}
}
