// YCbCr and YUV to 16-bit RGB.
#pragma once

#include "model/memory.h"
#include "ruxlib/colour.h"

namespace rux::model {

ruxStatus ruxiYCbCr422ToRGB555_8u16u_C2C3R(Level, const uint8_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                           ruxiSize roiSize);
ruxStatus ruxiYCbCr422ToRGB565_8u16u_C2C3R(Level, const uint8_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                           ruxiSize roiSize);
ruxStatus ruxiYCbCr422ToBGR555_8u16u_C2C3R(Level, const uint8_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                           ruxiSize roiSize);
ruxStatus ruxiYCbCr422ToBGR565_8u16u_C2C3R(Level, const uint8_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                           ruxiSize roiSize);
ruxStatus ruxiYUV420ToBGR555_8u16u_P3C3R(Level, const uint8_t* const src[3], const int32_t srcStep[3], uint16_t* dst,
                                         int32_t dstStep, ruxiSize roiSize);
ruxStatus ruxiYUV420ToBGR565_8u16u_P3C3R(Level, const uint8_t* const src[3], const int32_t srcStep[3], uint16_t* dst,
                                         int32_t dstStep, ruxiSize roiSize);

}
