// The largest of the rows' largest elements: the first row's, or one that is above all before it.
#include "arith/max_scalar.h"

namespace rux::m6 {
namespace {

void findLargest(const uint8_t* src, int32_t srcStep, ruxiSize roiSize, uint8_t* max)
{
    const uint8_t* best = largestIn(src, roiSize.width, src);
    for (int32_t y = 1; y < roiSize.height; ++y) {
        src += srcStep;
        const uint8_t* const rowBest = largestIn(src, roiSize.width, src);
        if (load<float>(rowBest) > load<float>(best)) best = rowBest;
    }
    copyElement(best, max);
}

}
}
