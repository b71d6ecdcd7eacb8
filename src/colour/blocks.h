// How a row is cut into blocks of two lanes of pixels: 8 in MMX registers, 16 in SSE2 registers.
#pragma once

#include "lanes/partial_bytes.h"

namespace rux::RUX_LEVEL {
namespace {

constexpr size_t blockPixels = 2 * Words::count;

// Blocks of an even number of pixels. The last one is whole too: it ends with the row and repeats pixels of the one
// before it, if it may. What is left, for it may not or the row is shorter than a block, is the rest.
template <typename Block, typename Rest>
inline void forEachBlock(size_t pixels, bool mayRepeat, Block block, Rest rest)
{
    size_t x = 0;
    while (pixels - x >= blockPixels) {
        block(x);
        x += blockPixels;
        const size_t left = pixels - x;
        if (left == 0) return;
        if (left < blockPixels && mayRepeat) x = pixels - blockPixels;
    }
    if (x != pixels) rest(x);
}

// Fewer bytes than a block has, to and from the room for a whole one.
[[gnu::noinline]] void copyShortRow(const uint8_t* src, uint8_t* dst, size_t bytes)
{
    for (; bytes >= 16; src += 16, dst += 16, bytes -= 16)
        for (size_t i = 0; i < 16; i += 4) store(dst + i, load<uint32_t>(src + i));
    copyFewBytes(src, dst, bytes);
}

}
}
