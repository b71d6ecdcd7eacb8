// Channels of three-byte pixels put into another order, in lanes of the level's width.
//
// dst[3k + c] = src[3k + order[c]]: in the row's bytes, channel c comes from order[c] - c bytes further on. So a lane
// of the result is the union of three loads, one at each channel's distance, each masked to its channel's bytes.
#pragma once

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

// Three lanes: as many whole pixels as a lane has bytes.
template <typename Lane>
struct PixelGroup {
    static constexpr size_t pixels = Lane::size;
    static constexpr size_t bytes = 3 * Lane::size;
    Lane lanes[3];

    void store(uint8_t* to) const
    {
        lanes[0].store(to);
        lanes[1].store(to + Lane::size);
        lanes[2].store(to + 2 * Lane::size);
    }
    void storeAligned(uint8_t* to) const
    {
        lanes[0].storeAligned(to);
        lanes[1].storeAligned(to + Lane::size);
        lanes[2].storeAligned(to + 2 * Lane::size);
    }
};

// The distances of any order.
struct ChannelDistances {
    ptrdiff_t first;
    ptrdiff_t second;
    ptrdiff_t third;
};

// The distances of the order 2, 1, 0.
struct ReverseDistances {
    static constexpr ptrdiff_t first = 2;
    static constexpr ptrdiff_t second = 0;
    static constexpr ptrdiff_t third = -2;
};

// Reads up to two bytes before and behind the group: a group stands at least one pixel away from the row's ends.
template <typename Lane, typename Distances>
class ChannelSelector {
public:
    explicit ChannelSelector(Distances channelDistances) : distances(channelDistances) {}

    PixelGroup<Lane> operator()(const uint8_t* src) const
    {
        return {{select<0>(src), select<1>(src), select<2>(src)}};
    }

private:
    // Byte i of lane number n is a byte of channel (n * size + i) mod 3.
    template <size_t n>
    Lane select(const uint8_t* src) const
    {
        constexpr size_t phase = n * Lane::size % 3;
        const uint8_t* const from = src + n * Lane::size;
        return (Lane::load(from + distances.first) & everyThird[(3 - phase) % 3]) |
               (Lane::load(from + distances.second) & everyThird[(4 - phase) % 3]) |
               (Lane::load(from + distances.third) & everyThird[(5 - phase) % 3]);
    }

    static constexpr uint8_t thirds[2 + 16] = {255, 0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0};

    const Distances distances;
    // Entry r has the bytes i set of which i mod 3 is r.
    const Lane everyThird[3] = {Lane::load(thirds), Lane::load(thirds + 2), Lane::load(thirds + 1)};
};

}
}
