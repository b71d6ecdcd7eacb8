// Measures of a 16x16 block against its exact half-pel prediction, and its variance.
//
// The operations stand here once; each level's file gives the sums.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"
#include "video/half_pel.h"

namespace rux::RUX_LEVEL {
namespace {

constexpr int32_t blockSize = 16;

// px measures whatever the mode is, the other levels the four modes and nothing else.
constexpr bool measures(ruxHalfPelMode mode)
{
    return thisLevel == px::number || (mode & ~mcHalfBoth) == 0;
}

// Modes that are not one of the four: the sum of absolute differences looks at bits 2 and 3, the sum of squares takes
// mcHalfBoth.
constexpr int modeOfSquares(ruxHalfPelMode mode)
{
    return (mode & ~mcHalfBoth) == 0 ? modeIndex(mode) : modeIndex(mcHalfBoth);
}

// The contract's row below, where it is not the next row for strides above 255 or below 0.
constexpr ptrdiff_t truncatedStride(int32_t stride)
{
    return stride & 255;
}

// Routines and kernels measure a block and end the operation: they store the result and return ruxStatusOk. `below` is
// how many bytes further on the row below a sample stands for it.
using Kernel = ruxStatus (*)(Reference src, Reference reference, ptrdiff_t below, int32_t* result);

inline ruxStatus absoluteDifferences(int mode, Reference src, Reference reference, ptrdiff_t below, int32_t* result);

// The row below is the next row.
inline ruxStatus squares(int mode, Reference src, Reference reference, int32_t* result);

struct Prediction {
    Reference reference;
    ptrdiff_t below;
};
using KernelBoth = ruxStatus (*)(Reference src, const Prediction& forward, const Prediction& backward, int32_t* result);

inline KernelBoth squaresBoth(int forwardMode, int backwardMode);

struct Sums {
    uint32_t samples;
    uint32_t squares;
};

// Stores its sums: what is only returned, a compiler may take from registers behind the end of their state.
void storeSums(Reference src, Sums& sums);

// The square of the sum wraps at the lower levels and its quotient goes toward zero.
inline int32_t squareOfSumBy256(uint32_t sum)
{
    if (thisLevel == w7::number) return static_cast<int32_t>(static_cast<uint64_t>(sum) * sum >> 8);
    return static_cast<int32_t>(sum * sum) / 256;
}

}

ruxStatus RUXCALL ruxiSAD16x16_8u32s(
    const uint8_t* src, int32_t srcStep, const uint8_t* ref, int32_t refStep, int32_t* result, ruxHalfPelMode mcType)
{
    if (auto failure = firstFailure(pointers(src, ref, result))) return failure;
    if (!measures(mcType)) return ruxStatusOk;

    const ptrdiff_t below = thisLevel == px::number ? truncatedStride(refStep) : refStep;
    return absoluteDifferences(modeIndex(mcType), {src, srcStep}, {ref, refStep}, below, result);
}

ruxStatus RUXCALL ruxiSqrDiff16x16_8u32s(
    const uint8_t* src, int32_t srcStep, const uint8_t* ref, int32_t refStep, ruxHalfPelMode mcType, int32_t* result)
{
    if (auto failure = firstFailure(pointers(src, ref, result))) return failure;
    if (!measures(mcType)) return ruxStatusOk;

    return squares(modeOfSquares(mcType), {src, srcStep}, {ref, refStep}, result);
}

ruxStatus RUXCALL ruxiSqrDiff16x16B_8u32s(
    const uint8_t* src, int32_t srcStep,
    const uint8_t* refForward, int32_t refForwardStep, ruxHalfPelMode mcTypeForward,
    const uint8_t* refBackward, int32_t refBackwardStep, ruxHalfPelMode mcTypeBackward, int32_t* result)
{
    if (auto failure = firstFailure(pointers(src, refForward, refBackward, result))) return failure;

    const KernelBoth kernel = squaresBoth(modeIndex(mcTypeForward), modeIndex(mcTypeBackward));
    return kernel({src, srcStep}, {{refForward, refForwardStep}, truncatedStride(refForwardStep)},
                  {{refBackward, refBackwardStep}, truncatedStride(refBackwardStep)}, result);
}

ruxStatus RUXCALL ruxiVariance16x16_8u32s(const uint8_t* src, int32_t srcStep, int32_t* result)
{
    if (auto failure = firstFailure(pointers(src, result))) return failure;

    Sums sums;
    storeSums({src, srcStep}, sums);
    store(result, static_cast<int32_t>(sums.squares) - squareOfSumBy256(sums.samples));
    return ruxStatusOk;
}

}
