// Reading bits, first bit at bit 31 of a word: a position is a word and the bit offset, 31 down to 0, of the next bit.
#pragma once

#include <stdint.h>

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

struct BitReader {
    uint32_t* word;
    int32_t offset;

    // The next 0 to 31 bits. The next word is read only if some of them stand in it; where a code stands in its word is
    // chance, so no branch depends on it.
    uint32_t take(int32_t bits)
    {
        const int32_t left = offset - bits;
        const uint32_t crosses = left < -1;
        const uint32_t here = load<uint32_t>(word);
        const uint32_t next = here << (31 - offset) | (load<uint32_t>(word + crosses) & -crosses) >> 1 >> offset;
        offset = left & 31;
        word += left < 0;
        return next >> 1 >> (31 - bits);
    }

    uint32_t firstBit() const { return load<uint32_t>(word) >> offset & 1; }

    void giveBack(int32_t bits)
    {
        const int32_t wider = offset + bits;
        offset = wider & 31;
        word -= wider > 31;
    }
};

}
}
