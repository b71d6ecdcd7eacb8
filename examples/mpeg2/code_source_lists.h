// Codes in the source form from which the library builds its tables.
#pragma once

#include <cstdint>
#include <vector>

#include "code_lists.h"

// One lookup for every code.
std::vector<int32_t> plainSourceList(const std::vector<Code>& codes);

// Coefficients of table zero (B-14) or one (B-15), with escape and end of block.
std::vector<int32_t> coefficientSourceList(bool tableOne);

// The first coefficient of a non-intra block, but for the short code of level 1.
std::vector<int32_t> firstCoefficientSourceList();

// The end of block in table zero and one.
extern const char* const endOfBlockCodes[2];

// The pairs of a table, without their signs.
std::vector<RunLevelCode> coefficientCodes(bool tableOne);

// A code's bits as a number, and how many they are.
struct CodeBits {
    uint32_t value = 0;
    int length = 0;
};
CodeBits codeBits(const char* bits);
