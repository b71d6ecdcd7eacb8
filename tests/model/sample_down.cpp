#include "model/sample_down.h"

namespace rux::model {

ruxStatus ruxiSampleDownH2V2_JPEG_8u_C1R(Level, const uint8_t* src, int32_t srcStep, ruxiSize srcRoiSize, uint8_t* dst,
                                         int32_t dstStep, ruxiSize dstRoiSize)
{
    if (!src) return ruxStatusNullPointer;
    if (srcStep < 1) return ruxStatusStepError;
    if (srcRoiSize.width < 1 || srcRoiSize.height < 1) return ruxStatusSizeError;
    if (!dst) return ruxStatusNullPointer;
    if (dstStep < 1) return ruxStatusStepError;
    if (dstRoiSize.width < 1 || dstRoiSize.height < 1) return ruxStatusSizeError;
    for (int y = 0; y < dstRoiSize.height; y++) {
        for (int x = 0; x < dstRoiSize.width; x++) {
            const uint8_t* above = at(src, srcStep, 2 * x, 2 * y);
            const uint8_t* below = at(src, srcStep, 2 * x, 2 * y + 1);
            *at(dst, dstStep, x, y) = static_cast<uint8_t>((above[0] + above[1] + below[0] + below[1] + 3) >> 2);
        }
    }
    return ruxStatusOk;
}

}
