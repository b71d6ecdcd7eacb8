// Sobel 3x3 derivatives with replicated edges, 8-bit to 16-bit.
//
// The operations and what they compute of a row stand here once; each level's file gives the routine that filters an
// image. Every value on the way lies in -1020..1020, so that no 16-bit sum overflows.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"

namespace rux::RUX_LEVEL {
namespace {

// A kernel's part along the row, D or H of a pixel with its neighbours' columns, and its part across the rows.
struct DerivativeX {
    static int along(const uint8_t* row, int32_t left, int32_t, int32_t right) { return row[right] - row[left]; }

    // D of the row above + 2 * D + D of the row below
    template <typename Words>
    static Words across(Words above, Words here, Words below)
    {
        return above + below + here + here;
    }
};

enum class RowOrder { lowerLessUpper = 0, upperLessLower = 1 };

template <RowOrder rowOrder>
struct DerivativeY {
    static int along(const uint8_t* row, int32_t left, int32_t x, int32_t right)
    {
        return row[left] + 2 * row[x] + row[right];
    }

    template <typename Words>
    static Words across(Words above, Words, Words below)
    {
        return rowOrder == RowOrder::lowerLessUpper ? below - above : above - below;
    }
};

// Steps in bytes.
struct SobelImages {
    const uint8_t* src;
    ptrdiff_t srcStep;
    uint8_t* dst;
    ptrdiff_t dstStep;
    int32_t width;
    int32_t height;
};

template <typename Kernel>
void sobelImage(const SobelImages& images);

inline ruxStatus sobelFailure(const uint8_t* src, int32_t srcStep, const int16_t* dst, int32_t dstStep,
                              ruxiSize roiSize)
{
    return firstFailure(pointers(src, dst), steps(srcStep, dstStep),
                        require(roiSize.width >= 1 && roiSize.height >= 2, ruxStatusSizeError),
                        require(dstStep % 2 == 0, ruxStatusStepNotPixelMultiple));
}

}

ruxStatus RUXCALL ruxiSobel3x3_Dx_8u16s_C1R(const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                            ruxiSize roiSize)
{
    if (auto failure = sobelFailure(src, srcStep, dst, dstStep, roiSize)) return failure;

    sobelImage<DerivativeX>({src, srcStep, bytesOf(dst), dstStep, roiSize.width, roiSize.height});
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiSobel3x3_Dy_8u16s_C1R(const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                            int32_t rowOrder, ruxiSize roiSize)
{
    if (auto failure = firstFailure(sobelFailure(src, srcStep, dst, dstStep, roiSize),
                                    require(rowOrder == 0 || rowOrder == 1, ruxStatusBadArgument)))
        return failure;

    const auto filter = rowOrder == 0 ? sobelImage<DerivativeY<RowOrder::lowerLessUpper>>
                                      : sobelImage<DerivativeY<RowOrder::upperLessLower>>;
    filter({src, srcStep, bytesOf(dst), dstStep, roiSize.width, roiSize.height});
    return ruxStatusOk;
}

}
