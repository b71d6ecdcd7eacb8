// Rows of three-byte pixels reordered in groups of as many pixels as a lane has bytes.
#pragma once

#include "movement/channel_lanes.h"
#include "movement/swap_channels.h"

namespace rux::RUX_LEVEL {
namespace {

// The first and the last pixel go singly, and the groups lie between them. The last group may lie over others: it is
// computed before anything is written and stored at the end, so that dst may be src.
template <typename Lane, typename Distances>
void swapGroups(Distances distances, const uint8_t* src, uint8_t* dst, size_t pixels, ChannelOrder order)
{
    using Group = PixelGroup<Lane>;
    if (pixels < Group::pixels + 2) {
        swapPixels(src, dst, pixels, order);
        return;
    }
    const ChannelSelector<Lane, Distances> select(distances);
    const size_t lastPixel = (pixels - 1) * 3;
    const size_t lastGroup = lastPixel - Group::bytes;

    const Group last = select(src + lastGroup);
    swapPixel(src, dst, order);
    swapPixel(src + lastPixel, dst + lastPixel, order);
    for (size_t at = 3; at < lastGroup; at += Group::bytes) select(src + at).store(dst + at);
    last.store(dst + lastGroup);
}

template <typename Lane>
void swapRowInLanes(const uint8_t* src, uint8_t* dst, size_t pixels, ChannelOrder order)
{
    if (order.of[0] == 2 && order.of[1] == 1 && order.of[2] == 0)
        swapGroups<Lane>(ReverseDistances(), src, dst, pixels, order);
    else
        swapGroups<Lane>(ChannelDistances{order.of[0], order.of[1] - 1, order.of[2] - 2}, src, dst, pixels, order);
}

}
}
