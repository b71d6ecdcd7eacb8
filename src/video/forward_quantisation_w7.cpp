// Quantisation in single precision, eight coefficients a turn, with the processor's reciprocal estimate.
//
// What *count receives, and intra how a negative coefficient rounds, depends on whether the block and the matrix both
// stand on 16-byte boundaries.
#include "lanes/saturating_words8.h"

#include "video/forward_quantisation.h"

namespace rux::w7 {
namespace {

class TruncatedProducts {
public:
    // (v * unit) * estimate and v * (unit * estimate) are the same number: the unit is a power of two.
    TruncatedProducts(int32_t quantScale, int32_t unit)
        : factor(_mm_mul_ps(_mm_rcp_ps(_mm_set1_ps(static_cast<float>(quantScale))),
                            _mm_set1_ps(static_cast<float>(unit))))
    {
    }

    // Words widened with their sign. The truncated products saturate to words.
    SaturatingWords8 ofSigned(SaturatingWords8 words, const uint8_t* weights) const
    {
        return products(_mm_srai_epi32(_mm_unpacklo_epi16(words.value, words.value), 16),
                        _mm_srai_epi32(_mm_unpackhi_epi16(words.value, words.value), 16), weights);
    }

    SaturatingWords8 ofUnsigned(SaturatingWords8 words, const uint8_t* weights) const
    {
        const __m128i zero = _mm_setzero_si128();
        return products(_mm_unpacklo_epi16(words.value, zero), _mm_unpackhi_epi16(words.value, zero), weights);
    }

private:
    SaturatingWords8 products(__m128i low, __m128i high, const uint8_t* weights) const
    {
        return {_mm_packs_epi32(fourProducts(low, weights), fourProducts(high, weights + 16))};
    }

    __m128i fourProducts(__m128i values, const uint8_t* weights) const
    {
        const __m128 product = _mm_mul_ps(_mm_cvtepi32_ps(values), factor);
        return _mm_cvttps_epi32(_mm_mul_ps(product, _mm_loadu_ps(reinterpret_cast<const float*>(weights))));
    }

    __m128 factor;
};

inline bool areAligned(const uint8_t* coefficients, const uint8_t* matrix)
{
    return isAligned(coefficients, 16) && isAligned(matrix, 16);
}

inline SaturatingWords8 clampedLevels(SaturatingWords8 levels)
{
    return larger(smaller(levels, SaturatingWords8::broadcast(largestLevel)),
                  SaturatingWords8::broadcast(-largestLevel));
}

// r = (s * (t + s)) >> 1 with t from |v|, and s the sign of v: 1, 0 or -1. |-32768| is 32768. Where a sum saturates
// instead of leaving 16 bits, half of it is beyond the clamp either way.
inline SaturatingWords8 symmetricLevels(const TruncatedProducts& products, SaturatingWords8 v, const uint8_t* weights)
{
    const SaturatingWords8 zero = SaturatingWords8::broadcast(0);
    const SaturatingWords8 isNegative = isGreater(zero, v);
    const SaturatingWords8 isPositive = isGreater(v, zero);
    const SaturatingWords8 t = products.ofUnsigned(wrappingDifference(v ^ isNegative, isNegative), weights);
    const SaturatingWords8 sum = t + isNegative - isPositive;
    const SaturatingWords8 signedSum = (sum ^ isNegative) - isNegative;
    return shiftedRight<1>(signedSum & (isNegative | isPositive));
}

// r = (t + s) >> 1 with the sign of v in t as well: a negative v never becomes 0.
inline SaturatingWords8 steppedLevels(const TruncatedProducts& products, SaturatingWords8 v, const uint8_t* weights)
{
    const SaturatingWords8 zero = SaturatingWords8::broadcast(0);
    const SaturatingWords8 t = products.ofSigned(v, weights);
    return shiftedRight<1>(t + isGreater(zero, v) - isGreater(v, zero));
}

void quantiseIntra(uint8_t* coefficients, int32_t quantScale, const uint8_t* matrix, int32_t* count)
{
    const TruncatedProducts products(quantScale, intraUnit);
    const bool aligned = areAligned(coefficients, matrix);
    const int16_t dc = load<int16_t>(coefficients);
    for (int at = 0; at < 128; at += 16) {
        const SaturatingWords8 v = SaturatingWords8::load(coefficients + at);
        const uint8_t* const weights = matrix + 2 * at;
        const SaturatingWords8 levels =
            aligned ? symmetricLevels(products, v, weights) : steppedLevels(products, v, weights);
        clampedLevels(levels).store(coefficients + at);
    }
    store(coefficients, dc);
    store(count, 64);
}

void quantise(uint8_t* coefficients, int32_t quantScale, const uint8_t* matrix, int32_t* count)
{
    const TruncatedProducts products(quantScale, nonIntraUnit);
    SaturatingWords8 any = SaturatingWords8::broadcast(0);
    for (int at = 0; at < 128; at += 16) {
        const SaturatingWords8 v = SaturatingWords8::load(coefficients + at);
        const SaturatingWords8 levels = clampedLevels(products.ofSigned(v, matrix + 2 * at));
        levels.store(coefficients + at);
        any = any | levels;
    }
    if (!areAligned(coefficients, matrix)) return;
    const __m128i isZero = _mm_cmpeq_epi8(any.value, _mm_setzero_si128());
    store(count, _mm_movemask_epi8(isZero) == 0xFFFF ? 0 : 1);
}

}
}
