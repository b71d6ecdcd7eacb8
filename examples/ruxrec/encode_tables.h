// Codes by what they stand for, and the library's tables for writing blocks.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "code_source_lists.h"

// A run/level table of the library.
class RunLevelTable {
public:
    explicit RunLevelTable(bool tableOne);   // throws std::runtime_error
    ~RunLevelTable();
    RunLevelTable(const RunLevelTable&) = delete;
    RunLevelTable& operator=(const RunLevelTable&) = delete;

    operator const uint32_t*() const { return table_; }
    CodeBits endOfBlock() const { return endOfBlock_; }

    // Bits of a pair, its sign or escape included; magnitude from 1.
    int length(int run, int magnitude) const
    {
        return magnitude <= longestMagnitude ? lengths_[size_t(run)][size_t(magnitude)] : escapeLength;
    }

private:
    static constexpr int longestMagnitude = 40, escapeLength = 24;

    uint32_t* table_ = nullptr;
    CodeBits endOfBlock_;
    std::array<std::array<uint8_t, longestMagnitude + 1>, 64> lengths_;
};

struct EncodeTables {
    std::array<CodeBits, 35> addressIncrement;
    std::array<CodeBits, 32> macroblockType[3];   // I, P, B; by the sum of what the type says
    std::array<CodeBits, 64> codedBlockPattern;
    std::array<CodeBits, 33> motionCode;          // of -16 to 16
    std::vector<uint32_t> dcSize[2];              // luminance, chrominance: the library's pairs of code and length
    RunLevelTable coefficients[2] = {RunLevelTable(false), RunLevelTable(true)};   // table zero, table one

    EncodeTables();
    int dcLength(bool chroma, int difference) const;
};
