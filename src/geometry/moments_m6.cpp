// Moments in double, pixel after pixel.
#include "geometry/moments_scalar.h"

namespace rux::m6 {
namespace {

void addRows(const uint8_t* src, int32_t srcStep, ruxiSize roiSize, int32_t, double* moments)
{
    addRowsInOrder(src, srcStep, roiSize, moments);
}

}
}
