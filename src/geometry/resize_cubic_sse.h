// Cubic interpolation in vectors of four, each step rounded to float.
//
// A row is cut in two: whole blocks of four, which are rounded, and the last 0 to 3 pixels, which are computed in
// another order and truncated. The level gives the conversions between bytes and floats.
#pragma once

#include <xmmintrin.h>

#include "arith/float_lanes.h"
#include "geometry/resize_cubic.h"

namespace rux::RUX_LEVEL {
namespace {

struct CubicTerms {
    __m128 a;
    __m128 e1;
    __m128 e2;
    __m128 e3;
};

// The terms of four stencils of bytes; differences of bytes are exact in any order.
CubicTerms loadTerms(const uint8_t* src, const int32_t* offsets);

// Combines the whole blocks of a row.
void combineBlocks(CubicRows& rows, float fraction, uint8_t* dst, int32_t width);

struct CubicFactors {
    __m128 u;
    __m128 h;
    __m128 q;
};

inline __m128 all(float value)
{
    return _mm_set1_ps(value);
}

// All lanes alike without the compiler's knowledge: from such vectors it would make steps of one lane, on the
// floating-point stack and unrounded.
inline __m128 allAlike(float value)
{
    __m128 lanes = _mm_set1_ps(value);
    asm("" : "+x"(lanes));
    return lanes;
}

inline CubicFactors rowBlockFactors(__m128 t)
{
    const __m128 u = _mm_add_ps(all(1.0f), t);
    const __m128 h = _mm_mul_ps(_mm_mul_ps(t, all(0.5f)), u);
    return {u, h, _mm_mul_ps(_mm_sub_ps(t, all(1.0f)), _mm_mul_ps(h, all(cubicThirdBelow)))};
}

inline CubicFactors columnBlockFactors(__m128 t)
{
    const __m128 u = _mm_add_ps(all(1.0f), t);
    const __m128 h = _mm_mul_ps(_mm_mul_ps(t, all(0.5f)), u);
    return {u, h, _mm_mul_ps(_mm_mul_ps(_mm_sub_ps(t, all(1.0f)), all(cubicThirdBelow)), h)};
}

inline CubicFactors tailFactors(__m128 t)
{
    const __m128 u = _mm_add_ps(all(1.0f), t);
    const __m128 h = _mm_mul_ps(_mm_mul_ps(u, t), all(0.5f));
    return {u, h, _mm_mul_ps(_mm_mul_ps(_mm_sub_ps(t, all(1.0f)), h), all(cubicThirdAbove))};
}

inline __m128 blockValue(const CubicTerms& terms, const CubicFactors& at)
{
    return _mm_add_ps(_mm_add_ps(terms.a, _mm_mul_ps(terms.e1, at.u)),
                      _mm_add_ps(_mm_mul_ps(terms.e2, at.h), _mm_mul_ps(terms.e3, at.q)));
}

inline __m128 tailValue(const CubicTerms& terms, const CubicFactors& at)
{
    return _mm_add_ps(_mm_add_ps(_mm_add_ps(terms.a, _mm_mul_ps(terms.e3, at.q)), _mm_mul_ps(terms.e2, at.h)),
                      _mm_mul_ps(terms.e1, at.u));
}

// The tail is one vector as well: it fills the row's spare room.
inline void scaleRowByFours(const uint8_t* src, const int32_t* offsets, const float* fractions, float* row,
                            int32_t width)
{
    int32_t j = 0;
    for (; j + 4 <= width; j += 4) {
        const CubicTerms terms = loadTerms(src, offsets + j);
        _mm_storeu_ps(row + j, blockValue(terms, rowBlockFactors(_mm_loadu_ps(fractions + j))));
    }
    if (j < width) {
        const CubicTerms terms = loadTerms(src, offsets + j);
        _mm_storeu_ps(row + j, tailValue(terms, tailFactors(_mm_loadu_ps(fractions + j))));
    }
}

inline __m128 differencesE2(__m128 b, __m128 c, __m128 e1)
{
    return _mm_sub_ps(_mm_sub_ps(c, b), e1);
}

// Four pixels of a block: rounded to nearest by the conversion that follows, the addition lifting what fell just
// below a half.
inline __m128 combineFour(CubicRows& rows, int32_t j, const CubicFactors& at)
{
    const __m128 a = _mm_loadu_ps(rows[0] + j);
    const __m128 b = _mm_loadu_ps(rows[1] + j);
    const __m128 c = _mm_loadu_ps(rows[2] + j);
    const __m128 d = _mm_loadu_ps(rows[3] + j);
    const __m128 e1 = _mm_sub_ps(b, a);
    const __m128 e2 = differencesE2(b, c, e1);
    const __m128 e3 = _mm_add_ps(_mm_sub_ps(d, e2), _mm_sub_ps(_mm_sub_ps(b, c), c));
    return _mm_add_ps(blockValue({a, e1, e2, e3}, at), all(0x1.4f8b58p-17f));
}

inline uint8_t truncatedByte(double value)
{
    const int32_t whole = static_cast<int32_t>(value + 1e-07);
    return static_cast<uint8_t>(whole < 0 ? 0 : whole > 255 ? 255 : whole);
}

// Differences and factors in float, the sum in double.
inline void combineTail(CubicRows& rows, float fraction, uint8_t* dst, int32_t from, int32_t width)
{
    float a[4], e1[4], e2[4], e3[4], u, h, q;
    const __m128 b = _mm_loadu_ps(rows[1] + from);
    const __m128 c = _mm_loadu_ps(rows[2] + from);
    const __m128 d = _mm_loadu_ps(rows[3] + from);
    const __m128 first = _mm_loadu_ps(rows[0] + from);
    const __m128 second = _mm_sub_ps(b, first);
    const __m128 third = differencesE2(b, c, second);
    _mm_storeu_ps(a, first);
    _mm_storeu_ps(e1, second);
    _mm_storeu_ps(e2, third);
    _mm_storeu_ps(e3, _mm_sub_ps(_mm_add_ps(_mm_sub_ps(_mm_sub_ps(d, c), c), b), third));
    const CubicFactors at = tailFactors(allAlike(fraction));
    _mm_store_ss(&u, at.u);
    _mm_store_ss(&h, at.h);
    _mm_store_ss(&q, at.q);
    for (int32_t j = from; j < width; ++j) {
        const int32_t k = j - from;
        dst[j] = truncatedByte(((a[k] + double(e3[k]) * q) + double(e2[k]) * h) + double(e1[k]) * u);
    }
}

void combineRowsCubic(CubicRows& rows, float fraction, uint8_t* dst, int32_t width)
{
    const int32_t blocks = width & ~3;
    combineBlocks(rows, fraction, dst, blocks);
    if (blocks < width) combineTail(rows, fraction, dst, blocks, width);
}

}
}
