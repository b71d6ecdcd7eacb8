// Absolute difference of two 8-bit images.
//
// The operation stands here once; each level's file gives the routine that combines a row.
#pragma once

#include "arith/byte_images.h"

namespace rux::RUX_LEVEL {
namespace {

void absDiffRow(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, size_t bytes);

struct AbsoluteDifference {
    uint8_t operator()(uint8_t a, uint8_t b) const { return static_cast<uint8_t>(a > b ? a - b : b - a); }

    // |a - b|: of the two differences that stop at 0 one is 0 and the other the result.
    template <typename Lane>
    Lane operator()(Lane a, Lane b) const
    {
        return subtractSaturated(a, b) | subtractSaturated(b, a);
    }
};

}

ruxStatus RUXCALL ruxiAbsDiff_8u_C1R(const uint8_t* src1, int32_t src1Step, const uint8_t* src2, int32_t src2Step,
                                     uint8_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    return combineByteImages(absDiffRow, src1, src1Step, src2, src2Step, dst, dstStep, roiSize);
}

}
