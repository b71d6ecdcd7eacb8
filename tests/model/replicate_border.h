// Copy with a replicated border: at every level the same.
#pragma once

#include "model/memory.h"

namespace rux::model {

ruxStatus ruxiCopyReplicateBorder_8u_C1R(Level, const uint8_t* src, int32_t srcStep, ruxiSize srcRoiSize, uint8_t* dst,
                                         int32_t dstStep, ruxiSize dstRoiSize, int32_t topBorderHeight,
                                         int32_t leftBorderWidth);
ruxStatus ruxiCopyReplicateBorder_32s_C1R(Level, const int32_t* src, int32_t srcStep, ruxiSize srcRoiSize, int32_t* dst,
                                          int32_t dstStep, ruxiSize dstRoiSize, int32_t topBorderHeight,
                                          int32_t leftBorderWidth);

}
