// The lookup structure of a variable-length code: sub-tables in one block of words, the root at word 0.
//
// A sub-table is a header, its width in bits, and 2^width entries. An entry is a link, the low byte 128 and above it
// the index of another sub-table, or a leaf: the low byte counts the bits of the index that are not part of the code.
#pragma once

#include "video/bit_reader.h"
#include "video/code_list.h"

namespace rux::RUX_LEVEL {
namespace {

constexpr uint32_t emptyEntry = 0xf0f101;
constexpr int32_t illegalCode = 0xf0f1;   // what an empty entry holds

inline bool isLink(uint32_t entry)
{
    return (entry & 0xFF) == 128;
}

inline uint32_t linkedTable(uint32_t entry)
{
    return entry >> 8;
}

inline int32_t freeBits(uint32_t leaf)
{
    return static_cast<int32_t>(leaf & 0xFF);
}

// Run/level leaves.
inline int32_t runOf(uint32_t leaf)
{
    return static_cast<int32_t>(leaf >> 8 & 0xFF);
}

inline int32_t levelOf(uint32_t leaf)
{
    return static_cast<int32_t>(leaf) >> 16;
}

// The leaf of the next code. Its free bits are still to be given back.
inline uint32_t findLeaf(const uint32_t* table, BitReader& reader)
{
    uint32_t entry = table[1 + reader.take(static_cast<int32_t>(table[0]))];
    while (isLink(entry)) {
        const uint32_t* const subTable = table + linkedTable(entry);
        entry = subTable[1 + reader.take(static_cast<int32_t>(subTable[0]))];
    }
    return entry;
}

inline uint32_t takeLeaf(const uint32_t* table, BitReader& reader)
{
    const uint32_t leaf = findLeaf(table, reader);
    reader.giveBack(freeBits(leaf));
    return leaf;
}

}
}
