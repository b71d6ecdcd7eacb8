#include "model/copy.h"

namespace rux::model {
namespace {

bool isEmpty(ruxiSize size)
{
    return size.width < 1 || size.height < 1;
}

// Every pixel of `moved` bytes; pixels lie so many bytes apart.
ruxStatus copy(const void* src, int32_t srcStep, int srcPixel, void* dst, int32_t dstStep, int dstPixel, int moved,
               ruxiSize size)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (isEmpty(size)) return ruxStatusSizeError;
    if (srcStep < 1 || dstStep < 1) return ruxStatusStepError;
    for (int y = 0; y < size.height; y++) {
        const auto* from = at(static_cast<const uint8_t*>(src), srcStep, 0, y);
        auto* to = at(static_cast<uint8_t*>(dst), dstStep, 0, y);
        for (int x = 0; x < size.width; x++) {
            for (int byte = 0; byte < moved; byte++) to[x * dstPixel + byte] = from[x * srcPixel + byte];
        }
    }
    return ruxStatusOk;
}

// Every pixel's first bytes become the value's; pixels lie so many bytes apart.
template <class T>
ruxStatus set(const T& value, void* dst, int32_t dstStep, int pixel, ruxiSize size)
{
    if (!dst) return ruxStatusNullPointer;
    if (isEmpty(size)) return ruxStatusSizeError;
    if (dstStep < 1) return ruxStatusStepError;
    for (int y = 0; y < size.height; y++) {
        auto* row = at(static_cast<uint8_t*>(dst), dstStep, 0, y);
        for (int x = 0; x < size.width; x++) store(row + x * pixel, value);
    }
    return ruxStatusOk;
}

}

ruxStatus ruxiCopy_8u_C1R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    return copy(src, srcStep, 1, dst, dstStep, 1, 1, roiSize);
}

ruxStatus ruxiCopy_8u_C3R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    return copy(src, srcStep, 3, dst, dstStep, 3, 3, roiSize);
}

ruxStatus ruxiCopy_8u_C4R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    return copy(src, srcStep, 4, dst, dstStep, 4, 4, roiSize);
}

ruxStatus ruxiCopy_16s_C1R(Level, const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    return copy(src, srcStep, 2, dst, dstStep, 2, 2, roiSize);
}

ruxStatus ruxiCopy_32f_C1R(Level, const float* src, int32_t srcStep, float* dst, int32_t dstStep, ruxiSize roiSize)
{
    return copy(src, srcStep, 4, dst, dstStep, 4, 4, roiSize);
}

ruxStatus ruxiCopy_8u_C1MR(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize roiSize,
                           const uint8_t* mask, int32_t maskStep)
{
    if (!src || !dst || !mask) return ruxStatusNullPointer;
    if (isEmpty(roiSize)) return ruxStatusSizeError;
    if (srcStep < 1 || dstStep < 1 || maskStep < 1) return ruxStatusStepError;
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) {
            if (*at(mask, maskStep, x, y) != 0) *at(dst, dstStep, x, y) = *at(src, srcStep, x, y);
        }
    }
    return ruxStatusOk;
}

ruxStatus ruxiCopy_8u_C3AC4R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                             ruxiSize roiSize)
{
    return copy(src, srcStep, 3, dst, dstStep, 4, 3, roiSize);
}

ruxStatus ruxiSet_8u_C1R(Level, uint8_t value, uint8_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    return set(value, dst, dstStep, 1, roiSize);
}

ruxStatus ruxiSet_16s_C1R(Level, int16_t value, int16_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    return set(value, dst, dstStep, 2, roiSize);
}

ruxStatus ruxiSet_32f_C1R(Level, float value, float* dst, int32_t dstStep, ruxiSize roiSize)
{
    return set(load<uint32_t>(&value), dst, dstStep, 4, roiSize);
}

ruxStatus ruxiSet_8u_C4CR(Level, uint8_t value, uint8_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    return set(value, dst, dstStep, 4, roiSize);
}

}
