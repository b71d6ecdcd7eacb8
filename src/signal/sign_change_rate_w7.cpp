// Zero crossings in vectors: eight 16-bit samples or four floats at a time.
#include <emmintrin.h>

#include "signal/sign_change_rate.h"

namespace rux::w7 {
namespace {

inline __m128i loadWords(const uint8_t* from)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}

inline __m128 loadFloats(const uint8_t* from)
{
    return _mm_loadu_ps(reinterpret_cast<const float*>(from));
}

inline int32_t sumOfFour(__m128i counts)
{
    counts = _mm_add_epi32(counts, _mm_unpackhi_epi64(counts, counts));
    return _mm_cvtsi128_si32(_mm_add_epi32(counts, _mm_shuffle_epi32(counts, 1)));
}

// 1 in each word whose product with the word before is negative: the sign of the product is that of its high half.
inline __m128i changes16s(const uint8_t* src)
{
    return _mm_srli_epi16(_mm_mulhi_epi16(loadWords(src - 2), loadWords(src)), 15);
}

// So many pairs of vectors keep each word's count below 2^15.
constexpr size_t countedPairs = 0x3FFF;

int32_t countChanges16s(const uint8_t* src, size_t samples)
{
    const __m128i ones = _mm_set1_epi16(1);
    __m128i total = _mm_setzero_si128();
    size_t i = 1;
    for (size_t pairs = (samples - 1) / 16; pairs > 0;) {
        size_t turn = pairs < countedPairs ? pairs : countedPairs;
        pairs -= turn;
        __m128i counts = _mm_setzero_si128();
        for (; turn > 0; --turn, i += 16) {
            counts = _mm_add_epi16(counts, changes16s(src + i * 2));
            counts = _mm_add_epi16(counts, changes16s(src + i * 2 + 16));
        }
        total = _mm_add_epi32(total, _mm_madd_epi16(counts, ones));
    }
    if (samples - i >= 8) {
        total = _mm_add_epi32(total, _mm_madd_epi16(changes16s(src + i * 2), ones));
        i += 8;
    }
    return sumOfFour(total) + countChanges16sSingly(src, i, samples);
}

// The product of two NaN is the first one: compilers, for which a product has no order, may not choose which that is.
inline __m128 productInOrder(__m128 first, __m128 second)
{
    asm("mulps %1, %0" : "+x"(first) : "x"(second));
    return first;
}

// 1 in each lane whose product has its sign bit set and is not a zero; of the NaN these are the negative ones.
inline __m128i changes32f(const uint8_t* src)
{
    const __m128 product = productInOrder(loadFloats(src - 4), loadFloats(src));
    const __m128i isZero = _mm_castps_si128(_mm_cmpeq_ps(product, _mm_setzero_ps()));
    return _mm_andnot_si128(isZero, _mm_srli_epi32(_mm_castps_si128(product), 31));
}

// Places 1 to 4, 5 to 8 and so on as vectors, whatever the alignment; the rest singly, where every NaN counts.
int32_t countChanges32f(const uint8_t* src, size_t samples)
{
    __m128i counts = _mm_setzero_si128();
    __m128i others = _mm_setzero_si128();
    size_t i = 1;
    for (; samples - i >= 8; i += 8) {
        counts = _mm_add_epi32(counts, changes32f(src + i * 4));
        others = _mm_add_epi32(others, changes32f(src + i * 4 + 16));
    }
    if (samples - i >= 4) {
        counts = _mm_add_epi32(counts, changes32f(src + i * 4));
        i += 4;
    }
    int32_t count = sumOfFour(_mm_add_epi32(counts, others));
    for (; i < samples; ++i) count += !(load<float>(src + i * 4 - 4) * load<float>(src + i * 4) >= 0);
    return count;
}

}
}
