#include "model/filter_maximum.h"

#include <algorithm>

namespace rux::model {

ruxStatus ruxiFilterMax_8u_C1R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                               ruxiSize roiSize, ruxiSize maskSize, ruxiPoint anchor)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (roiSize.width < 1 || roiSize.height < 1) return ruxStatusSizeError;
    if (srcStep < 1 || dstStep < 1) return ruxStatusStepError;
    if (maskSize.width < 1 || maskSize.height < 1) return ruxStatusMaskSize;
    if (anchor.x < 0 || anchor.x >= maskSize.width) return ruxStatusAnchor;
    if (anchor.y < 0 || anchor.y >= maskSize.height) return ruxStatusAnchor;
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) {
            uint8_t greatest = 0;
            for (int j = 0; j < maskSize.height; j++) {
                for (int i = 0; i < maskSize.width; i++) {
                    greatest = std::max(greatest, *at(src, srcStep, x - anchor.x + i, y - anchor.y + j));
                }
            }
            *at(dst, dstStep, x, y) = greatest;
        }
    }
    return ruxStatusOk;
}

}
