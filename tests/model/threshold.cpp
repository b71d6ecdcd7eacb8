#include "model/threshold.h"

#include <cmath>

namespace rux::model {
namespace {

enum class Side { above, below, inside };

// A threshold or a replacement value as the bits that it is; a float stays unread until it is compared.
template <class T>
struct Bits {
    uint8_t bytes[sizeof(T)];
    T number() const { return load<T>(bytes); }
};

template <class T>
struct Band {
    Bits<T> thresholdLT, valueLT, thresholdGT, valueGT;
};

uint32_t unsignedBits(const Bits<float>& value)
{
    return load<uint32_t>(value.bytes);
}

int32_t signedBits(const Bits<float>& value)
{
    return load<int32_t>(value.bytes);
}

bool comparesBits(Level level, int channels)
{
    return (level == px || level == m6) && channels == 1;
}

template <class T>
bool isOutOfOrder(Level, int, const Band<T>& band)
{
    return band.thresholdGT.number() < band.thresholdLT.number();
}

// What a NaN threshold does depends on the way the test is made.
template <>
bool isOutOfOrder(Level level, int channels, const Band<float>& band)
{
    const float lower = band.thresholdLT.number(), upper = band.thresholdGT.number();
    return comparesBits(level, channels) ? lower > upper : !(upper >= lower);
}

template <class T>
Side sideOf(Level, int, const Bits<T>& x, const Band<T>& band)
{
    if (x.number() > band.thresholdGT.number()) return Side::above;
    return x.number() < band.thresholdLT.number() ? Side::below : Side::inside;
}

Side sideByBits(const Bits<float>& x, const Band<float>& band)
{
    const bool negativeLT = band.thresholdLT.number() < 0.0f, negativeGT = band.thresholdGT.number() < 0.0f;
    const bool above = negativeLT && negativeGT ? unsignedBits(x) < unsignedBits(band.thresholdGT)
                                                : signedBits(x) > signedBits(band.thresholdGT);
    const bool below = negativeLT ? unsignedBits(x) > unsignedBits(band.thresholdLT)
                                  : signedBits(x) < signedBits(band.thresholdLT);
    if (above) return Side::above;
    return below ? Side::below : Side::inside;
}

template <>
Side sideOf(Level level, int channels, const Bits<float>& x, const Band<float>& band)
{
    if (comparesBits(level, channels)) return sideByBits(x, band);
    if (std::isnan(x.number())) return Side::below;
    if (x.number() > band.thresholdGT.number()) return Side::above;
    return x.number() < band.thresholdLT.number() ? Side::below : Side::inside;
}

// Pixels of so many elements, of which the first ones have a band each and the others are left alone.
template <class T>
void applyBands(Level level, const T* src, int32_t srcStep, T* dst, int32_t dstStep, ruxiSize size, int pixel,
                int channels, const Band<T>* bands)
{
    for (int y = 0; y < size.height; y++) {
        for (int x = 0; x < size.width; x++) {
            for (int c = 0; c < channels; c++) {
                const auto element = load<Bits<T>>(at(src, srcStep, x * pixel + c, y));
                const Side side = sideOf(level, channels, element, bands[c]);
                store(at(dst, dstStep, x * pixel + c, y), side == Side::above   ? bands[c].valueGT
                                                          : side == Side::below ? bands[c].valueLT
                                                                                : element);
            }
        }
    }
}

template <class T>
ruxStatus imageFailure(const T* src, int32_t srcStep, T* dst, int32_t dstStep, ruxiSize size)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (size.width < 1 || size.height < 1) return ruxStatusSizeError;
    if (srcStep < 1 || dstStep < 1) return ruxStatusStepError;
    return ruxStatusOk;
}

template <class T>
ruxStatus scalars(Level level, const T* src, int32_t srcStep, T* dst, int32_t dstStep, ruxiSize size,
                  const T& thresholdLT, const T& valueLT, const T& thresholdGT, const T& valueGT)
{
    const ruxStatus failure = imageFailure(src, srcStep, dst, dstStep, size);
    if (failure) return failure;
    const Band<T> band{load<Bits<T>>(&thresholdLT), load<Bits<T>>(&valueLT), load<Bits<T>>(&thresholdGT),
                       load<Bits<T>>(&valueGT)};
    if (isOutOfOrder(level, 1, band)) return ruxStatusThresholdBounds;
    applyBands(level, src, srcStep, dst, dstStep, size, 1, 1, &band);
    return ruxStatusOk;
}

template <class T>
ruxStatus arrays(Level level, int pixel, const T* src, int32_t srcStep, T* dst, int32_t dstStep, ruxiSize size,
                 const T* thresholdLT, const T* valueLT, const T* thresholdGT, const T* valueGT)
{
    const ruxStatus failure = imageFailure(src, srcStep, dst, dstStep, size);
    if (failure) return failure;
    if (!thresholdLT || !valueLT || !thresholdGT || !valueGT) return ruxStatusNullPointer;
    Band<T> bands[3];
    for (int c = 0; c < 3; c++) {
        bands[c] = {load<Bits<T>>(at(thresholdLT, 0, c, 0)), load<Bits<T>>(at(valueLT, 0, c, 0)),
                    load<Bits<T>>(at(thresholdGT, 0, c, 0)), load<Bits<T>>(at(valueGT, 0, c, 0))};
        if (isOutOfOrder(level, 3, bands[c])) return ruxStatusThresholdBounds;
    }
    applyBands(level, src, srcStep, dst, dstStep, size, pixel, 3, bands);
    return ruxStatusOk;
}

}

