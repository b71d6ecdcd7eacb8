// Operations of two 8-bit images into a third: their checks and their walk over the rows.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Row>
ruxStatus combineByteImages(Row row, const uint8_t* src1, int32_t src1Step, const uint8_t* src2, int32_t src2Step,
                            uint8_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    if (auto failure =
            firstFailure(pointers(src1, src2, dst), steps(src1Step, src2Step, dstStep), sizes(roiSize)))
        return failure;

    for (int32_t y = 0; y < roiSize.height; ++y, src1 += src1Step, src2 += src2Step, dst += dstStep)
        row(src1, src2, dst, static_cast<size_t>(roiSize.width));
    return ruxStatusOk;
}

}
}
