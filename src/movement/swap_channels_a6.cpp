// Channel order in MMX registers, 8 pixels at a time.
#include "frame/mmx_state.h"
#include "lanes/eight_bytes.h"
#include "movement/swap_channels_lanes.h"

namespace rux::a6 {
namespace {

[[gnu::noinline]] void swapRow(const uint8_t* src, uint8_t* dst, size_t pixels, ChannelOrder order)
{
    const MmxState state;
    swapRowInLanes<EightBytes>(src, dst, pixels, order);
}

}
}
