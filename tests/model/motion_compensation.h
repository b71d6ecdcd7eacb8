// Motion compensation.
#pragma once

#include "model/memory.h"
#include "ruxlib/video.h"

namespace rux::model {

#define RUX_MODEL_MOTION_COMPENSATION(size)                                                                          \
    ruxStatus ruxiMC##size##_8u_C1(Level, const uint8_t* src, int32_t srcStep, const int16_t* diff, int32_t diffStep, \
                                   uint8_t* dst, int32_t dstStep, ruxHalfPelMode mcType, int32_t roundControl);       \
    ruxStatus ruxiMC##size##B_8u_C1(Level, const uint8_t* srcForward, int32_t srcForwardStep,                         \
                                    ruxHalfPelMode mcTypeForward, const uint8_t* srcBackward,                         \
                                    int32_t srcBackwardStep, ruxHalfPelMode mcTypeBackward, const int16_t* diff,      \
                                    int32_t diffStep, uint8_t* dst, int32_t dstStep, int32_t roundControl);
RUX_MODEL_MOTION_COMPENSATION(16x16)
RUX_MODEL_MOTION_COMPENSATION(16x8)
RUX_MODEL_MOTION_COMPENSATION(8x16)
RUX_MODEL_MOTION_COMPENSATION(8x8)
RUX_MODEL_MOTION_COMPENSATION(8x4)
#undef RUX_MODEL_MOTION_COMPENSATION

}
