// L1 norms of differences.
#pragma once

#include "model/memory.h"
#include "ruxlib/arith.h"

namespace rux::model {

#define RUX_NORM(type, Element, layout)                                                                              \
    ruxStatus ruxiNormDiff_L1_##type##_##layout(Level, const Element* src1, int32_t src1Step, const Element* src2, \
                                                int32_t src2Step, ruxiSize roiSize, double* norm);
#define RUX_FLOAT_NORM(layout)                                                                               \
    ruxStatus ruxiNormDiff_L1_32f_##layout(Level, const float* src1, int32_t src1Step, const float* src2, \
                                           int32_t src2Step, ruxiSize roiSize, double* norm, int32_t hint);
RUX_NORM(8u, uint8_t, C1R)
RUX_NORM(8u, uint8_t, C3R)
RUX_NORM(8u, uint8_t, C4R)
RUX_NORM(8u, uint8_t, AC4R)
RUX_NORM(16s, int16_t, C1R)
RUX_NORM(16s, int16_t, C3R)
RUX_NORM(16s, int16_t, C4R)
RUX_NORM(16s, int16_t, AC4R)
RUX_FLOAT_NORM(C1R)
RUX_FLOAT_NORM(C3R)
RUX_FLOAT_NORM(C4R)
RUX_FLOAT_NORM(AC4R)
#undef RUX_NORM
#undef RUX_FLOAT_NORM

ruxStatus ruxiNormDiff_L1_8u_C1MR(Level, const uint8_t* src1, int32_t src1Step, const uint8_t* src2, int32_t src2Step,
                                  const uint8_t* mask, int32_t maskStep, ruxiSize roiSize, double* norm);
ruxStatus ruxiNormDiff_L1_32f_C1MR(Level, const float* src1, int32_t src1Step, const float* src2, int32_t src2Step,
                                   const uint8_t* mask, int32_t maskStep, ruxiSize roiSize, double* norm);

}
