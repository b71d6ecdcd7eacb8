// The fill value as a run of bytes that can be entered at any phase of the element.
#pragma once

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

// The value as 32 bits, so that byte i of memory holds byte i mod 4 of it.
template <typename Element>
inline uint32_t pattern32(Element value)
{
    if (sizeof(Element) == 1) return value * 0x01010101u;
    if (sizeof(Element) == 2) return value * 0x00010001u;
    return value;
}

// The pattern as it goes on behind the given number of bytes.
inline uint32_t pattern32After(uint32_t pattern, size_t bytes)
{
    const unsigned shift = 8 * (bytes & 3);
    return shift ? pattern >> shift | pattern << (32 - shift) : pattern;
}

// The last bytes of a run, fewer than 8, from a pattern in the phase of the first of them.
inline void fillSmall(uint8_t* dst, uint32_t pattern, size_t bytes)
{
    if (bytes & 4) {
        store(dst, pattern);
        dst += 4;
    }
    for (bytes &= 3; bytes > 0; --bytes, pattern >>= 8) *dst++ = static_cast<uint8_t>(pattern);
}

}
}
