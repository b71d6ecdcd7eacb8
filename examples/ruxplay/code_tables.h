// Lookup structures of all codes, built by the library from the lists.
#pragma once

#include <cstdint>
#include <vector>

#include "ruxlib.h"

// Owns one lookup structure.
class CodeTable {
public:
    CodeTable() = default;
    CodeTable(const CodeTable&) = delete;
    CodeTable& operator=(const CodeTable&) = delete;
    ~CodeTable() { ruxiVCHuffmanFree_32s(&table_); }

    void buildPlain(const std::vector<int32_t>& sourceList);
    void buildRunLevel(const std::vector<int32_t>& sourceList);
    operator const uint32_t*() const { return table_; }

private:
    uint32_t* table_ = nullptr;
};

struct CodeTables {
    CodeTable addressIncrement;
    CodeTable macroblockType[3];      // I, P, B
    CodeTable codedBlockPattern;
    CodeTable motionCode;
    CodeTable dmvector;
    CodeTable dcSize[2];              // luminance, chrominance
    CodeTable firstCoefficient;       // of a non-intra block
    CodeTable coefficients[2];        // table zero, table one

    CodeTables();
};
