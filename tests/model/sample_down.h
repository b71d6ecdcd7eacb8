// Chroma down-sampling.
#pragma once

#include "model/memory.h"
#include "ruxlib/video.h"

namespace rux::model {

ruxStatus ruxiSampleDownH2V2_JPEG_8u_C1R(Level, const uint8_t* src, int32_t srcStep, ruxiSize srcRoiSize, uint8_t* dst,
                                         int32_t dstStep, ruxiSize dstRoiSize);

}
