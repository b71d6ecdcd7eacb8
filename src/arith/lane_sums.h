// Sums over a row, a lane at a time.
#pragma once

#include "lanes/partial_bytes.h"

namespace rux::RUX_LEVEL {
namespace {

// One place in a row, to be read from each image that takes part.
template <typename Lane>
struct WholeLane {
    size_t at;
    Lane operator()(const uint8_t* row) const { return Lane::load(row + at); }
};

// The row's end, filled up with zeros.
template <typename Lane>
struct PartialLane {
    size_t at;
    size_t bytes;
    Lane operator()(const uint8_t* row) const { return loadPartial<Lane>(row + at, bytes); }
};

// The sum of a lane's 32-bit numbers.
template <typename Lane>
inline uint64_t total32(Lane sums)
{
    uint8_t bytes[Lane::size];
    sums.store(bytes);
    uint64_t total = 0;
    for (size_t at = 0; at < Lane::size; at += 4) total += load<uint32_t>(bytes + at);
    return total;
}

// The sum of term(place) over a row. A term is a lane of 32-bit numbers, each below 2**20, so that the numbers of 2048
// lanes and a partial one fit; of a partial lane's zeros it makes zeros.
template <typename Lane, typename Term>
inline uint64_t sumOverRow(size_t bytes, Term term)
{
    constexpr size_t size = Lane::size;
    constexpr size_t chunkBytes = 2048 * size;
    uint64_t total = 0;
    size_t at = 0;
    while (at < bytes) {
        const size_t end = bytes - at > chunkBytes ? at + chunkBytes : bytes;
        Lane even = {};
        Lane odd = {};
        for (; end - at >= 4 * size; at += 4 * size) {
            even = add32(even, term(WholeLane<Lane>{at}));
            odd = add32(odd, term(WholeLane<Lane>{at + size}));
            even = add32(even, term(WholeLane<Lane>{at + 2 * size}));
            odd = add32(odd, term(WholeLane<Lane>{at + 3 * size}));
        }
        for (; end - at >= size; at += size) even = add32(even, term(WholeLane<Lane>{at}));
        if (at < end) odd = add32(odd, term(PartialLane<Lane>{at, end - at}));
        at = end;
        total += total32(add32(even, odd));
    }
    return total;
}

}
}
