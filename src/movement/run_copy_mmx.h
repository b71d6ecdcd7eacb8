// The copy of a run in 8-byte MMX moves with ordinary stores.
#pragma once

#include "frame/mmx_state.h"
#include "movement/mmx_moves.h"

namespace rux::RUX_LEVEL {
namespace {

template <__m64 loadEight(const uint8_t*)>
void copyBlocks(const uint8_t* src, uint8_t* dst, size_t blocks)
{
    for (; blocks > 0; --blocks, src += 64, dst += 64)
        for (int at = 0; at < 64; at += 8) store(dst + at, loadEight(src + at));
}

[[gnu::noinline]] void copyBytes(const uint8_t* src, uint8_t* dst, size_t bytes)
{
    const MmxState state;
    if (bytes >= 64) {
        store(dst, loadWhole(src));
        const size_t head = bytesToBoundary(dst, 8);
        src += head, dst += head, bytes -= head;

        const size_t blocks = bytes / 64;
        if (bytesToBoundary(src, 8) == 4)
            copyBlocks<loadHalves>(src, dst, blocks);
        else
            copyBlocks<loadWhole>(src, dst, blocks);
        src += blocks * 64, dst += blocks * 64, bytes -= blocks * 64;
    }
    for (; bytes >= 8; src += 8, dst += 8, bytes -= 8) store(dst, loadWhole(src));
    copySmall(src, dst, bytes);
}

}
}
