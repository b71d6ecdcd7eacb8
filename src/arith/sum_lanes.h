// The sum of an image's bytes, a lane at a time.
//
// The level includes the header that gives its integer lane's arithmetic first.
#pragma once

#include "arith/lane_sums.h"
#include "arith/sum.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Lane>
inline uint64_t sumRows(const uint8_t* src, int32_t srcStep, ruxiSize roiSize)
{
    uint64_t sum = 0;
    for (int32_t y = 0; y < roiSize.height; ++y, src += srcStep)
        sum += sumOverRow<Lane>(static_cast<size_t>(roiSize.width), [=](auto place) { return sumBytes(place(src)); });
    return sum;
}

}
}
