// Motion compensation: a half-pel prediction from one or two references, plus a residual, saturated to bytes.
//
// The operations stand here once; each level's file gives the kernels of its block sizes and modes.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"
#include "video/half_pel.h"

namespace rux::RUX_LEVEL {
namespace {

// The residual and the result it goes to.
struct Block {
    const uint8_t* residual;
    ptrdiff_t residualStride;
    uint8_t* result;
    ptrdiff_t resultStride;
};

template <int width, int height>
void compensate(int mode, Reference reference, const Block& block, int32_t roundControl);

template <int width, int height>
void compensateBoth(int forwardMode, Reference forward, int backwardMode, Reference backward,
                    const Block& block, int32_t roundControl);

}

#define RUX_MOTION_COMPENSATION(width, height)                                                                      \
    ruxStatus RUXCALL ruxiMC##width##x##height##_8u_C1(                                                             \
        const uint8_t* src, int32_t srcStep, const int16_t* diff, int32_t diffStep, uint8_t* dst, int32_t dstStep,  \
        ruxHalfPelMode mcType, int32_t roundControl)                                                                \
    {                                                                                                               \
        if (auto failure = firstFailure(pointers(src, diff, dst))) return failure;                                  \
                                                                                                                    \
        compensate<width, height>(modeIndex(mcType), {src, srcStep}, {bytesOf(diff), diffStep, dst, dstStep},       \
                                  roundControl);                                                                    \
        return ruxStatusOk;                                                                                         \
    }                                                                                                               \
    ruxStatus RUXCALL ruxiMC##width##x##height##B_8u_C1(                                                            \
        const uint8_t* srcForward, int32_t srcForwardStep, ruxHalfPelMode mcTypeForward,                            \
        const uint8_t* srcBackward, int32_t srcBackwardStep, ruxHalfPelMode mcTypeBackward,                         \
        const int16_t* diff, int32_t diffStep, uint8_t* dst, int32_t dstStep, int32_t roundControl)                 \
    {                                                                                                               \
        if (auto failure = firstFailure(pointers(srcForward, srcBackward, diff, dst))) return failure;              \
                                                                                                                    \
        compensateBoth<width, height>(modeIndex(mcTypeForward), {srcForward, srcForwardStep},                       \
                                      modeIndex(mcTypeBackward), {srcBackward, srcBackwardStep},                    \
                                      {bytesOf(diff), diffStep, dst, dstStep}, roundControl);                       \
        return ruxStatusOk;                                                                                         \
    }

RUX_MOTION_COMPENSATION(16, 16)   // ruxiMC16x16_8u_C1, ruxiMC16x16B_8u_C1
RUX_MOTION_COMPENSATION(16, 8)    // ruxiMC16x8_8u_C1, ruxiMC16x8B_8u_C1
RUX_MOTION_COMPENSATION(8, 16)    // ruxiMC8x16_8u_C1, ruxiMC8x16B_8u_C1
RUX_MOTION_COMPENSATION(8, 8)     // ruxiMC8x8_8u_C1, ruxiMC8x8B_8u_C1
RUX_MOTION_COMPENSATION(8, 4)     // ruxiMC8x4_8u_C1, ruxiMC8x4B_8u_C1

#undef RUX_MOTION_COMPENSATION

}
