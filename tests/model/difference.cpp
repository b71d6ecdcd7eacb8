#include "model/difference.h"

#include "model/half_pel.h"

namespace rux::model {
namespace {

ruxStatus difference(int size, const uint8_t* src, int32_t srcStep, const uint8_t* ref, int32_t refStep, int16_t* dst,
                     int32_t dstStep, int16_t* pred, int32_t predStep, ruxHalfPelMode mode, int r)
{
    if (!src || !ref || !dst) return ruxStatusNullPointer;
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++) {
            const int p = exact(neighbours(ref, refStep, mode, x, y), mode, r);
            if (pred) store(at(pred, predStep, x, y), static_cast<int16_t>(p));
            store(at(dst, dstStep, x, y), static_cast<int16_t>(*at(src, srcStep, x, y) - p));
        }
    }
    return ruxStatusOk;
}

ruxStatus differenceOfBoth(int size, const uint8_t* src, int32_t srcStep, const uint8_t* refForward,
                           int32_t refForwardStep, ruxHalfPelMode modeForward, const uint8_t* refBackward,
                           int32_t refBackwardStep, ruxHalfPelMode modeBackward, int16_t* dst, int32_t dstStep, int r)
{
    if (!src || !refForward || !refBackward || !dst) return ruxStatusNullPointer;
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++) {
            const int pf = exact(neighbours(refForward, refForwardStep, modeForward, x, y), modeForward, r);
            const int pb = exact(neighbours(refBackward, refBackwardStep, modeBackward, x, y), modeBackward, r);
            const int twice = 2 * *at(src, srcStep, x, y) - pf - pb;
            store(at(dst, dstStep, x, y), static_cast<int16_t>(twice >> 1));
        }
    }
    return ruxStatusOk;
}

}

#define RUX_MODEL_DIFFERENCE(name, size)                                                                              \
    ruxStatus ruxiGetDiff##name##_8u16s_C1(Level, const uint8_t* src, int32_t srcStep, const uint8_t* ref,            \
                                           int32_t refStep, int16_t* dst, int32_t dstStep, int16_t* pred,             \
                                           int32_t predStep, ruxHalfPelMode mcType, int32_t roundControl)             \
    {                                                                                                                 \
        return difference(size, src, srcStep, ref, refStep, dst, dstStep, pred, predStep, mcType, roundControl);      \
    }                                                                                                                 \
    ruxStatus ruxiGetDiff##name##B_8u16s_C1(Level, const uint8_t* src, int32_t srcStep, const uint8_t* refForward,    \
                                            int32_t refForwardStep, ruxHalfPelMode mcTypeForward,                     \
                                            const uint8_t* refBackward, int32_t refBackwardStep,                      \
                                            ruxHalfPelMode mcTypeBackward, int16_t* dst, int32_t dstStep,             \
                                            int32_t roundControl)                                                     \
    {                                                                                                                 \
        return differenceOfBoth(size, src, srcStep, refForward, refForwardStep, mcTypeForward, refBackward,           \
                                refBackwardStep, mcTypeBackward, dst, dstStep, roundControl);                         \
    }
RUX_MODEL_DIFFERENCE(16x16, 16)
RUX_MODEL_DIFFERENCE(8x8, 8)

}
