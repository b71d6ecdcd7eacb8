// Absolute difference and AND of bytes: at every level the same.
#pragma once

#include "model/memory.h"

namespace rux::model {

ruxStatus ruxiAbsDiff_8u_C1R(Level, const uint8_t* src1, int32_t src1Step, const uint8_t* src2, int32_t src2Step,
                             uint8_t* dst, int32_t dstStep, ruxiSize roiSize);
ruxStatus ruxiAnd_8u_C1R(Level, const uint8_t* src1, int32_t src1Step, const uint8_t* src2, int32_t src2Step,
                         uint8_t* dst, int32_t dstStep, ruxiSize roiSize);

}
