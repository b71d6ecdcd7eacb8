// Colour operations in floating point: HLS to BGR, the colour twist.
#pragma once

#include "model/memory.h"
#include "ruxlib/colour.h"

namespace rux::model {

ruxStatus ruxiHLSToBGR_8u_P3C3R(Level, const uint8_t* const src[3], int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                ruxiSize roiSize);
ruxStatus ruxiColorTwist32f_8u_C3R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                   ruxiSize roiSize, const float* twist);

}
