// The number of pixels in a range, both bounds included.
//
// The operations stand here once; each level's file gives the routines that count over an image.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"
#include "frame/float_environment.h"

namespace rux::RUX_LEVEL {
namespace {

struct CountedImage {
    const uint8_t* src;
    int32_t step;
    ruxiSize roiSize;

    // row(src) for each row.
    template <typename Row>
    void forEachRow(Row row) const
    {
        const uint8_t* from = src;
        for (int32_t y = 0; y < roiSize.height; ++y, from += step) row(from);
    }
};

int32_t countBytes(const CountedImage& image, uint8_t lowerBound, uint8_t upperBound);

// The bounds are given as their bits.
int32_t countFloats(const CountedImage& image, uint32_t lowerBound, uint32_t upperBound);

// A NaN among the bounds is out of order at px and m6 only.
inline bool areInOrder(float lowerBound, float upperBound)
{
    return thisLevel <= m6::number ? lowerBound <= upperBound : !(lowerBound > upperBound);
}

}

ruxStatus RUXCALL ruxiCountInRange_8u_C1R(const uint8_t* src, int32_t srcStep, ruxiSize roiSize, int32_t* counts,
                                          uint8_t lowerBound, uint8_t upperBound)
{
    if (auto failure = firstFailure(pointers(src, counts), steps(srcStep), sizes(roiSize),
                                    require(lowerBound <= upperBound, ruxStatusBoundsError)))
        return failure;

    store<int32_t>(counts, countBytes({src, srcStep, roiSize}, lowerBound, upperBound));
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiCountInRange_32f_C1R(const float* src, int32_t srcStep, ruxiSize roiSize, int32_t* counts,
                                           float lowerBound, float upperBound)
{
    const uint32_t lower = bitsOf(lowerBound);
    const uint32_t upper = bitsOf(upperBound);
    if (auto failure = firstFailure(pointers(src, counts), steps(srcStep), sizes(roiSize),
                                    require(areInOrder(floatOf(lower), floatOf(upper)), ruxStatusBoundsError)))
        return failure;

    store<int32_t>(counts, countFloats({bytesOf(src), srcStep, roiSize}, lower, upper));
    return ruxStatusOk;
}

}
