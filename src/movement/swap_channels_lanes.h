// Rows of three-byte pixels reordered in groups of as many pixels as a lane has bytes.
#pragma once

#include "movement/channel_lanes.h"
#include "movement/swap_channels.h"

namespace rux::RUX_LEVEL {
namespace {

// How many pixels, at least one, stand before a lane's boundary: the k of which 3k and the bytes to the boundary are
// equal modulo the lane's size, and 11 * 3 is 1 modulo 16 and 8.
template <typename Lane>
inline size_t pixelsToBoundary(const uint8_t* pixels)
{
    const size_t count = bytesToBoundary(pixels, Lane::size) * 11 % Lane::size;
    return count > 0 ? count : Lane::size;
}

// The first and the last pixel go singly, and the groups lie between them. The first and the last group may lie over
// their neighbours: both are computed before anything is written and stored after everything else. So dst may be src,
// and the loop between them runs on the destination's boundaries. It loads a group before it stores the one before: the
// loads beside a group then meet no store that is still under way.
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

    const Group first = select(src + 3);
    const Group last = select(src + lastGroup);
    swapPixel(src, dst, order);
    swapPixel(src + lastPixel, dst + lastPixel, order);
    size_t at = 3 * pixelsToBoundary<Lane>(dst);
    if (at < lastGroup) {
        Group group = select(src + at);
        for (; at + Group::bytes < lastGroup; at += Group::bytes) {
            const Group next = select(src + at + Group::bytes);
            group.storeAligned(dst + at);
            group = next;
        }
        group.storeAligned(dst + at);
    }
    first.store(dst + 3);
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
