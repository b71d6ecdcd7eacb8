// Channel order, 16 pixels at a time.
#include "lanes/sixteen_bytes.h"
#include "movement/swap_channels_lanes.h"

namespace rux::w7 {
namespace {

void swapRow(const uint8_t* src, uint8_t* dst, size_t pixels, ChannelOrder order)
{
    swapRowInLanes<SixteenBytes>(src, dst, pixels, order);
}

}
}
