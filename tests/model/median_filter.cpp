#include "model/median_filter.h"

#include <algorithm>
#include <vector>

namespace rux::model {
namespace {

// The pixel, and so many neighbours in each direction.
ruxStatus medianFilter(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize roi, bool legalMask,
                       int beside, int above)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (roi.width < 1 || roi.height < 1) return ruxStatusSizeError;
    if (srcStep < 1 || dstStep < 1) return ruxStatusStepError;
    if (!legalMask) return ruxStatusMaskSize;
    for (int y = 0; y < roi.height; y++) {
        for (int x = 0; x < roi.width; x++) {
            std::vector<uint8_t> window = {*at(src, srcStep, x, y)};
            for (int i = 1; i <= beside; i++) {
                for (const int sign : {-1, 1}) window.push_back(*at(src, srcStep, x + sign * i, y));
            }
            for (int j = 1; j <= above; j++) {
                for (const int sign : {-1, 1}) window.push_back(*at(src, srcStep, x, y + sign * j));
            }
            std::sort(window.begin(), window.end());
            *at(dst, dstStep, x, y) = window[window.size() / 2];
        }
    }
    return ruxStatusOk;
}

}

ruxStatus ruxiFilterMedianHoriz_8u_C1R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       ruxiSize roiSize, int32_t maskCode)
{
    const bool legal = maskCode == 31 || maskCode == 51;
    return medianFilter(src, srcStep, dst, dstStep, roiSize, legal, maskCode == 31 ? 1 : 2, 0);
}

ruxStatus ruxiFilterMedianCross_8u_C1R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       ruxiSize roiSize, int32_t maskCode)
{
    const bool legal = maskCode == 33 || maskCode == 55;
    const int reach = maskCode == 33 ? 1 : 2;
    return medianFilter(src, srcStep, dst, dstStep, roiSize, legal, reach, reach);
}

}
