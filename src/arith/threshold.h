// Thresholds: what lies above a band and what lies below it are replaced.
//
// The operations stand here once; each level's file gives the routines that go over the rows.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"
#include "frame/float_environment.h"

namespace rux::RUX_LEVEL {
namespace {

enum class Layout { C1, C3, AC4 };

// An element as it travels: a float as its bits, so that a signalling NaN stays one.
template <typename Element>
struct TravelAs {
    using Type = Element;
};
template <>
struct TravelAs<float> {
    using Type = uint32_t;
};
template <typename Element>
using Carried = typename TravelAs<Element>::Type;

template <typename Element>
inline Element carried(Element element)
{
    return element;
}

inline uint32_t carried(const float& element)
{
    return bitsOf(element);
}

// What a carried element stands for in comparisons.
template <typename Element>
inline Element compared(Element element)
{
    return element;
}

inline float compared(uint32_t bits)
{
    return floatOf(bits);
}

template <typename Element>
struct Band {
    Carried<Element> thresholdLT;
    Carried<Element> valueLT;
    Carried<Element> thresholdGT;
    Carried<Element> valueGT;
};

struct RowPairs {
    const uint8_t* src;
    int32_t srcStep;
    uint8_t* dst;
    int32_t dstStep;
    ruxiSize roiSize;

    // row(src, dst) for each row.
    template <typename Row>
    void forEach(Row row) const
    {
        const uint8_t* from = src;
        uint8_t* to = dst;
        for (int32_t y = 0; y < roiSize.height; ++y, from += srcStep, to += dstStep) row(from, to);
    }
};

// One band for C1, three for C3 and AC4.
template <typename Element, Layout layout>
void thresholdRows(const RowPairs& rows, const Band<Element>* bands);

// Floats below the threshold become the value; both are given as their bits.
void thresholdRowsBelow(const RowPairs& rows, uint32_t threshold, uint32_t value);

// px and m6 compare the floats of one channel by their bits. Elements of four bytes are floats.
template <typename Element, Layout layout>
constexpr bool comparesBits = sizeof(Element) == 4 && layout == Layout::C1 && thisLevel <= m6::number;

template <typename Element, Layout layout>
inline bool inOrder(const Band<Element>& band)
{
    const Element lower = compared(band.thresholdLT);
    const Element upper = compared(band.thresholdGT);
    // Where pixels are compared by their bits a NaN is a threshold like any other.
    return comparesBits<Element, layout> ? !(lower > upper) : upper >= lower;
}

template <typename Element>
inline Band<Element> bandOf(const Element& thresholdLT, const Element& valueLT, const Element& thresholdGT,
                            const Element& valueGT)
{
    return {carried(thresholdLT), carried(valueLT), carried(thresholdGT), carried(valueGT)};
}

template <typename Element>
ruxStatus thresholdImage(const Element* src, int32_t srcStep, Element* dst, int32_t dstStep, ruxiSize roiSize,
                         const Band<Element>& band)
{
    if (auto failure = firstFailure(pointers(src, dst), sizes(roiSize), steps(srcStep, dstStep),
                                    require(inOrder<Element, Layout::C1>(band), ruxStatusThresholdBounds)))
        return failure;

    thresholdRows<Element, Layout::C1>({bytesOf(src), srcStep, bytesOf(dst), dstStep, roiSize}, &band);
    return ruxStatusOk;
}

// A null array is found after a bad stride.
template <Layout layout, typename Element>
ruxStatus thresholdChannels(const Element* src, int32_t srcStep, Element* dst, int32_t dstStep, ruxiSize roiSize,
                            const Element* thresholdLT, const Element* valueLT, const Element* thresholdGT,
                            const Element* valueGT)
{
    if (auto failure = firstFailure(pointers(src, dst), sizes(roiSize), steps(srcStep, dstStep),
                                    pointers(thresholdLT, valueLT, thresholdGT, valueGT)))
        return failure;

    Band<Element> bands[3];
    for (int c = 0; c < 3; ++c) {
        bands[c] = {load<Carried<Element>>(thresholdLT + c), load<Carried<Element>>(valueLT + c),
                    load<Carried<Element>>(thresholdGT + c), load<Carried<Element>>(valueGT + c)};
        if (!inOrder<Element, layout>(bands[c])) return ruxStatusThresholdBounds;
    }
    thresholdRows<Element, layout>({bytesOf(src), srcStep, bytesOf(dst), dstStep, roiSize}, bands);
    return ruxStatusOk;
}

}

#define RUX_THRESHOLD_C1(type, Element)                                                                            \
    ruxStatus RUXCALL ruxiThreshold_LTValGTVal_##type##_C1R(                                                       \
        const Element* src, int32_t srcStep, Element* dst, int32_t dstStep, ruxiSize roiSize, Element thresholdLT, \
        Element valueLT, Element thresholdGT, Element valueGT)                                                     \
    {                                                                                                              \
        return thresholdImage(src, srcStep, dst, dstStep, roiSize,                                                 \
                              bandOf(thresholdLT, valueLT, thresholdGT, valueGT));                                 \
    }                                                                                                              \
    ruxStatus RUXCALL ruxiThreshold_LTValGTVal_##type##_C1IR(Element* srcDst, int32_t srcDstStep,                  \
                                                             ruxiSize roiSize, Element thresholdLT,                \
                                                             Element valueLT, Element thresholdGT,                 \
                                                             Element valueGT)                                      \
    {                                                                                                              \
        return thresholdImage<Element>(srcDst, srcDstStep, srcDst, srcDstStep, roiSize,                            \
                                       bandOf(thresholdLT, valueLT, thresholdGT, valueGT));                        \
    }

