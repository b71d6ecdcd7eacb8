#include "model/lowpass.h"

namespace rux::model {

uint8_t lowpassMean(Level level, int32_t maskCode, int sum)
{
    if (maskCode == 55) return static_cast<uint8_t>((sum + 13) * 10485 >> 18);
    return static_cast<uint8_t>(level == px ? (sum + 5) * 455 >> 12 : (sum + 5) * 7281 >> 16);
}

ruxStatus ruxiFilterLowpass_8u_C1R(Level level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                   ruxiSize roiSize, int32_t maskCode)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (roiSize.width < 1 || roiSize.height < 1) return ruxStatusSizeError;
    if (srcStep < 1 || dstStep < 1) return ruxStatusStepError;
    if (maskCode != 33 && maskCode != 55) return ruxStatusMaskSize;
    const int reach = maskCode == 33 ? 1 : 2;
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) {
            int sum = 0;
            for (int j = -reach; j <= reach; j++) {
                for (int i = -reach; i <= reach; i++) sum += *at(src, srcStep, x + i, y + j);
            }
            *at(dst, dstStep, x, y) = lowpassMean(level, maskCode, sum);
        }
    }
    return ruxStatusOk;
}

}
