// Inverse quantisation in vectors of words. Every product, and the sum of product and rounding, wraps at 16 bits.
#pragma once

#include "video/inverse_quantisation.h"

namespace rux::RUX_LEVEL {
namespace {

// Rounds, clamps and stores vectors of products, and keeps the parity of what it stored.
template <typename Words>
class Reconstruction {
public:
    // (product + bias) >> shift: with a bias of 2^shift - 1 for a negative quotient, a division toward zero.
    template <int shift>
    void put(uint8_t* at, Words product, Words bias)
    {
        const Words quotient = shiftedRight<shift>(wrappingSum(product, bias));
        const Words clamped = larger(smaller(quotient, Words::broadcast(2047)), Words::broadcast(-2048));
        clamped.store(at);
        bits = bits ^ clamped;
    }
    int32_t parity() const
    {
        uint32_t pairs[sizeof(Words) / 4];
        bits.store(pairs);
        uint32_t folded = 0;
        for (const uint32_t pair : pairs) folded ^= pair;
        return (folded ^ folded >> 16) & 1;
    }

private:
    Words bits = Words::broadcast(0);
};

// 2 v + sign(v): the masks of v < 0 and v > 0 are -1.
template <typename Words>
inline Words doubledAwayFromZero(Words v, Words isNegative)
{
    const Words isPositive = isGreater(v, Words::broadcast(0));
    return wrappingDifference(wrappingSum(wrappingSum(v, v), isNegative), isPositive);
}

template <typename Words>
inline int32_t reconstructIntraWords(uint8_t* coefficients, int32_t quantScale, const uint8_t* matrix)
{
    const Words scale = Words::broadcast(static_cast<int16_t>(quantScale));
    const Words zero = Words::broadcast(0);
    const Words rounding = Words::broadcast(15);
    const int16_t dc = load<int16_t>(coefficients);

    Reconstruction<Words> result;
    for (int at = 0; at < 128; at += sizeof(Words)) {
        const Words v = Words::load(coefficients + at);
        const Words product = lowProduct(lowProduct(v, scale), Words::load(matrix + at));
        result.template put<4>(coefficients + at, product, andNot(isGreater(v, zero), rounding));
    }
    const int16_t inPlaceOfDc = load<int16_t>(coefficients);
    store(coefficients, dc);
    return result.parity() ^ inPlaceOfDc ^ dc;
}

// The product is divided by 32, or by 2 where all weights are 16 and are left out of it.
template <typename Words, bool hasMatrix>
inline int32_t reconstructWords(uint8_t* coefficients, int32_t quantScale, const uint8_t* matrix)
{
    constexpr int shift = hasMatrix ? 5 : 1;
    const Words scale = Words::broadcast(static_cast<int16_t>(quantScale));
    const Words zero = Words::broadcast(0);
    const Words rounding = Words::broadcast((1 << shift) - 1);

    Reconstruction<Words> result;
    for (int at = 0; at < 128; at += sizeof(Words)) {
        const Words v = Words::load(coefficients + at);
        const Words isNegative = isGreater(zero, v);
        Words product = lowProduct(doubledAwayFromZero(v, isNegative), scale);
        if constexpr (hasMatrix) product = lowProduct(product, Words::load(matrix + at));
        result.template put<shift>(coefficients + at, product, isNegative & rounding);
    }
    return result.parity();
}

}
}
