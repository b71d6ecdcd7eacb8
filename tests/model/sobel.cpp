#include "model/sobel.h"

#include <algorithm>

namespace rux::model {
namespace {

ruxStatus checked(bool null, int32_t srcStep, int32_t dstStep, ruxiSize roi)
{
    if (null) return ruxStatusNullPointer;
    if (srcStep < 1 || dstStep < 1) return ruxStatusStepError;
    if (roi.width < 1 || roi.height < 2) return ruxStatusSizeError;
    if (dstStep % 2 != 0) return ruxStatusStepNotPixelMultiple;
    return ruxStatusOk;
}

// The source with coordinates clamped into the region.
class Clamped {
public:
    Clamped(Level level, const uint8_t* src, int32_t step, ruxiSize roi) : src(src), step(step), roi(roi)
    {
        if (roi.width == 1 && (level == px || level == m6)) this->roi.width = 2;
    }
    int operator()(int x, int y) const
    {
        return *at(src, step, std::clamp(x, 0, roi.width - 1), std::clamp(y, 0, roi.height - 1));
    }

    template <class Value>
    void eachPixel(int16_t* dst, int32_t dstStep, const Value& value) const
    {
        for (int y = 0; y < roi.height; y++) {
            for (int x = 0; x < roi.width; x++) store(at(dst, dstStep, x, y), static_cast<int16_t>(value(x, y)));
        }
    }

private:
    const uint8_t* src;
    int32_t step;
    ruxiSize roi;
};

}

ruxStatus ruxiSobel3x3_Dx_8u16s_C1R(Level level, const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                    ruxiSize roiSize)
{
    const ruxStatus status = checked(!src || !dst, srcStep, dstStep, roiSize);
    if (status != ruxStatusOk) return status;
    const Clamped s(level, src, srcStep, roiSize);
    const auto difference = [&](int x, int y) { return s(x + 1, y) - s(x - 1, y); };
    s.eachPixel(dst, dstStep, [&](int x, int y) {
        return difference(x, y - 1) + 2 * difference(x, y) + difference(x, y + 1);
    });
    return ruxStatusOk;
}

ruxStatus ruxiSobel3x3_Dy_8u16s_C1R(Level level, const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                    int32_t rowOrder, ruxiSize roiSize)
{
    const ruxStatus status = checked(!src || !dst, srcStep, dstStep, roiSize);
    if (status != ruxStatusOk) return status;
    if (rowOrder != 0 && rowOrder != 1) return ruxStatusBadArgument;
    const Clamped s(level, src, srcStep, roiSize);
    const auto smoothed = [&](int x, int y) { return s(x - 1, y) + 2 * s(x, y) + s(x + 1, y); };
    s.eachPixel(dst, dstStep, [&](int x, int y) {
        const int below = smoothed(x, y + 1), above = smoothed(x, y - 1);
        return rowOrder == 0 ? below - above : above - below;
    });
    return ruxStatusOk;
}

}
