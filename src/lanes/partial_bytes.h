// Fewer bytes than fill a lane, read and written without touching their neighbours.
#pragma once

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

// Fewer bytes than the limit, 8 or 16, in ever smaller moves.
template <size_t limit = 16>
inline void copyFewBytes(const uint8_t* src, uint8_t* dst, size_t bytes)
{
    if (limit > 8 && (bytes & 8)) {
        store(dst, load<uint32_t>(src));
        store(dst + 4, load<uint32_t>(src + 4));
        src += 8, dst += 8;
    }
    if (bytes & 4) {
        store(dst, load<uint32_t>(src));
        src += 4, dst += 4;
    }
    if (bytes & 2) {
        store(dst, load<uint16_t>(src));
        src += 2, dst += 2;
    }
    if (bytes & 1) *dst = *src;
}

// The first bytes of a lane; the others are 0.
template <typename Lane>
inline Lane loadPartial(const uint8_t* from, size_t bytes)
{
    uint8_t lane[Lane::size] = {};
    copyFewBytes<Lane::size>(from, lane, bytes);
    return Lane::load(lane);
}

template <typename Lane>
inline void storePartial(Lane value, uint8_t* to, size_t bytes)
{
    uint8_t lane[Lane::size];
    value.store(lane);
    copyFewBytes<Lane::size>(lane, to, bytes);
}

}
}
