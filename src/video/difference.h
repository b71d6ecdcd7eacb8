// Residual of a block against its exact half-pel prediction from one or two references.
//
// The operations stand here once; each level's file gives the kernels.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"
#include "video/half_pel.h"

namespace rux::RUX_LEVEL {
namespace {

// A block of words, at any address; absent where its first row is null.
struct WordBlock {
    uint8_t* row;
    ptrdiff_t stride;
};

// Modes are given by their index.
template <int size>
void subtract(Reference src, Reference reference, int mode, WordBlock residual, WordBlock prediction,
              int32_t roundControl);

template <int size>
void subtractBoth(Reference src, Reference forward, int forwardMode, Reference backward, int backwardMode,
                  WordBlock residual, int32_t roundControl);

}

#define RUX_DIFFERENCE(size)                                                                                        \
    ruxStatus RUXCALL ruxiGetDiff##size##x##size##_8u16s_C1(                                                        \
        const uint8_t* src, int32_t srcStep, const uint8_t* ref, int32_t refStep, int16_t* dst, int32_t dstStep,    \
        int16_t* pred, int32_t predStep, ruxHalfPelMode mcType, int32_t roundControl)                               \
    {                                                                                                               \
        if (auto failure = firstFailure(pointers(src, ref, dst))) return failure;                                   \
                                                                                                                    \
        subtract<size>({src, srcStep}, {ref, refStep}, modeIndex(mcType), {bytesOf(dst), dstStep},                  \
                       {bytesOf(pred), predStep}, roundControl);                                                    \
        return ruxStatusOk;                                                                                         \
    }                                                                                                               \
    ruxStatus RUXCALL ruxiGetDiff##size##x##size##B_8u16s_C1(                                                       \
        const uint8_t* src, int32_t srcStep,                                                                        \
        const uint8_t* refForward, int32_t refForwardStep, ruxHalfPelMode mcTypeForward,                            \
        const uint8_t* refBackward, int32_t refBackwardStep, ruxHalfPelMode mcTypeBackward,                         \
        int16_t* dst, int32_t dstStep, int32_t roundControl)                                                        \
    {                                                                                                               \
        if (auto failure = firstFailure(pointers(src, refForward, refBackward, dst))) return failure;               \
                                                                                                                    \
        subtractBoth<size>({src, srcStep}, {refForward, refForwardStep}, modeIndex(mcTypeForward),                  \
                           {refBackward, refBackwardStep}, modeIndex(mcTypeBackward), {bytesOf(dst), dstStep},      \
                           roundControl);                                                                           \
        return ruxStatusOk;                                                                                         \
    }

RUX_DIFFERENCE(16)   // ruxiGetDiff16x16_8u16s_C1, ruxiGetDiff16x16B_8u16s_C1
RUX_DIFFERENCE(8)    // ruxiGetDiff8x8_8u16s_C1, ruxiGetDiff8x8B_8u16s_C1

#undef RUX_DIFFERENCE

}
