// Copies into and out of the room for a whole block, for a row that is shorter than one.
#pragma once

#include "lanes/partial_bytes.h"

namespace rux::RUX_LEVEL {
namespace {

constexpr size_t blockPixels = 2 * Words::count;

inline void copyShortRow(const uint8_t* src, uint8_t* dst, size_t bytes)
{
    for (; bytes >= 16; src += 16, dst += 16, bytes -= 16)
        for (size_t i = 0; i < 16; i += 4) store(dst + i, load<uint32_t>(src + i));
    copyFewBytes(src, dst, bytes);
}

}
}
