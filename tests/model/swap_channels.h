// Channel order: at every level the same.
#pragma once

#include "model/memory.h"

namespace rux::model {

ruxStatus ruxiSwapChannels_8u_C3R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                  ruxiSize roiSize, const int32_t* dstOrder);
ruxStatus ruxiSwapChannels_8u_C3IR(Level, uint8_t* srcDst, int32_t srcDstStep, ruxiSize roiSize,
                                   const int32_t* dstOrder);

}
