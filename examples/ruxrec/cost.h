// Distortion and bits in one number. It is whole: with fractions, 32-bit and 64-bit builds could decide differently.
#pragma once

#include <cstdint>
#include <limits>

using Cost = int64_t;

constexpr Cost unitOfCost = 256;   // of a difference of 1
constexpr Cost endlessCost = std::numeric_limits<Cost>::max();

inline Cost costOf(int64_t difference, int bits, Cost worthOfBit)
{
    return difference * unitOfCost + worthOfBit * bits;
}

// What a bit is worth beside squared differences: 0.18 times the square of the quantiser's scale. Found by trial.
inline Cost worthOfBitSquared(int scale)
{
    return 46 * Cost(scale) * scale;
}

// And beside absolute ones: the root of that.
inline Cost worthOfBitAbsolute(int scale)
{
    return 108 * Cost(scale);
}
