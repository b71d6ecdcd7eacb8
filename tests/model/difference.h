// Difference blocks.
#pragma once

#include "model/memory.h"
#include "ruxlib/video.h"

namespace rux::model {

#define RUX_MODEL_DIFFERENCE(size)                                                                                    \
    ruxStatus ruxiGetDiff##size##_8u16s_C1(Level, const uint8_t* src, int32_t srcStep, const uint8_t* ref,            \
                                           int32_t refStep, int16_t* dst, int32_t dstStep, int16_t* pred,             \
                                           int32_t predStep, ruxHalfPelMode mcType, int32_t roundControl);            \
    ruxStatus ruxiGetDiff##size##B_8u16s_C1(Level, const uint8_t* src, int32_t srcStep, const uint8_t* refForward,    \
                                            int32_t refForwardStep, ruxHalfPelMode mcTypeForward,                     \
                                            const uint8_t* refBackward, int32_t refBackwardStep,                      \
                                            ruxHalfPelMode mcTypeBackward, int16_t* dst, int32_t dstStep,             \
                                            int32_t roundControl);
RUX_MODEL_DIFFERENCE(16x16)
RUX_MODEL_DIFFERENCE(8x8)
#undef RUX_MODEL_DIFFERENCE

}
