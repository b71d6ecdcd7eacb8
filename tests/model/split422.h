// Packed 4:2:2 to planes and back.
#pragma once

#include "model/memory.h"
#include "ruxlib/colour.h"

namespace rux::model {

ruxStatus ruxiSplit422_8u_C2P3R(Level, const uint8_t* src, int32_t srcStep, uint8_t* const dst[3],
                                const int32_t dstStep[3], ruxiSize roiSize);
ruxStatus ruxiJoin422_8u_P3C2R(Level, const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst,
                               int32_t dstStep, ruxiSize roiSize);

}
