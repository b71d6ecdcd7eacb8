// Float images into float images, accumulation of 8-bit images, division by a constant.
#pragma once

#include "model/memory.h"

namespace rux::model {

ruxStatus ruxiAdd_32f_C1IR(Level, const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                           ruxiSize roiSize);
ruxStatus ruxiAdd_32f_C3IR(Level, const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                           ruxiSize roiSize);
ruxStatus ruxiAdd_32f_C4IR(Level, const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                           ruxiSize roiSize);
ruxStatus ruxiAdd_32f_AC4IR(Level, const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                            ruxiSize roiSize);
ruxStatus ruxiSub_32f_C1IR(Level, const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                           ruxiSize roiSize);
ruxStatus ruxiSub_32f_C3IR(Level, const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                           ruxiSize roiSize);
ruxStatus ruxiSub_32f_C4IR(Level, const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                           ruxiSize roiSize);
ruxStatus ruxiSub_32f_AC4IR(Level, const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                            ruxiSize roiSize);
ruxStatus ruxiMul_32f_C1IR(Level, const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                           ruxiSize roiSize);
ruxStatus ruxiMul_32f_C3IR(Level, const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                           ruxiSize roiSize);
ruxStatus ruxiMul_32f_C4IR(Level, const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                           ruxiSize roiSize);
ruxStatus ruxiMul_32f_AC4IR(Level, const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                            ruxiSize roiSize);

ruxStatus ruxiAdd_8u32f_C1IR(Level, const uint8_t* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                             ruxiSize roiSize);
ruxStatus ruxiAddWeighted_8u32f_C1IR(Level, const uint8_t* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                     ruxiSize roiSize, float alpha);

ruxStatus ruxiDivC_32f_C1IR(Level, float value, float* srcDst, int32_t srcDstStep, ruxiSize roiSize);

}
