// Comparison into a mask, counting in a range, maximum and sum.
#pragma once

#include "model/memory.h"
#include "ruxlib/arith.h"

namespace rux::model {

ruxStatus ruxiCompare_32f_C1R(Level, const float* src1, int32_t src1Step, const float* src2, int32_t src2Step,
                              uint8_t* dst, int32_t dstStep, ruxiSize roiSize, ruxCmpOp cmpOp);
ruxStatus ruxiCompareC_32f_C1R(Level, const float* src, int32_t srcStep, float value, uint8_t* dst, int32_t dstStep,
                               ruxiSize roiSize, ruxCmpOp cmpOp);
ruxStatus ruxiCompareC_8u_C1R(Level, const uint8_t* src, int32_t srcStep, uint8_t value, uint8_t* dst, int32_t dstStep,
                              ruxiSize roiSize, ruxCmpOp cmpOp);
ruxStatus ruxiCountInRange_8u_C1R(Level, const uint8_t* src, int32_t srcStep, ruxiSize roiSize, int32_t* counts,
                                  uint8_t lowerBound, uint8_t upperBound);
ruxStatus ruxiCountInRange_32f_C1R(Level, const float* src, int32_t srcStep, ruxiSize roiSize, int32_t* counts,
                                   float lowerBound, float upperBound);

// Without NaN; at a6 and w7 also without zeros of two signs.
ruxStatus ruxiMax_32f_C1R(Level, const float* src, int32_t srcStep, ruxiSize roiSize, float* max);

ruxStatus ruxiSum_8u_C1R(Level, const uint8_t* src, int32_t srcStep, ruxiSize roiSize, double* sum);

}
