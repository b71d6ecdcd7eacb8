// Powers singly in double precision: 2^(y log2 x) by a table of logarithms with a short series, and a table of 128
// exponentials.
#pragma once

#include "signal/power_special.h"
#include "signal/power_tables_w7.h"

namespace rux::w7 {
namespace {

inline double logarithmOf(Split x)
{
    const int32_t distance = static_cast<int32_t>(x.mantissa) - firstMantissa;
    const int32_t octave = distance >> 23;
    const LogarithmRow& row = logarithms[distance >> 15 & 255];
    const double r = floatOf(x.mantissa - (static_cast<uint32_t>(octave) << 23)) * row.reciprocal - 1;
    const double series = (singleLogarithm[2] * r + singleLogarithm[1]) * r + singleLogarithm[0];
    return series * r + (x.exponent + octave + row.logarithm);
}

// Of a finite positive number; the sign is put on the result.
inline uint32_t powerOfSize(uint32_t size, double y, uint32_t sign)
{
    const double t = y * logarithmOf(split(size));
    const uint32_t highWord = static_cast<uint32_t>(load<uint64_t>(&t) >> 32);
    if (isBeyond(magnitude(highWord))) return powerBeyond(highWord, sign);

    // t in 128ths in the last bits of a sum: n above, j in the last seven.
    const double shift = 0x1.8p45;
    const double sum = t + shift;
    const double r = t - (sum - shift);
    const uint64_t steps = load<uint64_t>(&sum);
    const uint64_t scaleBits = ((steps >> 7) + 1023) << 52;   // 2^n: what is above n's bits falls out
    const double series = (singleExponential[2] * r + singleExponential[1]) * r + singleExponential[0];
    const double power = load<double>(&scaleBits) * exponentials[steps & 127];
    const double factor = sign ? -1.0 : 1.0;
    const float result = static_cast<float>(factor * (power + power * (series * r)));
    return load<uint32_t>(&result);
}

// The first line that fits decides. x = 1, x = -1, y = 1 and y = -1 are computed as any other where both are finite.
inline Power powerOf(uint32_t x, uint32_t y)
{
    if (magnitude(y) == 0) return {positiveOne};
    if (x == positiveOne && !isFinite(y)) return {positiveOne};
    if (isNan(x)) return {x};
    if (isNan(y)) return {y};
    if (magnitude(x) == infinity) return powerOfInfinity(x, y);
    if (magnitude(y) == infinity) return powerToInfinity(x, y);
    if (magnitude(x) == 0) return powerOfZero(x, y);
    if (isNegative(x) && parityOf(y) == Parity::fraction) return outsideDomain();
    return {powerOfSize(magnitude(x), floatOf(y), signOfPower(x, y))};
}

}
}
