#include "model/swap_channels.h"

namespace rux::model {

ruxStatus ruxiSwapChannels_8u_C3R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                  ruxiSize roiSize, const int32_t* dstOrder)
{
    if (!src || !dst || !dstOrder) return ruxStatusNullPointer;
    if (roiSize.width < 1 || roiSize.height < 1) return ruxStatusSizeError;
    if (srcStep < 1 || dstStep < 1) return ruxStatusStepError;
    int32_t order[3];
    for (int c = 0; c < 3; c++) {
        order[c] = load<int32_t>(at(dstOrder, 0, c, 0));
        if (order[c] < 0 || order[c] > 2) return ruxStatusChannelOrder;
    }
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) {
            const uint8_t* const from = at(src, srcStep, 3 * x, y);
            const uint8_t pixel[3] = {from[0], from[1], from[2]};
            for (int c = 0; c < 3; c++) *at(dst, dstStep, 3 * x + c, y) = pixel[order[c]];
        }
    }
    return ruxStatusOk;
}

ruxStatus ruxiSwapChannels_8u_C3IR(Level level, uint8_t* srcDst, int32_t srcDstStep, ruxiSize roiSize,
                                   const int32_t* dstOrder)
{
    return ruxiSwapChannels_8u_C3R(level, srcDst, srcDstStep, srcDst, srcDstStep, roiSize, dstOrder);
}

}
