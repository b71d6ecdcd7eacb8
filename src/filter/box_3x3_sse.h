// The 3x3 box filter's blocks at a6 and w7.
#pragma once

#include "filter/box_3x3_lanes.h"

namespace rux::RUX_LEVEL {
namespace {

// (hu(s, 29127) + 2) >> 2, hu being the high word of the unsigned product.
struct MeanOfBlocks3x3 {
    Words operator()(Words sums) const
    {
        return shiftedRightUnsigned<2>(wrappingSum(highProductUnsigned(sums, 29127), Words::broadcast(2)));
    }
    uint8_t operator()(int32_t sum) const { return static_cast<uint8_t>((((sum * 29127) >> 16) + 2) >> 2); }
};

}
}
