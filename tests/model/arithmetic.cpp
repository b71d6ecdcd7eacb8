#include "model/arithmetic.h"

namespace rux::model {
namespace {

// One operation, rounded once.
struct Add {
    static constexpr float neutral = 0.0f;
    static float apply(float srcDst, float src) { return srcDst + src; }
};
struct Sub {
    static constexpr float neutral = 0.0f;
    static float apply(float srcDst, float src) { return srcDst - src; }
};
struct Mul {
    static constexpr float neutral = 1.0f;
    static float apply(float srcDst, float src) { return srcDst * src; }
};

// The operand is volatile: a compiler may not fold x - 0.0 or x * 1.0, which make a signalling NaN quiet.
template <class Arithmetic>
void applyTo(float* srcDst, float src)
{
    const volatile float operand = src;
    store(srcDst, Arithmetic::apply(load<float>(srcDst), operand));
}

bool isEmpty(ruxiSize size)
{
    return size.width < 1 || size.height < 1;
}

ruxStatus failureOf(const float* src, int32_t srcStep, const float* srcDst, int32_t srcDstStep, ruxiSize size)
{
    if (!src || !srcDst) return ruxStatusNullPointer;
    if (isEmpty(size)) return ruxStatusSizeError;
    if (srcStep < 1 || srcDstStep < 1) return ruxStatusStepError;
    return ruxStatusOk;
}

template <class Arithmetic>
ruxStatus c1(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep, ruxiSize size)
{
    if (const ruxStatus failure = failureOf(src, srcStep, srcDst, srcDstStep, size)) return failure;
    for (int y = 0; y < size.height; y++) {
        for (int x = 0; x < size.width; x++) {
            applyTo<Arithmetic>(at(srcDst, srcDstStep, x, y), load<float>(at(src, srcStep, x, y)));
        }
    }
    return ruxStatusOk;
}

// The width is looked at before the pointers, and its product wraps.
template <class Arithmetic>
ruxStatus interleaved(int channels, const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep, ruxiSize size)
{
    if (size.width < 1) return ruxStatusSizeError;
    const auto elements = static_cast<int32_t>(static_cast<uint32_t>(size.width) * static_cast<uint32_t>(channels));
    return c1<Arithmetic>(src, srcStep, srcDst, srcDstStep, {elements, size.height});
}

// The fourth float stays untouched at px and m6, and goes through the arithmetic with a neutral operand at a6 and w7.
template <class Arithmetic>
ruxStatus ac4(Level level, const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep, ruxiSize size)
{
    if (const ruxStatus failure = failureOf(src, srcStep, srcDst, srcDstStep, size)) return failure;
    for (int y = 0; y < size.height; y++) {
        for (int x = 0; x < size.width; x++) {
            for (int channel = 0; channel < 3; channel++) {
                applyTo<Arithmetic>(at(srcDst, srcDstStep, 4 * x + channel, y),
                                    load<float>(at(src, srcStep, 4 * x + channel, y)));
            }
            if (level >= a6) applyTo<Arithmetic>(at(srcDst, srcDstStep, 4 * x + 3, y), Arithmetic::neutral);
        }
    }
    return ruxStatusOk;
}

ruxStatus accumulationFailure(const uint8_t* src, int32_t srcStep, const float* srcDst, int32_t srcDstStep,
                              ruxiSize size)
{
    if (!src || !srcDst) return ruxStatusNullPointer;
    if (size.width < 0 || size.height < 0) return ruxStatusSizeError;
    if (srcStep < size.width || srcDstStep < int64_t{4} * size.width || srcDstStep % 4 != 0) return ruxStatusSizeError;
    return ruxStatusOk;
}

// px and m6: steps in double, rounded to single on the store. a6 and w7: every step rounded to single.
float weighted(Level level, uint8_t src, float srcDst, float alpha)
{
    if (level < a6) {
        const double difference = static_cast<double>(src) - srcDst;
        const double product = difference * alpha;
        return static_cast<float>(product + srcDst);
    }
    const float difference = static_cast<float>(src) - srcDst;
    const float product = difference * alpha;
    return srcDst + product;
}

}

#define BINARY(name, Arithmetic)                                                                                      \
    ruxStatus name##_C1IR(Level, const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep, ruxiSize size) \
    {                                                                                                                 \
        return c1<Arithmetic>(src, srcStep, srcDst, srcDstStep, size);                                                \
    }                                                                                                                 \
    ruxStatus name##_C3IR(Level, const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep, ruxiSize size) \
    {                                                                                                                 \
        return interleaved<Arithmetic>(3, src, srcStep, srcDst, srcDstStep, size);                                    \
    }                                                                                                                 \
    ruxStatus name##_C4IR(Level, const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep, ruxiSize size) \
    {                                                                                                                 \
        return interleaved<Arithmetic>(4, src, srcStep, srcDst, srcDstStep, size);                                    \
    }                                                                                                                 \
    ruxStatus name##_AC4IR(Level level, const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,         \
                           ruxiSize size)                                                                             \
    {                                                                                                                 \
        return ac4<Arithmetic>(level, src, srcStep, srcDst, srcDstStep, size);                                        \
    }
BINARY(ruxiAdd_32f, Add)
BINARY(ruxiSub_32f, Sub)
BINARY(ruxiMul_32f, Mul)
#undef BINARY

ruxStatus ruxiAdd_8u32f_C1IR(Level, const uint8_t* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                             ruxiSize roiSize)
{
    if (const ruxStatus failure = accumulationFailure(src, srcStep, srcDst, srcDstStep, roiSize)) return failure;
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) {
            applyTo<Add>(at(srcDst, srcDstStep, x, y), static_cast<float>(*at(src, srcStep, x, y)));
        }
    }
    return ruxStatusOk;
}

ruxStatus ruxiAddWeighted_8u32f_C1IR(Level level, const uint8_t* src, int32_t srcStep, float* srcDst,
                                     int32_t srcDstStep, ruxiSize roiSize, float alpha)
{
    if (const ruxStatus failure = accumulationFailure(src, srcStep, srcDst, srcDstStep, roiSize)) return failure;
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) {
            float* const element = at(srcDst, srcDstStep, x, y);
            store(element, weighted(level, *at(src, srcStep, x, y), load<float>(element), alpha));
        }
    }
    return ruxStatusOk;
}

// Not a division pixel by pixel: a multiplication with the rounded reciprocal.
ruxStatus ruxiDivC_32f_C1IR(Level, float value, float* srcDst, int32_t srcDstStep, ruxiSize roiSize)
{
    if (!srcDst) return ruxStatusNullPointer;
    if (isEmpty(roiSize)) return ruxStatusSizeError;
    if (srcDstStep < 1) return ruxStatusStepError;
    if (!(value < 0.0f || value > 0.0f)) return ruxStatusDivideByZero;
    const float c = 1.0f / value;
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) {
            float* const element = at(srcDst, srcDstStep, x, y);
            if (c == 1.0f) continue;
            if (c == 0.0f) store(element, uint32_t{0});
            else applyTo<Mul>(element, c);
        }
    }
    return ruxStatusOk;
}

}
