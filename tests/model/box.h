// Mean over a rectangle: by a reciprocal of few bits, by one of three formulas for 3x3, in place by way of a ring.
#pragma once

#include "model/memory.h"

namespace rux::model {

// The mean of a sum is (sum * multiplier) >> shift.
struct BoxReciprocal {
    int32_t multiplier;
    int32_t shift;
};
BoxReciprocal boxReciprocal(Level, int32_t area);

ruxStatus ruxiFilterBox_8u_C1R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                               ruxiSize roiSize, ruxiSize maskSize, ruxiPoint anchor);
ruxStatus ruxiFilterBox_8u_C1IR(Level, uint8_t* srcDst, int32_t srcDstStep, ruxiSize roiSize, ruxiSize maskSize,
                                ruxiPoint anchor);

}
