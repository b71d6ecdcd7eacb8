// Packed 4:2:2 pair by pair: the four bytes of a pair travel as one double word.
#pragma once

#include "colour/split422.h"

namespace rux::RUX_LEVEL {
namespace {

inline void splitPairs(const uint8_t* packed, SplitRow planes, size_t from, size_t to)
{
    for (size_t pair = from; pair < to; ++pair) {
        const uint32_t bytes = load<uint32_t>(packed + pair * 4);
        store(planes.luma + pair * 2, static_cast<uint16_t>((bytes & 0xFF) | (bytes >> 8 & 0xFF00)));
        planes.cb[pair] = static_cast<uint8_t>(bytes >> 8);
        planes.cr[pair] = static_cast<uint8_t>(bytes >> 24);
    }
}

inline void joinPairs(JoinRow planes, uint8_t* packed, size_t from, size_t to)
{
    for (size_t pair = from; pair < to; ++pair) {
        const uint32_t luma = load<uint16_t>(planes.luma + pair * 2);
        const uint32_t chroma = planes.cb[pair] | static_cast<uint32_t>(planes.cr[pair]) << 16;
        store(packed + pair * 4, (luma & 0xFF) | (luma & 0xFF00) << 8 | chroma << 8);
    }
}

}
}
