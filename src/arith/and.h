// Bitwise AND of two 8-bit images.
//
// The operation stands here once; each level's file gives the routine that combines a row.
#pragma once

#include "arith/byte_images.h"

namespace rux::RUX_LEVEL {
namespace {

void andRow(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, size_t bytes);

struct BitwiseAnd {
    template <typename Lane>
    Lane operator()(Lane a, Lane b) const
    {
        return static_cast<Lane>(a & b);
    }
};

}

ruxStatus RUXCALL ruxiAnd_8u_C1R(const uint8_t* src1, int32_t src1Step, const uint8_t* src2, int32_t src2Step,
                                 uint8_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    return combineByteImages(andRow, src1, src1Step, src2, src2Step, dst, dstStep, roiSize);
}

}
