// Packed 4:2:2 to three planes and back: bytes move, nothing is computed.
//
// The operations stand here once; each level's file gives the routines for a row.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

// One row of each plane; the chroma rows are half as long as the luma row.
struct SplitRow {
    uint8_t* luma;
    uint8_t* cb;
    uint8_t* cr;

    SplitRow at(size_t pair) const { return {luma + pair * 2, cb + pair, cr + pair}; }
};

struct JoinRow {
    const uint8_t* luma;
    const uint8_t* cb;
    const uint8_t* cr;

    JoinRow at(size_t pair) const { return {luma + pair * 2, cb + pair, cr + pair}; }
};

// Y0, Cb, Y1, Cr for each pair of pixels.
void splitRow(const uint8_t* packed, SplitRow planes, size_t pairs);
void joinRow(JoinRow planes, uint8_t* packed, size_t pairs);

// The last pixel of an odd width counts in the luma and the packed stride, though nothing of it is moved.
template <typename Plane>
ruxStatus packed422Failure(const uint8_t* packed, int32_t packedStep, Plane* const planes[3],
                           const int32_t planeStep[3], ruxiSize roiSize)
{
    if (auto failure = pointers(planes, planeStep)) return failure;
    const int64_t width = roiSize.width;
    return firstFailure(pointers(planes[0], planes[1], planes[2], packed),
                        steps(planeStep[0], planeStep[1], planeStep[2], packedStep),
                        require(width >= 2 && roiSize.height >= 1, ruxStatusSizeError),
                        require(width <= planeStep[0] && width / 2 <= planeStep[1] && width / 2 <= planeStep[2] &&
                                    width * 2 <= packedStep,
                                ruxStatusStrideError));
}

}

ruxStatus RUXCALL ruxiSplit422_8u_C2P3R(const uint8_t* src, int32_t srcStep, uint8_t* const dst[3],
                                        const int32_t dstStep[3], ruxiSize roiSize)
{
    if (auto failure = packed422Failure(src, srcStep, dst, dstStep, roiSize)) return failure;

    const ptrdiff_t lumaStep = dstStep[0], cbStep = dstStep[1], crStep = dstStep[2];
    SplitRow row = {dst[0], dst[1], dst[2]};
    for (int32_t y = 0; y < roiSize.height; ++y) {
        splitRow(src, row, static_cast<size_t>(roiSize.width) / 2);
        src += srcStep;
        row = {row.luma + lumaStep, row.cb + cbStep, row.cr + crStep};
    }
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiJoin422_8u_P3C2R(const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst,
                                       int32_t dstStep, ruxiSize roiSize)
{
    if (auto failure = packed422Failure(dst, dstStep, src, srcStep, roiSize)) return failure;

    const ptrdiff_t lumaStep = srcStep[0], cbStep = srcStep[1], crStep = srcStep[2];
    JoinRow row = {src[0], src[1], src[2]};
    for (int32_t y = 0; y < roiSize.height; ++y) {
        joinRow(row, dst, static_cast<size_t>(roiSize.width) / 2);
        dst += dstStep;
        row = {row.luma + lumaStep, row.cb + cbStep, row.cr + crStep};
    }
    return ruxStatusOk;
}

}
