// Rounded mean of 3x3 or 5x5 pixels.
#pragma once

#include "model/memory.h"

namespace rux::model {

// The mean of a sum of 9 (maskCode 33) or of 25 (55).
uint8_t lowpassMean(Level, int32_t maskCode, int sum);

ruxStatus ruxiFilterLowpass_8u_C1R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                   ruxiSize roiSize, int32_t maskCode);

}
