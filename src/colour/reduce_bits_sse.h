// ReduceBits in vectors of four floats, each step rounded to float.
//
// The level gives the conversions between bytes and floats.
#pragma once

#include <xmmintrin.h>

#include "colour/reduce_bits.h"

namespace rux::RUX_LEVEL {
namespace {

// Floats of 0 or more, below 2^22, without their fraction. Of others the result does not matter.
__m128 truncated(__m128 values);

inline __m128 all(float value)
{
    return _mm_set1_ps(value);
}

inline __m128 fourFloats(const float* a, const float* b, const float* c, const float* d)
{
    return _mm_movelh_ps(_mm_unpacklo_ps(_mm_load_ss(a), _mm_load_ss(b)),
                         _mm_unpacklo_ps(_mm_load_ss(c), _mm_load_ss(d)));
}

// mask ? a : b
inline __m128 chosen(__m128 mask, __m128 a, __m128 b)
{
    return _mm_or_ps(_mm_and_ps(mask, a), _mm_andnot_ps(mask, b));
}

// The levels in units of a sample. Quotient and product are rounded once: double holds their operands' result well
// enough for that.
struct Staircase {
    float step;
    float inverse;

    explicit Staircase(int32_t top)
        : step(roundedToSingle(255.0 / top)), inverse(roundedToSingle(top * double(0.003921568859368563f)))
    {
    }
};

inline double scaledNoise(double step, int32_t amount)
{
    return roundedToSingle(double(roundedToSingle(step * amount)) * percent);
}

NoiseRange diffusionNoise(int32_t top, int32_t noise)
{
    const double step = Staircase(top).step;
    return {scaledNoise(step, 50 - noise), scaledNoise(step, 50 + noise)};
}

NoiseRange orderedNoise(int32_t noise)
{
    return {scaledNoise(1.0, -noise), scaledNoise(1.0, noise)};
}

ruxStatus reduceInMode(const ReducedImages& images, int32_t top, int32_t noise, ruxDitherType ditherType)
{
    return reduce(images, top, noise, ditherType);
}

// The staircase in vectors.
struct Stairs {
    __m128 step;
    __m128 inverse;

    explicit Stairs(const Staircase& staircase) : step(all(staircase.step)), inverse(all(staircase.inverse)) {}
};

// The level of each value: that of the whole steps below it, or the next one where what is left is above the threshold.
struct Level {
    __m128 value;
    __m128 error;
};

inline Level levelOf(const Stairs& stairs, __m128 values, __m128 thresholds)
{
    const __m128 below = _mm_mul_ps(truncated(_mm_mul_ps(values, stairs.inverse)), stairs.step);
    const __m128 above = _mm_add_ps(below, stairs.step);
    const __m128 rest = _mm_sub_ps(values, below);
    const __m128 isAbove = _mm_cmplt_ps(thresholds, rest);
    return {_mm_add_ps(below, _mm_and_ps(isAbove, stairs.step)), chosen(isAbove, _mm_sub_ps(values, above), rest)};
}

}
}
