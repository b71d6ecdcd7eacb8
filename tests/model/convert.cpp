#include "model/convert.h"

#include <cmath>

namespace rux::model {
namespace {

uint8_t byteOf(Level level, float x, bool toNearest)
{
    if (std::isnan(x)) return level == px || level == m6 ? 0 : 255;
    if (x >= 255) return 255;
    if (x <= 0) return 0;
    const int whole = static_cast<int>(x);
    const float rest = x - static_cast<float>(whole);   // exact
    const bool up = rest > 0.5f || (rest == 0.5f && whole % 2 == 1);
    return static_cast<uint8_t>(toNearest && up ? whole + 1 : whole);
}

}

ruxStatus ruxiConvert_8u32f_C1R(Level, const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                ruxiSize roiSize)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (roiSize.width < 1 || roiSize.height < 1) return ruxStatusSizeError;
    if (srcStep < 1 || dstStep < 1) return ruxStatusStepError;
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) {
            store(at(dst, dstStep, x, y), static_cast<float>(*at(src, srcStep, x, y)));
        }
    }
    return ruxStatusOk;
}

ruxStatus ruxiConvert_32f8u_C1R(Level level, const float* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                ruxiSize roiSize, int32_t roundMode)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (roiSize.width < 1 || roiSize.height < 1) return ruxStatusSizeError;
    if (srcStep < 1 || dstStep < 1) return ruxStatusStepError;
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) {
            *at(dst, dstStep, x, y) = byteOf(level, load<float>(at(src, srcStep, x, y)), roundMode == 1);
        }
    }
    return ruxStatusOk;
}

}
