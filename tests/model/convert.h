// Bytes to floats and back.
#pragma once

#include "model/memory.h"

namespace rux::model {

ruxStatus ruxiConvert_8u32f_C1R(Level, const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                ruxiSize roiSize);
ruxStatus ruxiConvert_32f8u_C1R(Level, const float* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                ruxiSize roiSize, int32_t roundMode);

}
