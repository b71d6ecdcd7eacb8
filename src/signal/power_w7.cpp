// Powers four elements at a time, in two pairs of doubles: a table of logarithms with a short series, and a table of
// 256 exponentials with a straight line between. What the pairs cannot take goes singly.
#include <emmintrin.h>

#include "frame/rounding.h"
#include "signal/power_double.h"

namespace rux::w7 {
namespace {

constexpr int allLanes = 15;

inline int lanesOf(__m128i masks)
{
    return _mm_movemask_ps(_mm_castsi128_ps(masks));
}

inline __m128i loadFour(const uint8_t* from)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}

inline void storeFour(uint32_t* to, __m128i elements)
{
    _mm_store_si128(reinterpret_cast<__m128i*>(to), elements);
}

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

// Four positive normal floats x = z 2^k, with z in the octave around 1 that the rows serve. The low byte of a row's
// number tells the row.
struct Parts {
    __m128 z;
    __m128i k;
    alignas(16) uint32_t rows[4];
};

inline void splitFour(__m128i x, Parts& parts)
{
    const __m128i distance = _mm_sub_epi32(x, _mm_set1_epi32(firstMantissa));
    parts.k = _mm_srai_epi32(distance, 23);
    parts.z = _mm_castsi128_ps(_mm_sub_epi32(x, _mm_and_si128(distance, _mm_set1_epi32(-0x800000))));
    storeFour(parts.rows, _mm_srli_epi32(distance, 15));
}

inline __m128d rowAt(uint32_t row)
{
    return _mm_load_pd(&logarithms[row & 255].reciprocal);
}

// y log2(z 2^k) = y (k + log2(c)) + r y (first + second r), with r = z / c - 1, which is within 2^-9 of 0 and exact in
// the row around 1.
inline __m128d scaledLogarithms(const Exponent& exponent, __m128d z, __m128d k, __m128d rowA, __m128d rowB)
{
    const __m128d whole = _mm_mul_pd(_mm_add_pd(k, _mm_unpackhi_pd(rowA, rowB)), exponent.y);
    const __m128d r = _mm_sub_pd(_mm_mul_pd(z, _mm_unpacklo_pd(rowA, rowB)), _mm_set1_pd(1.0));
    const __m128d series = _mm_add_pd(_mm_mul_pd(exponent.second, r), exponent.first);
    return _mm_add_pd(_mm_mul_pd(series, r), whole);
}

// Two exponents of two, t = s + r with s in whole 256ths and |r| at most 2^-9. Of the sum of t and 3 2^43 the last bit
// weighs 1/256, so that its low bits are 256 s.
struct Binary {
    __m128d sum;
    __m128d r;

    static Binary of(__m128d t)
    {
        const __m128d shift = _mm_set1_pd(0x1.8p44);
        const __m128d sum = _mm_add_pd(t, shift);
        return {sum, _mm_sub_pd(t, _mm_sub_pd(sum, shift))};
    }
};

inline const double* stepAt(uint8_t index)
{
    return reinterpret_cast<const double*>(&pairExponentials[index]);
}

// 2^s (1 + r (2^r - 1) / r), as floats in the lower half. The steps of 1/256 are the low byte of the sum.
inline __m128 powersOfTwo(const Binary& t)
{
    const uint8_t* sums = reinterpret_cast<const uint8_t*>(&t.sum);
    const __m128d step = _mm_loadh_pd(_mm_load_sd(stepAt(sums[0])), stepAt(sums[8]));
    const __m128i octaves = _mm_slli_epi64(_mm_castpd_si128(t.sum), 44);
    const __m128d power = _mm_castsi128_pd(_mm_add_epi64(_mm_castpd_si128(step), octaves));
    return _mm_cvtpd_ps(_mm_add_pd(_mm_mul_pd(_mm_mul_pd(power, _mm_set1_pd(pairSlope)), t.r), power));
}

// The elements that the pairs can take with one exponent: positive, normal, finite, and of a power between 2^-1000 and
// 2^1000, which a double holds and which as a float may be zero or infinite.
class Range {
public:
    explicit Range(uint32_t y)
    {
        if (magnitude(y) > bitsOf(300.0f)) return;
        const int32_t sixteenths = static_cast<int32_t>(floatOf(magnitude(y)) * 16);   // exact, and cut off
        const int32_t octaves = sixteenths < 40 ? 126 : 5120 / (sixteenths + 1);
        first = _mm_set1_epi32((127 - octaves) << 23);
        last = _mm_set1_epi32(((127 + octaves + 2) << 23) - 1);
    }

