// Resize of a rectangle of an 8-bit image, by one of four kernels.
//
// The operation stands here once; each level's file gives the row routines that the kernels' headers declare.
#pragma once

#include "frame/checks.h"
#include "frame/float_environment.h"
#include "geometry/resize_cubic.h"
#include "geometry/resize_linear.h"
#include "geometry/resize_nearest.h"
#include "geometry/resize_super.h"

namespace rux::RUX_LEVEL {
namespace {

// Supersampling serves reductions on both axes alone.
inline ruxStatus interpolationMode(ruxInterpolation mode, double xFactor, double yFactor)
{
    return require(mode == ruxInterpolationNearest || mode == ruxInterpolationLinear || mode == ruxInterpolationCubic ||
                       (mode == ruxInterpolationSuperSample && xFactor < 1.0 && yFactor < 1.0),
                   ruxStatusInterpolationMode);
}

inline ruxStatus startsInside(ruxiRect rectangle, ruxiSize image)
{
    return require(rectangle.x < image.width && rectangle.y < image.height, ruxStatusNoOperation);
}

// What the image is too small for is done by a simpler kernel. It is the whole image that counts.
inline ruxInterpolation effectiveMode(ruxInterpolation mode, ruxiSize image)
{
    if (image.width < 2 || image.height < 2) return ruxInterpolationNearest;
    if (mode == ruxInterpolationCubic && (image.width < 4 || image.height < 4)) return ruxInterpolationLinear;
    return mode;
}

// What the checks have let through. Not inlined: on the floating-point stack a conversion to an integer puts back the
// control word that its own function began with, so none may stand in the function that sets the precision.
[[gnu::noinline]] ruxStatus resize(const uint8_t* src, ruxiSize srcSize, int32_t srcStep, ruxiRect srcRoi, uint8_t* dst,
                                   int32_t dstStep, ruxiSize dstRoiSize, double xFactor, double yFactor,
                                   ruxInterpolation interpolation)
{
    const uint8_t* const origin = src + static_cast<ptrdiff_t>(srcRoi.y) * srcStep + srcRoi.x;
    if (interpolation == ruxInterpolationSuperSample) {
        const Reduction reduction = {
            layReducedAxis(trimmedLength(srcRoi.x, srcRoi.width, srcSize.width), xFactor, dstRoiSize.width),
            layReducedAxis(trimmedLength(srcRoi.y, srcRoi.height, srcSize.height), yFactor, dstRoiSize.height),
            xFactor * yFactor};
        return superSample(reduction, origin, srcStep, dst, dstStep);
    }

    const ruxInterpolation mode = effectiveMode(interpolation, srcSize);
    const bool isNearest = mode == ruxInterpolationNearest;
    const Axis x = layAxis(srcRoi.x, srcSize.width, srcRoi.width, dstRoiSize.width, xFactor, isNearest);
    const Axis y = layAxis(srcRoi.y, srcSize.height, srcRoi.height, dstRoiSize.height, yFactor, isNearest);
    if (isNearest) return resizeNearest(x, y, origin, srcStep, dst, dstStep);
    if (mode == ruxInterpolationLinear) return resizeLinear(x, y, origin, srcStep, dst, dstStep);
    return resizeCubic(x, y, origin, srcStep, dst, dstStep);
}

}

ruxStatus RUXCALL ruxiResize_8u_C1R(const uint8_t* src, ruxiSize srcSize, int32_t srcStep, ruxiRect srcRoi,
                                    uint8_t* dst, int32_t dstStep, ruxiSize dstRoiSize, double xFactor, double yFactor,
                                    ruxInterpolation interpolation)
{
    const ruxiSize srcRoiSize = {srcRoi.width, srcRoi.height};

    if (auto failure = firstFailure(pointers(src, dst), sizes(srcSize), steps(srcStep, dstStep),
                                    require(srcRoi.x >= 0 && srcRoi.y >= 0, ruxStatusSizeError),
                                    sizes(srcRoiSize, dstRoiSize), startsInside(srcRoi, srcSize),
                                    require(xFactor > 0.0 && yFactor > 0.0, ruxStatusResizeFactor),
                                    interpolationMode(interpolation, xFactor, yFactor)))
        return failure;

    const DoublePrecision precision;
    return resize(src, srcSize, srcStep, srcRoi, dst, dstStep, dstRoiSize, xFactor, yFactor, interpolation);
}

}
