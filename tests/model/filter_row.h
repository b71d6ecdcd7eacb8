// Convolution along rows with an integer kernel and a divisor: each level rounds in its way, and at a6 and w7 wide rows
// round otherwise than narrow ones.
#pragma once

#include "model/memory.h"

namespace rux::model {

// As if all work memory could be had: the fast way wherever a6 and w7 take it.
ruxStatus ruxiFilterRow_8u_C1R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                               ruxiSize roiSize, const int32_t* kernel, int32_t kernelSize, int32_t xAnchor,
                               int32_t divisor);

// Where the work memory cannot be had.
ruxStatus filterRowWithoutMemory(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                 ruxiSize roiSize, const int32_t* kernel, int32_t kernelSize, int32_t xAnchor,
                                 int32_t divisor);

}
