// YCbCr and YUV against 8-bit RGB.
#pragma once

#include "model/memory.h"
#include "ruxlib/colour.h"

namespace rux::model {

ruxStatus ruxiRGBToYCbCr420_8u_C3P3R(Level, const uint8_t* src, int32_t srcStep, uint8_t* const dst[3],
                                     const int32_t dstStep[3], ruxiSize roiSize);
ruxStatus ruxiRGBToYCbCr422_8u_C3C2R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                     ruxiSize roiSize);
ruxStatus ruxiYCbCr422ToRGB_8u_C2C3R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                     ruxiSize roiSize);
ruxStatus ruxiYUV422ToRGB_8u_C2C3R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                   ruxiSize roiSize);
ruxStatus ruxiYCbCr422ToRGB_8u_P3C3R(Level, const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst,
                                     int32_t dstStep, ruxiSize roiSize);
ruxStatus ruxiYCbCr420ToRGB_8u_P3C3R(Level, const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst,
                                     int32_t dstStep, ruxiSize roiSize);
ruxStatus ruxiYUV422ToRGB_8u_P3C3R(Level, const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst,
                                   int32_t dstStep, ruxiSize roiSize);
ruxStatus ruxiYUV422ToRGB_8u_P3AC4R(Level, const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst,
                                    int32_t dstStep, ruxiSize roiSize);
ruxStatus ruxiYUV420ToRGB_8u_P3C3(Level, const uint8_t* const src[3], uint8_t* dst, ruxiSize roiSize);

}
