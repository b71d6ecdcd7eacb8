// What the scalar power routines share: the kinds of floats, the events that a host hears of, and the results that
// need no arithmetic. Elements and exponents are given by their bits.
#pragma once

#include "signal/power.h"

namespace rux::RUX_LEVEL {
namespace {

constexpr uint32_t signBit = 0x80000000;
constexpr uint32_t positiveZero = 0;
constexpr uint32_t positiveOne = 0x3F800000;
constexpr uint32_t infinity = 0x7F800000;
constexpr uint32_t notANumber = 0xFFC00000;

inline uint32_t magnitude(uint32_t x)
{
    return x & ~signBit;
}

inline bool isNegative(uint32_t x)
{
    return (x & signBit) != 0;
}

inline bool isNan(uint32_t x)
{
    return magnitude(x) > infinity;
}

inline bool isFinite(uint32_t x)
{
    return magnitude(x) < infinity;
}

// Positive, normal and finite.
inline bool isOrdinary(uint32_t x)
{
    return x > 0x007FFFFF && x < infinity;
}

enum class Parity { fraction, even, odd };

// Of a finite number; from 2^24 on all are even.
inline Parity parityOf(uint32_t y)
{
    const int32_t exponent = static_cast<int32_t>(magnitude(y) >> 23) - 127;
    if (exponent < 0) return Parity::fraction;
    if (exponent > 23) return Parity::even;
    const uint32_t unit = uint32_t{1} << (23 - exponent);
    const uint32_t significand = (y & 0x007FFFFF) | 0x00800000;
    if (significand & (unit - 1)) return Parity::fraction;
    return significand & unit ? Parity::odd : Parity::even;
}

// The result for one element, and its event if there is one.
struct Power {
    uint32_t bits;
    ruxStatus status = ruxStatusOk;
};

// The processor's flags tell of the events too: they are raised by operations that no compiler sees through.
inline Power singularity(uint32_t bits)
{
    volatile float dividend = 1.0f;
    volatile float divisor = 0.0f;
    volatile float quotient = dividend / divisor;
    (void)quotient;
    return {bits, ruxStatusSingularity};
}

inline Power outsideDomain()
{
    volatile uint32_t signalling = 0x7FBFFFFF;
    volatile float sum = floatOf(signalling) + 1.0f;
    (void)sum;
    return {notANumber, ruxStatusOutsideDomain};
}

// The sign of x, for an odd power of a negative x.
inline uint32_t signOfPower(uint32_t x, uint32_t y)
{
    return isNegative(x) && isFinite(y) && parityOf(y) == Parity::odd ? signBit : 0;
}

inline Power powerOfInfinity(uint32_t x, uint32_t y)
{
    return {(isNegative(y) ? positiveZero : infinity) | signOfPower(x, y)};
}

// Of a finite y.
inline Power powerOfZero(uint32_t x, uint32_t y)
{
    const uint32_t sign = signOfPower(x, y);
    return isNegative(y) ? singularity(infinity | sign) : Power{positiveZero | sign};
}

// Of a finite x that is not 1, and an infinite y.
inline Power powerToInfinity(uint32_t x, uint32_t y)
{
    const uint32_t size = magnitude(x);
    if (size == positiveOne) return {positiveOne};
    if (isNegative(y) && size == 0) return singularity(infinity);
    return {(size > positiveOne) == isNegative(y) ? positiveZero : infinity};
}

// A finite positive number as m 2^k with 1 <= m < 2, m by its bits.
struct Split {
    uint32_t mantissa;
    int32_t exponent;
};

inline Split split(uint32_t size)
{
    int32_t exponent = static_cast<int32_t>(size >> 23) - 127;
    if (size < 0x00800000) {   // denormal: its first bit moves to the place of the implied one
        const int shift = __builtin_clz(size) - 8;
        size <<= shift;
        exponent = -126 - shift;
    }
    return {(size & 0x007FFFFF) | positiveOne, exponent};
}

// Where t is too far out for 2^t to be computed. By the high word of t as a double: above 512, or below -512.
inline bool isBeyond(uint32_t highWord)
{
    return highWord > 0x40800000 && highWord <= 0x7FF00000;
}

// The result there; a small one is +0 whatever the sign.
inline uint32_t powerBeyond(uint32_t highWord, uint32_t sign)
{
    return isNegative(highWord) ? positiveZero : infinity | sign;
}

}
}
