// Comparison of an image with another or with a value into a mask of bytes: 255 where it holds, else 0.
//
// The operations stand here once; each level's file gives the routines that compare a row.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"
#include "frame/float_environment.h"

namespace rux::RUX_LEVEL {
namespace {

// Images have three loops only: less, less or equal, and equal.
template <ruxCmpOp cmpOp>
void compareRow(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, size_t width);

// A float image with a value, which is given as its bits.
template <ruxCmpOp cmpOp>
void compareValueRow(const uint8_t* src, uint32_t value, uint8_t* dst, size_t width);

template <ruxCmpOp cmpOp>
void compareByteRow(const uint8_t* src, uint8_t value, uint8_t* dst, size_t width);

struct FloatImage {
    const float* src;
    int32_t step;
};

struct MaskImage {
    uint8_t* dst;
    int32_t step;
};

template <ruxCmpOp cmpOp>
void compareImages(FloatImage src1, FloatImage src2, MaskImage mask, ruxiSize roiSize)
{
    const uint8_t* a = bytesOf(src1.src);
    const uint8_t* b = bytesOf(src2.src);
    uint8_t* to = mask.dst;
    for (int32_t y = 0; y < roiSize.height; ++y, a += src1.step, b += src2.step, to += mask.step)
        compareRow<cmpOp>(a, b, to, static_cast<size_t>(roiSize.width));
}

template <ruxCmpOp operation>
struct CmpOp {
    static constexpr ruxCmpOp value = operation;
};

// Any other operator is no error, and nothing is compared.
template <typename Compare>
void chooseOperator(ruxCmpOp cmpOp, Compare compare)
{
    switch (cmpOp) {
    case ruxCmpLess: compare(CmpOp<ruxCmpLess>()); break;
    case ruxCmpLessEq: compare(CmpOp<ruxCmpLessEq>()); break;
    case ruxCmpEq: compare(CmpOp<ruxCmpEq>()); break;
    case ruxCmpGreaterEq: compare(CmpOp<ruxCmpGreaterEq>()); break;
    case ruxCmpGreater: compare(CmpOp<ruxCmpGreater>()); break;
    default: break;
    }
}

}

ruxStatus RUXCALL ruxiCompare_32f_C1R(const float* src1, int32_t src1Step, const float* src2, int32_t src2Step,
                                      uint8_t* dst, int32_t dstStep, ruxiSize roiSize, ruxCmpOp cmpOp)
{
    if (auto failure =
            firstFailure(pointers(src1, src2, dst), steps(src1Step, src2Step, dstStep), sizes(roiSize)))
        return failure;

    const FloatImage first = {src1, src1Step};
    const FloatImage second = {src2, src2Step};
    const MaskImage mask = {dst, dstStep};
    switch (cmpOp) {
    case ruxCmpLess: compareImages<ruxCmpLess>(first, second, mask, roiSize); break;
    case ruxCmpLessEq: compareImages<ruxCmpLessEq>(first, second, mask, roiSize); break;
    case ruxCmpEq: compareImages<ruxCmpEq>(first, second, mask, roiSize); break;
    case ruxCmpGreaterEq: compareImages<ruxCmpLessEq>(second, first, mask, roiSize); break;
    case ruxCmpGreater: compareImages<ruxCmpLess>(second, first, mask, roiSize); break;
    default: break;   // no error, and nothing is compared
    }
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiCompareC_32f_C1R(const float* src, int32_t srcStep, float value, uint8_t* dst, int32_t dstStep,
                                       ruxiSize roiSize, ruxCmpOp cmpOp)
{
    if (auto failure = firstFailure(pointers(src, dst), steps(srcStep, dstStep), sizes(roiSize))) return failure;

    const uint32_t bits = bitsOf(value);
    chooseOperator(cmpOp, [=](auto chosen) {
        const uint8_t* from = bytesOf(src);
        uint8_t* to = dst;
        for (int32_t y = 0; y < roiSize.height; ++y, from += srcStep, to += dstStep)
            compareValueRow<decltype(chosen)::value>(from, bits, to, static_cast<size_t>(roiSize.width));
    });
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiCompareC_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t value, uint8_t* dst, int32_t dstStep,
                                      ruxiSize roiSize, ruxCmpOp cmpOp)
{
    if (auto failure = firstFailure(pointers(src, dst), steps(srcStep, dstStep), sizes(roiSize))) return failure;

    chooseOperator(cmpOp, [=](auto chosen) {
        const uint8_t* from = src;
        uint8_t* to = dst;
        for (int32_t y = 0; y < roiSize.height; ++y, from += srcStep, to += dstStep)
            compareByteRow<decltype(chosen)::value>(from, value, to, static_cast<size_t>(roiSize.width));
    });
    return ruxStatusOk;
}

}
