// Writing bits, first bit at bit 31 of a word: a position is a word and the count of bits free in it, 32 down to 1.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

class BitWriter {
public:
    BitWriter(uint32_t* word, int32_t freeBits) : word(word), used(32 - freeBits), held(0)
    {
        if (used != 0) hold();
    }

    // Bits are ORed into the current word; a word that they run over into is assigned; one that they end before is left
    // alone, for it may be past the end of the host's buffer. Where a code falls in its word is chance, so no branch
    // depends on it but the rare one on a word that begins.
    void put(uint32_t bits, uint32_t length)
    {
        if (length == 0) return;
        if (length < 32) bits &= (1u << length) - 1;
        if (used == 0) hold();
        used += static_cast<int32_t>(length);
        if constexpr (holdsTwo) putIntoTwo(bits);
        else putIntoOne(bits);
        word += used >> 5;
        used &= 31;
    }

    // Stores what stands in a word that is not full.
    void finish()
    {
        if (holdsTwo && used != 0) store(word, static_cast<uint32_t>(held >> upper));
    }

    uint32_t* currentWord() const { return word; }
    int32_t currentFreeBits() const { return 32 - used; }

private:
    // As a machine word allows: the current word alone, or with the next one below it.
    static constexpr bool holdsTwo = sizeof(size_t) == sizeof(uint64_t);
    static constexpr int32_t upper = holdsTwo ? 32 : 0;

    void hold() { held = static_cast<size_t>(load<uint32_t>(word)) << upper; }

    // `used` is where the bits end.
    void putIntoTwo(uint32_t bits)
    {
        held |= static_cast<size_t>(bits) << (-used & 63);
        store(word, static_cast<uint32_t>(held >> upper));
        held <<= used & 32;
    }
    void putIntoOne(uint32_t bits)
    {
        const int32_t runsOver = (32 - used) >> 31;   // all bits set where they do
        const uint32_t mask = static_cast<uint32_t>(runsOver);
        const uint32_t atLeft = bits << (-used & 31);
        held |= (bits >> (used & 31) & mask) | (atLeft & ~mask);
        store(word, static_cast<uint32_t>(held));
        held = (atLeft & mask) | (held & ~mask);
        store(word - runsOver, static_cast<uint32_t>(held));
    }

    uint32_t* word;
    int32_t used;
    size_t held;   // once something stands in a word
};

}
}
