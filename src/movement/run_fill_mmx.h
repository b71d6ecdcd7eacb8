// The fill of a run in 8-byte MMX moves with ordinary stores.
#pragma once

#include "frame/mmx_state.h"
#include "movement/fill_pattern.h"

namespace rux::RUX_LEVEL {
namespace {

inline __m64 pattern64(uint32_t pattern)
{
    return _mm_set1_pi32(static_cast<int32_t>(pattern));
}

template <typename Element>
[[gnu::noinline]] void fillBytes(uint8_t* dst, Element value, size_t bytes)
{
    const MmxState state;
    uint32_t pattern = pattern32(value);
    if (bytes >= 64) {
        store(dst, pattern64(pattern));
        const size_t head = bytesToBoundary(dst, 8);
        pattern = pattern32After(pattern, head);
        dst += head, bytes -= head;

        const __m64 eight = pattern64(pattern);
        for (; bytes >= 64; dst += 64, bytes -= 64)
            for (int at = 0; at < 64; at += 8) store(dst + at, eight);
    }
    for (const __m64 eight = pattern64(pattern); bytes >= 8; dst += 8, bytes -= 8) store(dst, eight);
    fillSmall(dst, pattern, bytes);
}

}
}
