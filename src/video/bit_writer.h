// Writing bits, first bit at bit 31 of a word: a position is a word and the count of bits free in it, 32 down to 1.
#pragma once

#include <stdint.h>

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

class BitWriter {
public:
    BitWriter(uint32_t* word, int32_t freeBits) : word(word), used(32 - freeBits), held(0)
    {
        if (used != 0) held = load<uint32_t>(word);
    }

    // Bits are ORed into the current word; a word that they run over into is assigned; one that they end before is left
    // alone, for it may be past the end of the host's buffer. Where a code falls in its word is chance, so no branch
    // depends on it but the rare one on a word that begins.
    void put(uint32_t bits, uint32_t length)
    {
        if (length == 0) return;
        if (length < 32) bits &= (1u << length) - 1;
        if (used == 0) held = load<uint32_t>(word);
        const int32_t end = used + static_cast<int32_t>(length);
        const int32_t runsOver = (32 - end) >> 31;   // all bits set where it does
        const uint32_t mask = static_cast<uint32_t>(runsOver);
        const uint32_t atLeft = bits << (-end & 31);
        held |= (bits >> (end & 31) & mask) | (atLeft & ~mask);
        store(word, held);
        held = (atLeft & mask) | (held & ~mask);
        store(word - runsOver, held);
        word += end >> 5;
        used = end & 31;
    }

    uint32_t* currentWord() const { return word; }
    int32_t currentFreeBits() const { return 32 - used; }

private:
    uint32_t* word;
    int32_t used;
    uint32_t held;   // the current word, once something stands in it
};

}
}
