#include "model/filter_row.h"

#include <algorithm>
#include <cmath>

#include "model/wrapping.h"

namespace rux::model {
namespace {

enum class Way { px, m6, general, fast };

uint8_t saturated(double value)
{
    return static_cast<uint8_t>(std::clamp(value, 0.0, 255.0));
}

int shiftOf(int32_t divisor)
{
    int shift = 0;
    while (1 << shift != divisor) shift++;
    return shift;
}

bool isPowerOfTwo(int32_t divisor)
{
    return divisor > 0 && (divisor & (divisor - 1)) == 0;
}

uint8_t byPowerOfTwo(Way way, int32_t sum, int shift)
{
    if (way == Way::fast) return saturated(sum >> shift);
    return sum < 1 ? 0 : saturated((int64_t(sum) + 1) >> shift);
}

uint8_t byFactor(Way way, int32_t sum, float factor)
{
    const double product = static_cast<double>(sum) * static_cast<double>(factor);
    const float inSingle = static_cast<float>(sum) * factor;
    switch (way) {
    case Way::px: return product <= 0 ? 0 : saturated(std::trunc(product + 0.5));
    case Way::m6: return saturated(std::nearbyint(product));
    case Way::general: return saturated(std::trunc(inSingle));
    case Way::fast: return saturated(std::nearbyint(inSingle));
    }
    return 0;
}

uint8_t divided(Way way, int32_t sum, int32_t divisor)
{
    if (divisor == 1) return saturated(sum);
    if (isPowerOfTwo(divisor)) return byPowerOfTwo(way, sum, shiftOf(divisor));
    return byFactor(way, sum, static_cast<float>(1.0 / divisor));
}

Way wayOf(Level level, int32_t width, const int32_t* kernel, int32_t kernelSize, bool memory)
{
    if (level == px) return Way::px;
    if (level == m6) return Way::m6;
    if (!memory || kernelSize < 3 || width < 16) return Way::general;
    for (int32_t j = 0; j < kernelSize; j++) {
        const auto coefficient = load<int32_t>(kernel + j);
        if (coefficient < INT16_MIN || coefficient > INT16_MAX) return Way::general;
    }
    return Way::fast;
}

ruxStatus filterRow(Level level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize roi,
                    const int32_t* kernel, int32_t kernelSize, int32_t xAnchor, int32_t divisor, bool memory)
{
    if (!src || !dst || !kernel) return ruxStatusNullPointer;
    if (roi.width < 1 || roi.height < 1 || kernelSize < 1) return ruxStatusSizeError;
    if (divisor == 0) return ruxStatusDivisorZero;
    if (srcStep < 1 || dstStep < 1) return ruxStatusStepError;
    const Way way = wayOf(level, roi.width, kernel, kernelSize, memory);
    for (int32_t y = 0; y < roi.height; y++) {
        for (int32_t x = 0; x < roi.width; x++) {
            Wrapping sum;
            for (int32_t j = 0; j < kernelSize; j++) {
                const uint8_t pixel = *advance(at(src, srcStep, x, y), ptrdiff_t(xAnchor) - j);
                sum = sum + Wrapping(load<int32_t>(kernel + j)) * pixel;
            }
            *at(dst, dstStep, x, y) = divided(way, sum.value(), divisor);
        }
    }
    return ruxStatusOk;
}

}

ruxStatus ruxiFilterRow_8u_C1R(Level level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                               ruxiSize roiSize, const int32_t* kernel, int32_t kernelSize, int32_t xAnchor,
                               int32_t divisor)
{
    return filterRow(level, src, srcStep, dst, dstStep, roiSize, kernel, kernelSize, xAnchor, divisor, true);
}

ruxStatus filterRowWithoutMemory(Level level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                 ruxiSize roiSize, const int32_t* kernel, int32_t kernelSize, int32_t xAnchor,
                                 int32_t divisor)
{
    return filterRow(level, src, srcStep, dst, dstStep, roiSize, kernel, kernelSize, xAnchor, divisor, false);
}

}