    // All bits set in the lanes in which an element from the least to the greatest is outside. The vectors are compared
    // by words: the upper ones, signed, hold a float's sign and exponent.
    __m128i outside(__m128i least, __m128i greatest) const
    {
        const __m128i words = _mm_or_si128(_mm_cmpgt_epi16(first, least), _mm_cmpgt_epi16(greatest, last));
        return _mm_srai_epi32(words, 16);
    }

private:
    __m128i first = _mm_set1_epi32(0x7FFFFFFF);
    __m128i last = _mm_set1_epi32(INT32_MIN);
};

class Vector {
public:
    ruxStatus status = ruxStatusOk;

    explicit Vector(uint32_t y) : y(y), range(y)
    {
    }

    // Some groups of four at a time: all rows, all logarithms, all exponentials. Short chains of operations, each many
    // times side by side, keep the processor busier than one long one. Not inlined: compilers move arithmetic over a
    // change of the control register.
    [[gnu::noinline]] void raise(const uint8_t* src, uint8_t* dst, size_t groups)
    {
        const Exponent exponent(isFinite(y) ? floatOf(y) : 0.0f);
        for (; groups > groupsTogether; groups -= groupsTogether, src += bytesTogether, dst += bytesTogether)
            raiseTogether(exponent, src, dst, groupsTogether);
        if (groups > 0) raiseTogether(exponent, src, dst, groups);
    }

private:
    static constexpr size_t groupsTogether = 16;
    static constexpr size_t bytesTogether = groupsTogether * 16;

    struct Four {
        Binary low;
        Binary high;
    };

    void raiseTogether(const Exponent& exponent, const uint8_t* src, uint8_t* dst, size_t count)
    {
        Parts parts[groupsTogether];
        __m128i least = loadFour(src), greatest = least;
        for (size_t i = 0; i < count; ++i) {
            const __m128i x = loadFour(src + i * 16);
            splitFour(x, parts[i]);
            least = _mm_min_epi16(least, x);
            greatest = _mm_max_epi16(greatest, x);
        }

        if (__builtin_expect(lanesOf(range.outside(least, greatest)) != 0, 0))
            return raiseOutside(exponent, src, dst, count);

        Four powers[groupsTogether];
        for (size_t i = 0; i < count; ++i) {
            const __m128 z = parts[i].z;
            const __m128i k = parts[i].k;
            const uint32_t* rows = parts[i].rows;
            powers[i].low = Binary::of(scaledLogarithms(exponent, _mm_cvtps_pd(z), _mm_cvtepi32_pd(k), rowAt(rows[0]),
                                                        rowAt(rows[1])));
            powers[i].high = Binary::of(scaledLogarithms(exponent, _mm_cvtps_pd(_mm_movehl_ps(z, z)),
                                                         _mm_cvtepi32_pd(_mm_unpackhi_epi64(k, k)), rowAt(rows[2]),
                                                         rowAt(rows[3])));
        }
        for (size_t i = 0; i < count; ++i) storePowers(dst + i * 16, powers[i]);
    }

    static void storePowers(uint8_t* dst, const Four& powers)
    {
        _mm_storeu_ps(reinterpret_cast<float*>(dst), _mm_movelh_ps(powersOfTwo(powers.low), powersOfTwo(powers.high)));
    }

    // For the elements outside the pairs compute ones: arithmetic on what is no number of theirs would raise the
    // processor's flags.
    [[gnu::noinline]] void raiseOutside(const Exponent& exponent, const uint8_t* src, uint8_t* dst, size_t count)
    {
        alignas(16) uint32_t elements[4 * groupsTogether];   // kept: in place the powers overwrite them
        alignas(16) uint32_t inside[4 * groupsTogether];
        int lanes[groupsTogether], lanesEverywhere = allLanes;
        for (size_t i = 0; i < count; ++i) {
            const __m128i x = loadFour(src + i * 16);
            const __m128i outside = range.outside(x, x);
            const __m128i ones = _mm_and_si128(outside, _mm_set1_epi32(static_cast<int32_t>(positiveOne)));
            storeFour(elements + 4 * i, x);
            storeFour(inside + 4 * i, _mm_or_si128(_mm_andnot_si128(outside, x), ones));
            lanes[i] = lanesOf(outside);
            lanesEverywhere &= lanes[i];
        }
        if (lanesEverywhere != allLanes) raiseTogether(exponent, bytesOf(inside), dst, count);
        for (size_t i = 0; i < count; ++i) raiseLanes(lanes[i], elements + 4 * i, dst + i * 16);
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
    Range range;
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
