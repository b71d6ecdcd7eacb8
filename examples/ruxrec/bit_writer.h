// Writes bits at the library's position for writing: a pointer to a 32-bit word and the number of bits free in it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "code_source_lists.h"

class BitWriter {
public:
    // Every word that can be reached must be there: the library does not test for room.
    explicit BitWriter(size_t words) : words_(words), word_(words_.data()) {}
    BitWriter(const BitWriter&) = delete;
    BitWriter& operator=(const BitWriter&) = delete;

    void put(uint32_t value, int length);   // 0 to 32 bits
    void put(CodeBits code) { put(code.value, code.length); }
    void putStartCode(uint8_t code);        // on a byte boundary
    void alignToByte();                     // with zeros

    size_t bits() const { return size_t(word_ - words_.data()) * 32 + size_t(32 - freeBits_); }

    // Appends what has been written, whole bytes, and begins anew.
    void moveTo(std::vector<uint8_t>& bytes);

    // The position, for the library.
    uint32_t** word() { return &word_; }
    int32_t* freeBits() { return &freeBits_; }

private:
    std::vector<uint32_t> words_;
    uint32_t* word_;
    int32_t freeBits_ = 32;
};
