// Sobel derivatives pixel by pixel.
#include "filter/sobel_accumulate.h"

namespace rux::px {
namespace {

template <typename Kernel, typename Step>
void accumulateRow(const uint8_t* src, ResultRows to, int32_t width)
{
    for (int32_t x = 0; x < width; ++x) accumulatePixel<Kernel, Step>(src, to, x, width);
}

}
}
