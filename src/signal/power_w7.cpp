// Powers four elements at a time: the logarithm and its product with the exponent in two pairs of doubles, the
// exponential in four floats. What the pairs cannot take goes singly.
#include <emmintrin.h>

#include "frame/rounding.h"
#include "signal/power_double.h"

namespace rux::w7 {
namespace {

// Of one exponent: the series of the logarithm with the exponent multiplied in.
struct Exponent {
    __m128d y;
    __m128d first;
    __m128d second;

    explicit Exponent(double exponent)
        : y(_mm_set1_pd(exponent)), first(_mm_set1_pd(exponent * pairLogarithm[0])),
          second(_mm_set1_pd(exponent * pairLogarithm[1]))
    {
    }
};

// The rows of four elements, as their offsets in bytes.
inline __m128i rowOffsets(__m128i x)
{
    const __m128i distance = _mm_sub_epi32(x, _mm_set1_epi32(firstMantissa));
    return _mm_and_si128(_mm_srli_epi32(distance, 15 - 4), _mm_set1_epi32(255 << 4));
}

inline __m128d rowAt(uint32_t offset)
{
    return _mm_load_pd(reinterpret_cast<const double*>(bytesOf(logarithms) + offset));
}

// y (k + log2(c) + r (first + second r)) with r = z / c - 1; z / c is within 2^-9 of 1, and is exact around 1.
inline __m128d scaledLogarithm(const Exponent& exponent, __m128d z, __m128d k, __m128d rowA, __m128d rowB)
{
    const __m128d reciprocal = _mm_unpacklo_pd(rowA, rowB);
    const __m128d whole = _mm_mul_pd(_mm_add_pd(k, _mm_unpackhi_pd(rowA, rowB)), exponent.y);
    const __m128d r = _mm_sub_pd(_mm_mul_pd(z, reciprocal), _mm_set1_pd(1.0));
    const __m128d series = _mm_add_pd(_mm_mul_pd(exponent.second, r), exponent.first);
    return _mm_add_pd(_mm_mul_pd(series, r), whole);
}

// y log2(x) of four positive normal floats x = z 2^k, z in the octave around 1 that the rows serve.
inline __m128 scaledLogarithms(const Exponent& exponent, __m128i x, const uint32_t* offsets)
{
    const __m128i distance = _mm_sub_epi32(x, _mm_set1_epi32(firstMantissa));
    const __m128i k = _mm_srai_epi32(distance, 23);
    const __m128 z = _mm_castsi128_ps(_mm_sub_epi32(x, _mm_slli_epi32(k, 23)));
    const __m128d low =
        scaledLogarithm(exponent, _mm_cvtps_pd(z), _mm_cvtepi32_pd(k), rowAt(offsets[0]), rowAt(offsets[1]));
    const __m128d high =
        scaledLogarithm(exponent, _mm_cvtps_pd(_mm_movehl_ps(z, z)), _mm_cvtepi32_pd(_mm_unpackhi_epi64(k, k)),
                        rowAt(offsets[2]), rowAt(offsets[3]));
    return _mm_movelh_ps(_mm_cvtpd_ps(low), _mm_cvtpd_ps(high));
}

// 2^t for t = n + r with n whole and |r| at most 1/2: 1 + r times a series, with n added to the float's exponent.
inline __m128i powersOfTwo(__m128 t, __m128i n)
{
    const __m128 r = _mm_sub_ps(t, _mm_cvtepi32_ps(n));
    const __m128 square = _mm_mul_ps(r, r);
    const __m128 low = _mm_add_ps(_mm_mul_ps(_mm_set1_ps(pairExponential[0]), r), _mm_set1_ps(1.0f));
    __m128 high = _mm_add_ps(_mm_mul_ps(_mm_set1_ps(pairExponential[2]), r), _mm_set1_ps(pairExponential[1]));
    high = _mm_add_ps(_mm_mul_ps(_mm_set1_ps(pairExponential[3]), square), high);
    const __m128i power = _mm_castps_si128(_mm_add_ps(_mm_mul_ps(high, square), low));
    return _mm_add_epi32(power, _mm_slli_epi32(n, 23));
}

// Lanes that the pairs can take. An unsigned comparison is one of signed numbers with their top bits changed.
//
// Of elements, all that are positive, normal and finite: x - 0x00800000 below 0x7F000000.
inline __m128i areOrdinary(__m128i x)
{
    return _mm_cmplt_epi32(_mm_add_epi32(x, _mm_set1_epi32(0x7F800000)), _mm_set1_epi32(INT32_MIN + 0x7F000000));
}

// Of results, all that are sure to be normal floats: n from -125 to 127, n + 125 below 253.
inline __m128i areInRange(__m128i n)
{
    return _mm_cmplt_epi32(_mm_add_epi32(n, _mm_set1_epi32(INT32_MIN + 125)), _mm_set1_epi32(INT32_MIN + 253));
}

// Of one y. With one of 2^22 and more, infinite or NaN all lanes go singly: t might not fit 32 bits.
class Vector {
public:
    ruxStatus status = ruxStatusOk;

