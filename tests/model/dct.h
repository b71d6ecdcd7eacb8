// Forward and inverse 8x8 DCT.
#pragma once

#include "model/memory.h"
#include "ruxlib/video.h"

namespace rux::model {

ruxStatus ruxiDCT8x8Fwd_16s_C1R(Level, const int16_t* src, int32_t srcStep, int16_t* dst);
ruxStatus ruxiDCT8x8Fwd_8u16s_C1R(Level, const uint8_t* src, int32_t srcStep, int16_t* dst);

// Rows of an inverse's dst must not overlap.
ruxStatus ruxiDCT8x8Inv_16s_C1R(Level, const int16_t* src, int16_t* dst, int32_t dstStep);
ruxStatus ruxiDCT8x8Inv_16s8u_C1R(Level, const int16_t* src, uint8_t* dst, int32_t dstStep);
ruxStatus ruxiDCT8x8InvLSClip_16s8u_C1R(Level, const int16_t* src, uint8_t* dst, int32_t dstStep, int16_t levelShift,
                                        uint8_t clipMin, uint8_t clipMax);

}
