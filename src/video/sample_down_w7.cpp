// Halving a plane in SSE2, 16, 8 and 4 samples at a time.
//
// (sum + 3) >> 2 is the sum's quarter rounded up, which is the half rounded up of its half rounded up.
#include <emmintrin.h>

#include "video/sample_down.h"

namespace rux::w7 {
namespace {

// Neighbours added, each sum in a word.
inline __m128i sumOfPairs(__m128i bytes)
{
    return _mm_add_epi16(_mm_and_si128(bytes, _mm_set1_epi16(255)), _mm_srli_epi16(bytes, 8));
}

inline __m128i means(__m128i upper, __m128i lower)
{
    return _mm_avg_epu16(_mm_avg_epu16(sumOfPairs(upper), sumOfPairs(lower)), _mm_setzero_si128());
}

inline __m128i meansAt(const uint8_t* upper, const uint8_t* lower)
{
    return means(_mm_loadu_si128(reinterpret_cast<const __m128i*>(upper)),
                 _mm_loadu_si128(reinterpret_cast<const __m128i*>(lower)));
}

void halveRows(const uint8_t* upper, const uint8_t* lower, uint8_t* dst, int32_t width)
{
    for (; width >= 16; width -= 16) {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(dst),
                         _mm_packus_epi16(meansAt(upper, lower), meansAt(upper + 16, lower + 16)));
        upper += 32;
        lower += 32;
        dst += 16;
    }
    if (width >= 8) {
        const __m128i eight = meansAt(upper, lower);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(dst), _mm_packus_epi16(eight, eight));
        upper += 16;
        lower += 16;
        dst += 8;
        width -= 8;
    }
    if (width >= 4) {
        const __m128i four = means(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(upper)),
                                   _mm_loadl_epi64(reinterpret_cast<const __m128i*>(lower)));
        store(dst, _mm_cvtsi128_si32(_mm_packus_epi16(four, four)));
        upper += 8;
        lower += 8;
        dst += 4;
        width -= 4;
    }
    halveSamples(upper, lower, dst, width);
}

}
}