#define RUX_THRESHOLD_CHANNELS(type, Element, layout)                                                              \
    ruxStatus RUXCALL ruxiThreshold_LTValGTVal_##type##_##layout##R(                                               \
        const Element* src, int32_t srcStep, Element* dst, int32_t dstStep, ruxiSize roiSize,                      \
        const Element thresholdLT[3], const Element valueLT[3], const Element thresholdGT[3],                      \
        const Element valueGT[3])                                                                                  \
    {                                                                                                              \
        return thresholdChannels<Layout::layout>(src, srcStep, dst, dstStep, roiSize, thresholdLT, valueLT,        \
                                                 thresholdGT, valueGT);                                            \
    }                                                                                                              \
    ruxStatus RUXCALL ruxiThreshold_LTValGTVal_##type##_##layout##IR(                                              \
        Element* srcDst, int32_t srcDstStep, ruxiSize roiSize, const Element thresholdLT[3],                       \
        const Element valueLT[3], const Element thresholdGT[3], const Element valueGT[3])                          \
    {                                                                                                              \
        return thresholdChannels<Layout::layout, Element>(srcDst, srcDstStep, srcDst, srcDstStep, roiSize,         \
                                                          thresholdLT, valueLT, thresholdGT, valueGT);             \
    }

RUX_THRESHOLD_C1(8u, uint8_t)               // ruxiThreshold_LTValGTVal_8u_C1R, ruxiThreshold_LTValGTVal_8u_C1IR
RUX_THRESHOLD_CHANNELS(8u, uint8_t, C3)     // ruxiThreshold_LTValGTVal_8u_C3R, ruxiThreshold_LTValGTVal_8u_C3IR
RUX_THRESHOLD_CHANNELS(8u, uint8_t, AC4)    // ruxiThreshold_LTValGTVal_8u_AC4R, ruxiThreshold_LTValGTVal_8u_AC4IR
RUX_THRESHOLD_C1(16s, int16_t)              // ruxiThreshold_LTValGTVal_16s_C1R, ruxiThreshold_LTValGTVal_16s_C1IR
RUX_THRESHOLD_CHANNELS(16s, int16_t, C3)    // ruxiThreshold_LTValGTVal_16s_C3R, ruxiThreshold_LTValGTVal_16s_C3IR
RUX_THRESHOLD_CHANNELS(16s, int16_t, AC4)   // ruxiThreshold_LTValGTVal_16s_AC4R, ruxiThreshold_LTValGTVal_16s_AC4IR
RUX_THRESHOLD_C1(32f, float)                // ruxiThreshold_LTValGTVal_32f_C1R, ruxiThreshold_LTValGTVal_32f_C1IR
RUX_THRESHOLD_CHANNELS(32f, float, C3)      // ruxiThreshold_LTValGTVal_32f_C3R, ruxiThreshold_LTValGTVal_32f_C3IR
RUX_THRESHOLD_CHANNELS(32f, float, AC4)     // ruxiThreshold_LTValGTVal_32f_AC4R, ruxiThreshold_LTValGTVal_32f_AC4IR

#undef RUX_THRESHOLD_C1
#undef RUX_THRESHOLD_CHANNELS

ruxStatus RUXCALL ruxiThreshold_LTVal_32f_C1IR(float* srcDst, int32_t srcDstStep, ruxiSize roiSize, float threshold,
                                               float value)
{
    if (auto failure = firstFailure(pointers(srcDst), sizes(roiSize), steps(srcDstStep))) return failure;

    uint8_t* const image = bytesOf(srcDst);
    thresholdRowsBelow({image, srcDstStep, image, srcDstStep, roiSize}, bitsOf(threshold), bitsOf(value));
    return ruxStatusOk;
}

}
