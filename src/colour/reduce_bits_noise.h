// The noise on the thresholds of ReduceBits: two tables, made anew in each call by a generator of fixed seed.
#pragma once

#include "frame/float_environment.h"

namespace rux::RUX_LEVEL {
namespace {

constexpr int32_t noiseEntries = 1024;

// Subtraction with borrow over three words, added to a congruential word; all wrap.
class UniformGenerator {
public:
    explicit UniformGenerator(uint32_t seed)
        : congruential(1131199209), first(seed), second(nextCongruential(first)), third(nextCongruential(second)),
          borrow(0xFFFFFFFF)
    {
    }

    int32_t next()
    {
        congruential = nextCongruential(congruential);
        uint32_t word = second - third + borrow;
        borrow = 0;
        if (word >> 31) {
            word -= 18;
            borrow = 0xFFFFFFFF;
        }
        third = second;
        second = first;
        first = word;
        return static_cast<int32_t>(word + congruential);
    }

private:
    static uint32_t nextCongruential(uint32_t word) { return word * 69069 + 1013904243; }

    uint32_t congruential, first, second, third, borrow;
};

struct NoiseRange {
    double low, high;

    // Where a number of the generator, uniform over all integers of 32 bits, lies in the range. The contract writes
    // 2^-32 in decimals, which give a double just above it.
    double at(int32_t number) const { return (low + high) * 0.5 + number * (high - low) * 2.3283064365387e-10; }
};

struct NoiseTables {
    const float* values;
    const uint16_t* indices;

    // Where the value of a column stands.
    const float* entry(int32_t x, int32_t offset) const
    {
        return values + ((indices[x & (noiseEntries - 1)] + offset) & (noiseEntries - 1));
    }
};

// Each table has a generator of its own; both begin alike, so that one gives the numbers of both. Under the guard of
// double precision.
[[gnu::noinline]] void fillNoise(float* values, uint16_t* indices, NoiseRange range)
{
    UniformGenerator generator(0);
    for (int32_t i = 0; i < noiseEntries; ++i) {
        const int32_t number = generator.next();
        values[i] = roundedToSingle(range.at(number));
        indices[i] = static_cast<uint16_t>(NoiseRange{0, 1024}.at(number));
    }
}

}
}
