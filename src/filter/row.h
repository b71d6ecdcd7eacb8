// Convolution along rows with an integer kernel, and a division that each level rounds in its own way.
//
// The operation stands here once; each level's file gives the routine that filters the image.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"
#include "frame/float_environment.h"

namespace rux::RUX_LEVEL {
namespace {

// The kernel as the host holds it, at any address. It is applied in reverse order: tap t, on the t-th pixel from the
// left, is the t-th coefficient from the end.
struct Kernel {
    const uint8_t* coefficients;
    int32_t size;

    int32_t tap(int32_t t) const { return load<int32_t>(coefficients + (size - 1 - static_cast<ptrdiff_t>(t)) * 4); }
};

enum class Division { none, shift, factor };

struct Divisor {
    Division division;
    int32_t shift;
    float factor;
};

// The image with the first row's first tap.
struct RowImages {
    const uint8_t* src;
    ptrdiff_t srcStride;
    uint8_t* dst;
    ptrdiff_t dstStride;
    ruxiSize roiSize;
};

void filterImage(const RowImages& images, const Kernel& kernel, const Divisor& divisor);

// Not inlined: the caller has set the stack's precision.
[[gnu::noinline]] float singleReciprocal(int32_t divisor)
{
    return roundedToSingle(1.0 / divisor);
}

Divisor divisorOf(int32_t divisor)
{
    if (divisor == 1) return {Division::none, 0, 1.0f};
    if (divisor > 0 && (divisor & (divisor - 1)) == 0) return {Division::shift, 31 - __builtin_clz(divisor), 1.0f};
    return {Division::factor, 0, singleReciprocal(divisor)};
}

template <typename FilterRow>
inline void forEachRow(const RowImages& images, FilterRow filterRow)
{
    for (int32_t y = 0; y < images.roiSize.height; ++y)
        filterRow(images.src + y * images.srcStride, images.dst + y * images.dstStride);
}

}

ruxStatus RUXCALL ruxiFilterRow_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       ruxiSize roiSize, const int32_t* kernel, int32_t kernelSize, int32_t xAnchor,
                                       int32_t divisor)
{
    if (auto failure = firstFailure(pointers(src, dst, kernel), sizes(roiSize),
                                    require(kernelSize >= 1, ruxStatusSizeError),
                                    require(divisor != 0, ruxStatusDivisorZero), steps(srcStep, dstStep)))
        return failure;

    const DoublePrecision precision;
    const ptrdiff_t firstTap = static_cast<ptrdiff_t>(xAnchor) - (kernelSize - 1);
    filterImage({src + firstTap, srcStep, dst, dstStep, roiSize}, {bytesOf(kernel), kernelSize}, divisorOf(divisor));
    return ruxStatusOk;
}

}
