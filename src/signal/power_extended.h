// Powers on the floating-point stack in extended precision: 2^(y log2 x) by a table of quartics for the logarithm and
// a table of 64 with a cubic for the exponential.
#pragma once

#include "signal/power_special.h"
#include "signal/power_tables.h"

namespace rux::RUX_LEVEL {
namespace {

// A sum with it has its last single-precision bit at 1/64.
constexpr float splitConstant = 196608.0f;

// 2^r for |r| up to 1/128, lowest power first.
constexpr double exponentialSeries[4] = {0.9999999999955212, 0.6931471805667752, 0.24022709400192294,
                                         0.055504027283296176};

// The value rounded to single precision and to double by a store, never in a register.
inline uint32_t storedSingle(long double value)
{
    float single = static_cast<float>(value);
    asm("" : "+m"(single));
    return load<uint32_t>(&single);
}

inline uint64_t storedDouble(long double value)
{
    double number = static_cast<double>(value);
    asm("" : "+m"(number));
    return load<uint64_t>(&number);
}

// The even and the odd powers run side by side.
inline long double logarithmOf(Split x)
{
    const uint32_t row = x.mantissa >> 15 & 0xFF;
    const Coefficient* const a = logarithms[row];
    const long double m = floatOf(x.mantissa);
    const long double r = row == 0 ? m - 1 : m;
    const long double square = r * r;
    return ((a[4].value * square + a[2].value) * square + a[0].value + x.exponent) +
           r * (a[3].value * square + a[1].value);
}

// Of a finite positive number; the sign is put on the result.
inline uint32_t powerOfSize(uint32_t size, float y, uint32_t sign)
{
    const long double t = y * logarithmOf(split(size));
    const uint32_t highWord = static_cast<uint32_t>(storedDouble(t) >> 32);
    if (isBeyond(magnitude(highWord))) return powerBeyond(highWord, sign);

    const uint32_t sum = storedSingle(t + splitConstant);   // t in 64ths: n above, j in the last six bits
    const long double r = t - (static_cast<long double>(floatOf(sum)) - splitConstant);
    const uint64_t scaleBits = static_cast<uint64_t>((sum + 0xFFC0) & 0x1FFC0) << (14 + 32);   // 2^n
    const long double series =
        ((exponentialSeries[3] * r + exponentialSeries[2]) * r + exponentialSeries[1]) * r + exponentialSeries[0];
    return storedSingle(load<double>(&scaleBits) * static_cast<long double>(exponentials[sum & 63]) * series) | sign;
}

// The first line that fits decides.
inline Power powerOf(uint32_t x, uint32_t y)
{
    if (magnitude(y) == 0) return {positiveOne};
    if (y == positiveOne) return {x};
    if (x == positiveOne) return {positiveOne};
    if (isNan(y)) return {y};
    if (isNan(x)) return {x};
    if (magnitude(x) == infinity) return powerOfInfinity(x, y);
    if (magnitude(y) == infinity) return powerToInfinity(x, y);
    if (magnitude(x) == 0) return powerOfZero(x, y);
    if (isNegative(x) && y == (positiveOne | signBit)) return {storedSingle(1.0 / static_cast<double>(floatOf(x)))};
    if (isNegative(x) && parityOf(y) == Parity::fraction) return outsideDomain();
    if (magnitude(x) == positiveOne) return {positiveOne | signOfPower(x, y)};
    return {powerOfSize(magnitude(x), floatOf(y), signOfPower(x, y))};
}

// A group of ordinary elements, or else all of it by the scalar routine.
inline ruxStatus raiseGroup(const uint8_t* src, uint32_t y, uint8_t* dst, size_t count, ruxStatus status)
{
    bool ordinary = isFinite(y);
    for (size_t i = 0; i < count; ++i) ordinary = ordinary && isOrdinary(load<uint32_t>(src + i * 4));
    if (ordinary) {
        for (size_t i = 0; i < count; ++i) store(dst + i * 4, powerOfSize(load<uint32_t>(src + i * 4), floatOf(y), 0));
        return status;
    }
    for (size_t i = 0; i < count; ++i) {
        const Power power = powerOf(load<uint32_t>(src + i * 4), y);
        store(dst + i * 4, power.bits);
        if (power.status != ruxStatusOk) status = power.status;
    }
    return status;
}

[[gnu::noinline]] ruxStatus raiseGroups(const uint8_t* src, uint32_t y, uint8_t* dst, size_t elements)
{
    ruxStatus status = ruxStatusOk;
    for (; elements >= 4; elements -= 4, src += 16, dst += 16) status = raiseGroup(src, y, dst, 4, status);
    for (; elements > 0; --elements, src += 4, dst += 4) status = raiseGroup(src, y, dst, 1, status);
    return status;
}

ruxStatus raiseVector(const uint8_t* src, uint32_t y, uint8_t* dst, size_t elements)
{
    const ExtendedPrecision precision;
    return raiseGroups(src, y, dst, elements);
}

}
}
