// Block metrics.
#pragma once

#include "model/memory.h"
#include "ruxlib/video.h"

namespace rux::model {

ruxStatus ruxiSAD16x16_8u32s(Level, const uint8_t* src, int32_t srcStep, const uint8_t* ref, int32_t refStep,
                             int32_t* result, ruxHalfPelMode mcType);
ruxStatus ruxiSqrDiff16x16_8u32s(Level, const uint8_t* src, int32_t srcStep, const uint8_t* ref, int32_t refStep,
                                 ruxHalfPelMode mcType, int32_t* result);
ruxStatus ruxiSqrDiff16x16B_8u32s(Level, const uint8_t* src, int32_t srcStep, const uint8_t* refForward,
                                  int32_t refForwardStep, ruxHalfPelMode mcTypeForward, const uint8_t* refBackward,
                                  int32_t refBackwardStep, ruxHalfPelMode mcTypeBackward, int32_t* result);
ruxStatus ruxiVariance16x16_8u32s(Level, const uint8_t* src, int32_t srcStep, int32_t* result);

}
