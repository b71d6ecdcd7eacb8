// Copy and Set: what a host must see, at every level the same.
#pragma once

#include "model/memory.h"

namespace rux::model {

ruxStatus ruxiCopy_8u_C1R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize roiSize);
ruxStatus ruxiCopy_8u_C3R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize roiSize);
ruxStatus ruxiCopy_8u_C4R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize roiSize);
ruxStatus ruxiCopy_16s_C1R(Level, const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, ruxiSize roiSize);
ruxStatus ruxiCopy_32f_C1R(Level, const float* src, int32_t srcStep, float* dst, int32_t dstStep, ruxiSize roiSize);
ruxStatus ruxiCopy_8u_C1MR(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize roiSize,
                           const uint8_t* mask, int32_t maskStep);
ruxStatus ruxiCopy_8u_C3AC4R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                             ruxiSize roiSize);
ruxStatus ruxiSet_8u_C1R(Level, uint8_t value, uint8_t* dst, int32_t dstStep, ruxiSize roiSize);
ruxStatus ruxiSet_16s_C1R(Level, int16_t value, int16_t* dst, int32_t dstStep, ruxiSize roiSize);
ruxStatus ruxiSet_32f_C1R(Level, float value, float* dst, int32_t dstStep, ruxiSize roiSize);
ruxStatus ruxiSet_8u_C4CR(Level, uint8_t value, uint8_t* dst, int32_t dstStep, ruxiSize roiSize);

}
