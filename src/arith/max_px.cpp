// The largest element: the first, or one that is above all before it.
#include "arith/max_scalar.h"

namespace rux::px {
namespace {

void findLargest(const uint8_t* src, int32_t srcStep, ruxiSize roiSize, uint8_t* max)
{
    const uint8_t* best = src;
    for (int32_t y = 0; y < roiSize.height; ++y, src += srcStep) best = largestIn(src, roiSize.width, best);
    copyElement(best, max);
}

}
}
