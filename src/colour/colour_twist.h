// Affine transform of the three channels by a matrix of floats.
//
// The operation stands here once; each level's file gives the routine for the image. What it holds meanwhile sets the
// rounding mode, so that the result depends on none that the host has set.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

struct TwistImages {
    const uint8_t* src;
    ptrdiff_t srcStep;
    uint8_t* dst;
    ptrdiff_t dstStep;
    ruxiSize roiSize;

    template <typename Row>
    void forEachRow(Row row) const
    {
        const uint8_t* from = src;
        uint8_t* to = dst;
        for (int32_t y = 0; y < roiSize.height; ++y, from += srcStep, to += dstStep)
            row(from, to, static_cast<size_t>(roiSize.width));
    }
};

// Three rows of four: the factors of the three channels and the offset.
struct TwistMatrix {
    float of[3][4];
};

void twistImage(const TwistImages& images, const TwistMatrix& matrix);

}

ruxStatus RUXCALL ruxiColorTwist32f_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           ruxiSize roiSize, const float* twist)
{
    if (auto failure = firstFailure(pointers(src, dst, twist), sizes(roiSize), steps(srcStep, dstStep)))
        return failure;

    twistImage({src, srcStep, dst, dstStep, roiSize}, load<TwistMatrix>(twist));
    return ruxStatusOk;
}

}
