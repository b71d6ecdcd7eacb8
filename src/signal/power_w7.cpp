// Powers four elements at a time, in floats: a short series for the logarithm and one for the exponential, no table.
// What the floats cannot take goes singly.
#include <emmintrin.h>

#include "frame/rounding.h"
#include "signal/power_double.h"

namespace rux::w7 {
namespace {

constexpr int allLanes = 15;

// The single-precision bits of sqrt(1/2), with which the octave around 1 begins.
constexpr int32_t firstOfOctave = 0x3F3504F3;

// A positive normal float x = z 2^k with z in the octave around 1, four times: k 2^23, and (z - 1) / (z + 1), which is
// below 0.172. Any other bits are taken as those of such a number, k from -256 to 255.
struct Parts {
    __m128 octaves;
    __m128 quotient;
};

inline Parts splitFour(__m128i x)
{
    const __m128 one = _mm_set1_ps(1.0f);
    const __m128i distance = _mm_sub_epi32(x, _mm_set1_epi32(firstOfOctave));
    const __m128i octaves = _mm_and_si128(distance, _mm_set1_epi32(-0x800000));
    const __m128 z = _mm_castsi128_ps(_mm_sub_epi32(x, octaves));
    return {_mm_cvtepi32_ps(octaves), _mm_div_ps(_mm_sub_ps(z, one), _mm_add_ps(z, one))};
}

// Of one exponent: the factors of the logarithm with the exponent multiplied in.
struct Exponent {
    __m128 octaves;
    __m128 series[3];

    explicit Exponent(float y)
    {
        const __m128 exponent = _mm_set1_ps(y);
        octaves = _mm_mul_ps(exponent, _mm_set1_ps(0x1p-23f));
        for (int i = 0; i < 3; ++i) series[i] = _mm_mul_ps(exponent, _mm_set1_ps(quadLogarithm[i]));
    }
};

// y log2(x) = y (k + s (first + second s^2 + third s^4)) with s the quotient.
inline __m128 scaledLogarithms(const Exponent& exponent, const Parts& x)
{
    const __m128 square = _mm_mul_ps(x.quotient, x.quotient);
    __m128 series = _mm_add_ps(_mm_mul_ps(exponent.series[2], square), exponent.series[1]);
    series = _mm_add_ps(_mm_mul_ps(series, square), exponent.series[0]);
    return _mm_add_ps(_mm_mul_ps(series, x.quotient), _mm_mul_ps(x.octaves, exponent.octaves));
}

// 2^t for t = n + r with n whole and |r| at most 1/2: 1 + r times a series, with n added to the float's exponent. Of
// the sum of t and 3 2^22 the last bit weighs 1, so that its last bits are n.
inline __m128i powersOfTwo(__m128 t)
{
    const __m128 shift = _mm_set1_ps(0x1.8p23f);
    const __m128 sum = _mm_add_ps(t, shift);
    const __m128 r = _mm_sub_ps(t, _mm_sub_ps(sum, shift));
    const __m128 square = _mm_mul_ps(r, r);
    const __m128 low = _mm_add_ps(_mm_mul_ps(_mm_set1_ps(quadExponential[0]), r), _mm_set1_ps(1.0f));
    __m128 high = _mm_add_ps(_mm_mul_ps(_mm_set1_ps(quadExponential[2]), r), _mm_set1_ps(quadExponential[1]));
    high = _mm_add_ps(_mm_mul_ps(_mm_set1_ps(quadExponential[3]), square), high);
    const __m128i power = _mm_castps_si128(_mm_add_ps(_mm_mul_ps(high, square), low));
    return _mm_add_epi32(power, _mm_slli_epi32(_mm_castps_si128(sum), 23));
}

// The lanes, as bits, in which all elements from the least to the greatest are positive, normal and finite. The vectors
// are compared by words: the upper ones, signed, hold a float's sign and exponent.
inline int areOrdinary(__m128i least, __m128i greatest)
{
    const __m128i outside = _mm_or_si128(_mm_cmpgt_epi16(_mm_set1_epi32(0x00800000), least),
                                         _mm_cmpgt_epi16(greatest, _mm_set1_epi32(0x7F7FFFFF)));
    return _mm_movemask_ps(_mm_castsi128_ps(outside)) ^ allLanes;
}

// The same for powers that are normal floats, by the least and the greatest exponent of two.
inline int areInRange(__m128 least, __m128 greatest)
{
    const __m128 outside =
        _mm_or_ps(_mm_cmplt_ps(least, _mm_set1_ps(-125.0f)), _mm_cmpgt_ps(greatest, _mm_set1_ps(127.0f)));
    return _mm_movemask_ps(outside) ^ allLanes;
}

inline __m128i loadFour(const uint8_t* from)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}

inline void storeFour(uint8_t* to, __m128i value)
{
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), value);
}

