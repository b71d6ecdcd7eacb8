#include "model/byte_logic.h"

#include <cstdlib>

namespace rux::model {
namespace {

template <class Combine>
ruxStatus combine(const uint8_t* src1, int32_t src1Step, const uint8_t* src2, int32_t src2Step, uint8_t* dst,
                  int32_t dstStep, ruxiSize size, Combine combined)
{
    if (!src1 || !src2 || !dst) return ruxStatusNullPointer;
    if (src1Step < 1 || src2Step < 1 || dstStep < 1) return ruxStatusStepError;
    if (size.width < 1 || size.height < 1) return ruxStatusSizeError;
    for (int y = 0; y < size.height; y++) {
        for (int x = 0; x < size.width; x++) {
            const int result = combined(*at(src1, src1Step, x, y), *at(src2, src2Step, x, y));
            *at(dst, dstStep, x, y) = static_cast<uint8_t>(result);
        }
    }
    return ruxStatusOk;
}

}

ruxStatus ruxiAbsDiff_8u_C1R(Level, const uint8_t* src1, int32_t src1Step, const uint8_t* src2, int32_t src2Step,
                             uint8_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    return combine(src1, src1Step, src2, src2Step, dst, dstStep, roiSize, [](int a, int b) { return std::abs(a - b); });
}

ruxStatus ruxiAnd_8u_C1R(Level, const uint8_t* src1, int32_t src1Step, const uint8_t* src2, int32_t src2Step,
                         uint8_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    return combine(src1, src1Step, src2, src2Step, dst, dstStep, roiSize, [](int a, int b) { return a & b; });
}

}
