// Canny edges from two gradient images: px and m6 with float magnitudes, a6 and w7 with 16-bit ones.
#pragma once

#include "model/memory.h"

namespace rux::model {

ruxStatus ruxiCannyGetSize(Level, ruxiSize roiSize, int32_t* bufferSize);
ruxStatus ruxiCanny_16s8u_C1R(Level, const int16_t* srcDx, int32_t srcDxStep, const int16_t* srcDy, int32_t srcDyStep,
                              uint8_t* dst, int32_t dstStep, ruxiSize roiSize, float lowThresh, float highThresh,
                              uint8_t* buffer);

}
