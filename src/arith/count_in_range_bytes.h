// Counts of bytes in a range, a lane at a time.
//
// The level includes the header that gives its integer lane's arithmetic first.
#pragma once

#include "arith/count_in_range.h"
#include "arith/lane_sums.h"
#include "lanes/spread.h"

namespace rux::RUX_LEVEL {
namespace {

// lower <= x <= upper is x - lower <= upper - lower, unsigned and modulo 256.
template <typename Lane>
class ByteRange {
public:
    ByteRange(uint8_t lowerBound, uint8_t upperBound)
        : lowerByte(lowerBound), spanByte(static_cast<uint8_t>(upperBound - lowerBound)),
          lower(spread<Lane>(lowerByte)), span(spread<Lane>(spanByte))
    {
    }

    bool holds(uint8_t x) const { return static_cast<uint8_t>(x - lowerByte) <= spanByte; }

    // A mask of -1 is taken from each byte that counts, so at most 255 lanes.
    Lane countLanes(const uint8_t* src, size_t lanes) const
    {
        Lane counts = {};
        for (; lanes > 0; --lanes, src += Lane::size)
            counts = subtract8(counts, atMost8(subtract8(Lane::load(src), lower), span));
        return counts;
    }

private:
    uint8_t lowerByte;
    uint8_t spanByte;
    Lane lower;
    Lane span;
};

// A row's count: the level gives the lane that its lanes are counted in, from which sumOf makes a number.
template <typename Lane, typename Add, typename Sum>
inline uint32_t countRow(const ByteRange<Lane>& range, const uint8_t* src, size_t bytes, Add add, Sum sumOf)
{
    Lane sums = {};
    size_t at = 0;
    for (size_t lanes = bytes / Lane::size; lanes > 0;) {
        const size_t some = lanes > 255 ? 255 : lanes;
        sums = add(sums, range.countLanes(src + at, some));
        at += some * Lane::size;
        lanes -= some;
    }
    uint32_t count = static_cast<uint32_t>(sumOf(sums));
    for (; at < bytes; ++at) count += range.holds(src[at]);
    return count;
}

}
}