    explicit Vector(uint32_t y)
        : y(y), fits(magnitude(y) < 0x4A800000), exponent(fits ? floatOf(y) : 0.0f),
          fitting(_mm_set1_epi32(fits ? -1 : 0))
    {
    }

    // A few groups of four at a time: all places in the table, all logarithms, all exponentials. Short chains of
    // operations, each many times side by side, keep the processor busier than one long one.
    void raise(const uint8_t* src, uint8_t* dst, size_t groups)
    {
        for (; groups > groupsTogether; groups -= groupsTogether, src += sizeof(Groups::x), dst += sizeof(Groups::x))
            raiseTogether(src, dst, groupsTogether);
        raiseTogether(src, dst, groups);
    }

private:
    static constexpr size_t groupsTogether = 16;

    struct Groups {
        __m128i x[groupsTogether];   // kept: in place the results overwrite them
        __m128 t[groupsTogether];
        alignas(16) uint32_t offsets[groupsTogether][4];
    };

    void raiseTogether(const uint8_t* src, uint8_t* dst, size_t count)
    {
        Groups groups;
        __m128i inside = fitting;
        for (size_t i = 0; i < count; ++i) {
            const __m128i x = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + i * 16));
            groups.x[i] = x;
            _mm_store_si128(reinterpret_cast<__m128i*>(groups.offsets[i]), rowOffsets(x));
            inside = _mm_and_si128(inside, areOrdinary(x));
        }
        for (size_t i = 0; i < count; ++i)
            groups.t[i] = scaledLogarithms(exponent, groups.x[i], groups.offsets[i]);
        for (size_t i = 0; i < count; ++i) {
            const __m128i n = _mm_cvtps_epi32(groups.t[i]);
            _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + i * 16), powersOfTwo(groups.t[i], n));
            inside = _mm_and_si128(inside, areInRange(n));
        }
        if (__builtin_expect(_mm_movemask_epi8(inside) != 0xFFFF, 0)) raiseOutside(groups, dst, count);
    }

    [[gnu::noinline]] void raiseOutside(const Groups& groups, uint8_t* dst, size_t count)
    {
        for (size_t i = 0; i < count; ++i, dst += 16) {
            const __m128i range = areInRange(_mm_cvtps_epi32(groups.t[i]));
            const __m128i inside = _mm_and_si128(_mm_and_si128(areOrdinary(groups.x[i]), range), fitting);
            alignas(16) uint32_t x[4];
            _mm_store_si128(reinterpret_cast<__m128i*>(x), groups.x[i]);
            raiseLanes(~_mm_movemask_ps(_mm_castsi128_ps(inside)), x, dst);
        }
    }

    void raiseLanes(int lanes, const uint32_t* x, uint8_t* dst)
    {
        for (int i = 0; i < 4; ++i) {
            if (!(lanes >> i & 1)) continue;
            const Power power = powerOf(x[i], y);
            store(dst + i * 4, power.bits);
            if (power.status != ruxStatusOk) status = power.status;
        }
    }

    uint32_t y;
    bool fits;
    Exponent exponent;
    __m128i fitting;
};

ruxStatus raiseVector(const uint8_t* src, uint32_t y, uint8_t* dst, size_t elements)
{
    const VectorRounding guard(Rounding::nearest);
    Vector vector(y);
    const size_t groups = elements / 4;
    vector.raise(src, dst, groups);
    src += groups * 16, dst += groups * 16, elements %= 4;
    if (elements > 0) {   // beside them ones, whose powers are ones
        uint32_t last[4] = {positiveOne, positiveOne, positiveOne, positiveOne};
        for (size_t i = 0; i < elements; ++i) last[i] = load<uint32_t>(src + i * 4);
        vector.raise(bytesOf(last), bytesOf(last), 1);
        for (size_t i = 0; i < elements; ++i) store(dst + i * 4, last[i]);
    }
    return vector.status;
}

}
}
