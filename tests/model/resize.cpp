#include "model/resize.h"

#include <cmath>

#include "model/resize_kernels.h"

namespace rux::model {
namespace {

ruxStatus checked(const uint8_t* src, ruxiSize srcSize, int32_t srcStep, ruxiRect srcRoi, uint8_t* dst, int32_t dstStep,
                  ruxiSize dstRoiSize)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (srcSize.width < 1 || srcSize.height < 1) return ruxStatusSizeError;
    if (srcStep < 1 || dstStep < 1) return ruxStatusStepError;
    if (srcRoi.x < 0 || srcRoi.y < 0 || srcRoi.width < 1 || srcRoi.height < 1) return ruxStatusSizeError;
    if (dstRoiSize.width < 1 || dstRoiSize.height < 1) return ruxStatusSizeError;
    if (srcRoi.x >= srcSize.width || srcRoi.y >= srcSize.height) return ruxStatusNoOperation;
    return ruxStatusOk;
}

// By the size of the whole image, not of the rectangle.
ruxInterpolation downgraded(ruxInterpolation mode, ruxiSize srcSize)
{
    if (srcSize.width < 2 || srcSize.height < 2) return ruxInterpolationNearest;
    const bool small = srcSize.width < 4 || srcSize.height < 4;
    return small && mode == ruxInterpolationCubic ? ruxInterpolationLinear : mode;
}

int32_t trimmed(int32_t begin, int32_t length, int32_t srcLength)
{
    const int32_t end = (Wrapping(begin) + Wrapping(length)).value();
    return end > srcLength ? srcLength - begin : length;
}

int32_t producedLength(int32_t length, double factor, int32_t atMost)
{
    const int32_t whole = truncated(length * factor + resizeEpsilon);
    if (whole >= atMost) return atMost;
    return whole < 1 ? 1 : whole;
}

bool hasWholeRatio(double factor)
{
    const double ratio = factor >= 1.0 ? factor : 1.0 / factor;
    return ratio - truncated(ratio) == 0.0;
}

Axis axisOf(ruxInterpolation mode, double factor, int32_t length, int32_t count, int32_t srcBegin, int32_t srcLength)
{
    if (mode == ruxInterpolationNearest && hasWholeRatio(factor)) {
        return {0.0, 1.0 / factor, count, srcLength, srcBegin};
    }
    const double span = length * factor;
    const double reciprocal = 1.0 / (span - 1.0);
    const double step = span > 1.0 ? (length - 1) * reciprocal : 0.0;
    return {mode == ruxInterpolationNearest ? 0.5 : 0.0, step, count, srcLength, srcBegin};
}

}

int32_t truncated(double value)
{
    const bool fits = value > -2147483649.0 && value < 2147483648.0;
    return fits ? static_cast<int32_t>(value) : INT32_MIN;
}

std::vector<double> positionsOf(const Axis& axis)
{
    std::vector<double> positions;
    double position = axis.start;
    for (int32_t i = 0; i < axis.count; i++) {
        positions.push_back(position);
        position += axis.step;
    }
    return positions;
}

int32_t indexOf(double position)
{
    return truncated(position + resizeEpsilon);
}

void resizeNearest(const Scaling& s, const Axis& x, const Axis& y)
{
    const auto columns = positionsOf(x), rows = positionsOf(y);
    for (int i = 0; i < y.count; i++) {
        const uint8_t* const from = advance(s.origin, rowOffset(indexOf(rows[i]), s.srcStep));
        for (int j = 0; j < x.count; j++) *at(s.dst, s.dstStep, j, i) = from[indexOf(columns[j])];
    }
}

ruxStatus ruxiResize_8u_C1R(Level level, const uint8_t* src, ruxiSize srcSize, int32_t srcStep, ruxiRect srcRoi,
                            uint8_t* dst, int32_t dstStep, ruxiSize dstRoiSize, double xFactor, double yFactor,
                            ruxInterpolation interpolation)
{
    const ruxStatus status = checked(src, srcSize, srcStep, srcRoi, dst, dstStep, dstRoiSize);
    if (status != ruxStatusOk) return status;
    const bool superSample = interpolation == ruxInterpolationSuperSample && xFactor < 1.0 && yFactor < 1.0;
    if (!superSample) {
        if (!(xFactor > 0.0) || !(yFactor > 0.0)) return ruxStatusResizeFactor;
        if (interpolation != 1 && interpolation != 2 && interpolation != 4) return ruxStatusInterpolationMode;
    }

    const int32_t width = trimmed(srcRoi.x, srcRoi.width, srcSize.width);
    const int32_t height = trimmed(srcRoi.y, srcRoi.height, srcSize.height);
    const ruxiSize dstSize = {producedLength(width, xFactor, dstRoiSize.width),
                              producedLength(height, yFactor, dstRoiSize.height)};
    const Scaling scaling = {level, at(src, srcStep, srcRoi.x, srcRoi.y), srcStep, srcSize,
                             {srcRoi.x, srcRoi.y, width, height}, dst, dstStep, dstSize};
    if (superSample) {
        resizeSuperSample(scaling, xFactor, yFactor);
        return ruxStatusOk;
    }
    const ruxInterpolation mode = downgraded(interpolation, srcSize);
    const Axis x = axisOf(mode, xFactor, width, dstSize.width, srcRoi.x, srcSize.width);
    const Axis y = axisOf(mode, yFactor, height, dstSize.height, srcRoi.y, srcSize.height);
    if (mode == ruxInterpolationNearest) resizeNearest(scaling, x, y);
    else if (mode == ruxInterpolationLinear) resizeLinear(scaling, x, y);
    else resizeCubic(scaling, x, y);
    return ruxStatusOk;
}

}
