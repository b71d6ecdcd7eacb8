// Channel order, pixel by pixel.
#include "movement/swap_channels.h"

namespace rux::px {
namespace {

void swapRow(const uint8_t* src, uint8_t* dst, size_t pixels, ChannelOrder order)
{
    swapPixels(src, dst, pixels, order);
}

}
}
