// Lowers levels that cost more bits than the distortion that they save is worth.
#pragma once

#include <cstdint>

#include "constants.h"
#include "cost.h"
#include "encode_tables.h"

class LevelThrift {
public:
    // weights: of an intra block; null for a non-intra one.
    LevelThrift(const RunLevelTable& table, const int16_t* weights, int scale, Cost worthOfBit)
        : table_(table), weights_(weights), scale_(scale), worthOfBit_(worthOfBit)
    {
    }

    // Works on the levels in place; an intra block's first coefficient is not looked at.
    void apply(const int16_t* coefficients, int16_t* levels) const;

    // Bits of the pairs and the end of block.
    int bits(const int16_t* levels) const;

    // Squared difference of what a decoder reconstructs, without an intra block's first coefficient.
    int64_t distortion(const int16_t* coefficients, const int16_t* levels) const;

private:
    int first() const { return weights_ ? 1 : 0; }
    int reconstructed(int place, int magnitude) const;
    int pairLength(int run, int scanPlace, int magnitude) const;

    const RunLevelTable& table_;
    const int16_t* const weights_;
    const int scale_;
    const Cost worthOfBit_;
};
