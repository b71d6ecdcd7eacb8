// A row of one image into a row of another, a lane at a time.
//
// A pattern has a period of 1 or 3 lanes: where a pixel has three channels, three lanes go by until the channels stand
// in a lane as at the start. The row's last lane, which ends with the last channel, is always the last of a period.
#pragma once

#include "lanes/partial_bytes.h"

namespace rux::RUX_LEVEL {
namespace {

// Lanes from one on to the end of a turn, written out by the compiler.
template <typename Lane, int lane, int turn, typename Pattern>
inline void transformLanes(const Pattern& pattern, const uint8_t* src, uint8_t* dst)
{
    constexpr size_t at = lane * Lane::size;
    pattern.put(dst + at, pattern.apply(Lane::load(src + at), lane % Pattern::lanes));
    if constexpr (lane + 1 < turn) transformLanes<Lane, lane + 1, turn>(pattern, src, dst);
}

// The row's last lane may lie over its neighbour. It is read before anything is written and stored after everything
// else, since in place the neighbour's elements must not be transformed twice.
template <typename Lane, typename Pattern>
inline void transformRow(const Pattern& pattern, const uint8_t* src, uint8_t* dst, size_t bytes)
{
    constexpr size_t size = Lane::size;
    if (bytes < size) {
        pattern.putPartial(dst, pattern.apply(loadPartial<Lane>(src, bytes), 0), bytes);
        return;
    }
    constexpr int period = Pattern::lanes;
    constexpr int turn = period == 3 ? 3 : 4;
    const Lane last = pattern.apply(Lane::load(src + bytes - size), period - 1);

    size_t at = 0;
    for (; bytes - at >= turn * size; at += turn * size) transformLanes<Lane, 0, turn>(pattern, src + at, dst + at);
    for (int lane = 0; bytes - at >= size; at += size, ++lane)
        pattern.put(dst + at, pattern.apply(Lane::load(src + at), lane % period));
    if (at < bytes) pattern.put(dst + bytes - size, last);
}

}
}
