// Medians of a short row or a cross of pixels: at every level the same.
#pragma once

#include "model/memory.h"

namespace rux::model {

ruxStatus ruxiFilterMedianHoriz_8u_C1R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       ruxiSize roiSize, int32_t maskCode);
ruxStatus ruxiFilterMedianCross_8u_C1R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       ruxiSize roiSize, int32_t maskCode);

}