// Of one y. With one of 2^22 and more, infinite or NaN all lanes go singly; with others t is finite, whatever the bits
// of an element.
class Vector {
public:
    ruxStatus status = ruxStatusOk;

    explicit Vector(uint32_t y) : y(y), fitting(magnitude(y) < 0x4A800000 ? allLanes : 0)
    {
    }

    // Some groups of four at a time: all quotients, all logarithms, all exponentials. Short chains of operations, each
    // many times side by side, keep the processor busier than one long one. Not inlined: compilers move arithmetic over
    // a change of the control register.
    [[gnu::noinline]] void raise(const uint8_t* src, uint8_t* dst, size_t groups)
    {
        const Exponent exponent(fitting ? floatOf(y) : 0.0f);
        for (; groups > groupsTogether; groups -= groupsTogether, src += bytesTogether, dst += bytesTogether)
            raiseTogether(exponent, src, dst, groupsTogether);
        if (groups > 0) raiseTogether(exponent, src, dst, groups);
    }

private:
    static constexpr size_t groupsTogether = 16;
    static constexpr size_t bytesTogether = groupsTogether * 16;

    void raiseTogether(const Exponent& exponent, const uint8_t* src, uint8_t* dst, size_t count)
    {
        Parts parts[groupsTogether];
        __m128i leastElement = loadFour(src), greatestElement = leastElement;
        for (size_t i = 0; i < count; ++i) {
            const __m128i x = loadFour(src + i * 16);
            parts[i] = splitFour(x);
            leastElement = _mm_min_epi16(leastElement, x);
            greatestElement = _mm_max_epi16(greatestElement, x);
        }

        __m128 exponents[groupsTogether];
        __m128 least = _mm_setzero_ps(), greatest = least;
        for (size_t i = 0; i < count; ++i) {
            exponents[i] = scaledLogarithms(exponent, parts[i]);
            least = _mm_min_ps(least, exponents[i]);
            greatest = _mm_max_ps(greatest, exponents[i]);
        }

        const int inside = areOrdinary(leastElement, greatestElement) & areInRange(least, greatest) & fitting;
        if (__builtin_expect(inside != allLanes, 0)) return raiseOutside(src, exponents, dst, count);
        for (size_t i = 0; i < count; ++i) storeFour(dst + i * 16, powersOfTwo(exponents[i]));
    }

    [[gnu::noinline]] void raiseOutside(const uint8_t* src, const __m128* exponents, uint8_t* dst, size_t count)
    {
        for (size_t i = 0; i < count; ++i) {
            const __m128i x = loadFour(src + i * 16);
            storeFour(dst + i * 16, powersOfTwo(exponents[i]));
            const int inside = areOrdinary(x, x) & areInRange(exponents[i], exponents[i]) & fitting;
            raiseLanes(inside ^ allLanes, x, dst + i * 16);
        }
    }

    void raiseLanes(int lanes, __m128i elements, uint8_t* dst)
    {
        alignas(16) uint32_t x[4];
        _mm_store_si128(reinterpret_cast<__m128i*>(x), elements);
        for (int i = 0; i < 4; ++i) {
            if (!(lanes >> i & 1)) continue;
            const Power power = powerOf(x[i], y);
            store(dst + i * 4, power.bits);
            if (power.status != ruxStatusOk) status = power.status;
        }
    }

    uint32_t y;
    int fitting;   // all lanes or none
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
