#include "model/replicate_border.h"

namespace rux::model {
namespace {

template <class T>
ruxStatus copyReplicateBorder(const T* src, int32_t srcStep, ruxiSize srcSize, T* dst, int32_t dstStep,
                              ruxiSize dstSize, int32_t top, int32_t left)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (srcStep < 1 || dstStep < 1) return ruxStatusStepError;
    if (srcSize.width < 1 || srcSize.height < 1) return ruxStatusSizeError;
    if (dstSize.width < 1 || dstSize.height < 1) return ruxStatusSizeError;
    if (top < 0 || left < 0) return ruxStatusSizeError;
    if (dstSize.width < int64_t(left) + srcSize.width) return ruxStatusSizeError;
    if (dstSize.height < int64_t(top) + srcSize.height) return ruxStatusSizeError;

    const auto copyRow = [&](int from, int to) {
        for (int x = 0; x < dstSize.width; x++) store(at(dst, dstStep, x, to), load<T>(at(dst, dstStep, x, from)));
    };
    for (int y = 0; y < srcSize.height; y++) {
        int x = 0;
        for (int i = 0; i < left; i++) store(at(dst, dstStep, x++, top + y), load<T>(at(src, srcStep, 0, y)));
        for (int i = 0; i < srcSize.width; i++) store(at(dst, dstStep, x++, top + y), load<T>(at(src, srcStep, i, y)));
        while (x < dstSize.width) {
            store(at(dst, dstStep, x++, top + y), load<T>(at(src, srcStep, srcSize.width - 1, y)));
        }
    }
    for (int y = top + srcSize.height; y < dstSize.height; y++) copyRow(y - 1, y);
    for (int y = 0; y < top; y++) copyRow(top, y);
    return ruxStatusOk;
}

}

ruxStatus ruxiCopyReplicateBorder_8u_C1R(Level, const uint8_t* src, int32_t srcStep, ruxiSize srcRoiSize, uint8_t* dst,
                                         int32_t dstStep, ruxiSize dstRoiSize, int32_t topBorderHeight,
                                         int32_t leftBorderWidth)
{
    return copyReplicateBorder(src, srcStep, srcRoiSize, dst, dstStep, dstRoiSize, topBorderHeight, leftBorderWidth);
}

ruxStatus ruxiCopyReplicateBorder_32s_C1R(Level, const int32_t* src, int32_t srcStep, ruxiSize srcRoiSize, int32_t* dst,
                                          int32_t dstStep, ruxiSize dstRoiSize, int32_t topBorderHeight,
                                          int32_t leftBorderWidth)
{
    return copyReplicateBorder(src, srcStep, srcRoiSize, dst, dstStep, dstRoiSize, topBorderHeight, leftBorderWidth);
}

}
