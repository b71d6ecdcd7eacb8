// Reads bits from the 32-bit words of a stream, the first bit of a word at its bit 31. Word pointer and bit offset are
// the reading position of the library's own decoding operations, which move the same two members on.
#pragma once

#include <cstdint>

struct BitReader {
    uint32_t* word;
    int32_t offset;   // the next bit to read, 31 down to 0

    // The next 1 to 32 bits, without moving.
    uint32_t peek(int count) const
    {
        const uint64_t two = uint64_t(word[0]) << 32 | word[1];
        return uint32_t(two << (31 - offset) >> (64 - count));
    }

    void skip(int count)
    {
        offset -= count;
        if (offset < 0) {
            offset += 32;
            ++word;
        }
    }

    uint32_t read(int count)
    {
        const uint32_t bits = peek(count);
        skip(count);
        return bits;
    }

    bool flag() { return read(1) != 0; }

    bool isBehind(const BitReader& other) const
    {
        return word > other.word || (word == other.word && offset < other.offset);
    }
};