#define RUX_THRESHOLD(type, Element)                                                                                  \
    ruxStatus ruxiThreshold_LTValGTVal_##type##_C1R(Level level, const Element* src, int32_t srcStep, Element* dst,   \
                                                    int32_t dstStep, ruxiSize roiSize, Element thresholdLT,           \
                                                    Element valueLT, Element thresholdGT, Element valueGT)            \
    {                                                                                                                 \
        return scalars(level, src, srcStep, dst, dstStep, roiSize, thresholdLT, valueLT, thresholdGT, valueGT);       \
    }                                                                                                                 \
    ruxStatus ruxiThreshold_LTValGTVal_##type##_C3R(Level level, const Element* src, int32_t srcStep, Element* dst,   \
                                                    int32_t dstStep, ruxiSize roiSize, const Element* thresholdLT,    \
                                                    const Element* valueLT, const Element* thresholdGT,               \
                                                    const Element* valueGT)                                           \
    {                                                                                                                 \
        return arrays(level, 3, src, srcStep, dst, dstStep, roiSize, thresholdLT, valueLT, thresholdGT, valueGT);     \
    }                                                                                                                 \
    ruxStatus ruxiThreshold_LTValGTVal_##type##_AC4R(Level level, const Element* src, int32_t srcStep, Element* dst,  \
                                                     int32_t dstStep, ruxiSize roiSize, const Element* thresholdLT,   \
                                                     const Element* valueLT, const Element* thresholdGT,              \
                                                     const Element* valueGT)                                          \
    {                                                                                                                 \
        return arrays(level, 4, src, srcStep, dst, dstStep, roiSize, thresholdLT, valueLT, thresholdGT, valueGT);     \
    }                                                                                                                 \
    ruxStatus ruxiThreshold_LTValGTVal_##type##_C1IR(Level level, Element* srcDst, int32_t step, ruxiSize roiSize,    \
                                                     Element thresholdLT, Element valueLT, Element thresholdGT,       \
                                                     Element valueGT)                                                 \
    {                                                                                                                 \
        return scalars<Element>(level, srcDst, step, srcDst, step, roiSize, thresholdLT, valueLT, thresholdGT,        \
                                valueGT);                                                                             \
    }                                                                                                                 \
    ruxStatus ruxiThreshold_LTValGTVal_##type##_C3IR(Level level, Element* srcDst, int32_t step, ruxiSize roiSize,    \
                                                     const Element* thresholdLT, const Element* valueLT,              \
                                                     const Element* thresholdGT, const Element* valueGT)              \
    {                                                                                                                 \
        return arrays<Element>(level, 3, srcDst, step, srcDst, step, roiSize, thresholdLT, valueLT, thresholdGT,      \
                               valueGT);                                                                              \
    }                                                                                                                 \
    ruxStatus ruxiThreshold_LTValGTVal_##type##_AC4IR(Level level, Element* srcDst, int32_t step, ruxiSize roiSize,   \
                                                      const Element* thresholdLT, const Element* valueLT,             \
                                                      const Element* thresholdGT, const Element* valueGT)             \
    {                                                                                                                 \
        return arrays<Element>(level, 4, srcDst, step, srcDst, step, roiSize, thresholdLT, valueLT, thresholdGT,      \
                               valueGT);                                                                              \
    }
RUX_THRESHOLD(8u, uint8_t)
RUX_THRESHOLD(16s, int16_t)
RUX_THRESHOLD(32f, float)
#undef RUX_THRESHOLD

ruxStatus ruxiThreshold_LTVal_32f_C1IR(Level level, float* srcDst, int32_t srcDstStep, ruxiSize roiSize,
                                       float threshold, float value)
{
    const ruxStatus failure = imageFailure<float>(srcDst, srcDstStep, srcDst, srcDstStep, roiSize);
    if (failure) return failure;
    const auto limit = load<Bits<float>>(&threshold);
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) {
            float* const place = at(srcDst, srcDstStep, x, y);
            const auto element = load<Bits<float>>(place);
            bool below;
            if (comparesBits(level, 1)) {
                below = limit.number() < 0.0f ? unsignedBits(element) > unsignedBits(limit)
                                              : signedBits(element) < signedBits(limit);
            } else {
                below = !(limit.number() <= element.number());
            }
            if (below) store(place, load<Bits<float>>(&value));
        }
    }
    return ruxStatusOk;
}

}
