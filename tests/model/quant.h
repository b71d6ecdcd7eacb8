// MPEG-2 quantisation of 8x8 blocks.
#pragma once

#include "model/memory.h"
#include "ruxlib/video.h"

namespace rux::model {

// Forward at w7: |t| below 32768 only.
ruxStatus ruxiQuantIntra_MPEG2_16s_C1I(Level, int16_t* srcDst, int32_t quantScale, const float* matrix, int32_t* count);
ruxStatus ruxiQuant_MPEG2_16s_C1I(Level, int16_t* srcDst, int32_t quantScale, const float* matrix, int32_t* count);
ruxStatus ruxiQuantInvIntra_MPEG2_16s_C1I(Level, int16_t* srcDst, int32_t quantScale, const int16_t* matrix);
ruxStatus ruxiQuantInv_MPEG2_16s_C1I(Level, int16_t* srcDst, int32_t quantScale, const int16_t* matrix);

}
