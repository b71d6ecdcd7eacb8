// L1 norms of the difference of two images: the sum of |src1 - src2|, channel by channel.
//
// The operations stand here once; each level's file gives the routines that go over the rows.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"
#include "frame/float_environment.h"

namespace rux::RUX_LEVEL {
namespace {

enum class Layout { C1, C3, C4, AC4 };

constexpr int channelsOf(Layout layout)
{
    return layout == Layout::C1 ? 1 : layout == Layout::C3 ? 3 : 4;
}

// The channels that are summed and have an entry in norm.
constexpr int summedChannelsOf(Layout layout)
{
    return layout == Layout::AC4 ? 3 : channelsOf(layout);
}

struct ImagePair {
    const uint8_t* src1;
    int32_t src1Step;
    const uint8_t* src2;
    int32_t src2Step;
    ruxiSize roiSize;

    // row(src1, src2) for each row.
    template <typename Row>
    void forEachRow(Row row) const
    {
        const uint8_t* a = src1;
        const uint8_t* b = src2;
        for (int32_t y = 0; y < roiSize.height; ++y, a += src1Step, b += src2Step) row(a, b);
    }
};

struct Mask {
    const uint8_t* mask;
    int32_t maskStep;
};

// Sums of 8-bit and 16-bit elements, exact.
template <typename Element, Layout layout>
void sumIntegers(const ImagePair& images, double* norm);

// Sums of floats; the hint allows the fast way unless it asks for double precision.
template <Layout layout>
void sumFloats(const ImagePair& images, double* norm, int32_t hint);

constexpr int32_t hintAccurate = 2;

// The total wraps at 32 bits.
int32_t sumMaskedBytes(const ImagePair& images, Mask mask);
void sumMaskedFloats(const ImagePair& images, Mask mask, double* norm);

template <typename Element>
ruxStatus checkPlain(const Element* src1, int32_t src1Step, const Element* src2, int32_t src2Step, ruxiSize roiSize,
                     const double* norm)
{
    return firstFailure(pointers(src1, src2, norm), sizes(roiSize), steps(src1Step, src2Step));
}

template <Layout layout, typename Element>
ruxStatus normDiff(const Element* src1, int32_t src1Step, const Element* src2, int32_t src2Step, ruxiSize roiSize,
                   double* norm)
{
    if (auto failure = checkPlain(src1, src1Step, src2, src2Step, roiSize, norm)) return failure;
    const DoublePrecision precision;
    sumIntegers<Element, layout>({bytesOf(src1), src1Step, bytesOf(src2), src2Step, roiSize}, norm);
    return ruxStatusOk;
}

template <Layout layout>
ruxStatus normDiff(const float* src1, int32_t src1Step, const float* src2, int32_t src2Step, ruxiSize roiSize,
                   double* norm, int32_t hint)
{
    if (auto failure = checkPlain(src1, src1Step, src2, src2Step, roiSize, norm)) return failure;
    const DoublePrecision precision;
    sumFloats<layout>({bytesOf(src1), src1Step, bytesOf(src2), src2Step, roiSize}, norm, hint);
    return ruxStatusOk;
}

}

#define RUX_NORM_INTEGERS(type, Element, layout)                                                                   \
    ruxStatus RUXCALL ruxiNormDiff_L1_##type##_##layout##R(const Element* src1, int32_t src1Step,                  \
                                                           const Element* src2, int32_t src2Step,                  \
                                                           ruxiSize roiSize, double* norm)                         \
    {                                                                                                              \
        return normDiff<Layout::layout>(src1, src1Step, src2, src2Step, roiSize, norm);                            \
    }

#define RUX_NORM_FLOATS(layout)                                                                                    \
    ruxStatus RUXCALL ruxiNormDiff_L1_32f_##layout##R(const float* src1, int32_t src1Step, const float* src2,      \
                                                      int32_t src2Step, ruxiSize roiSize, double* norm,            \
                                                      int32_t hint)                                                \
    {                                                                                                              \
        return normDiff<Layout::layout>(src1, src1Step, src2, src2Step, roiSize, norm, hint);                      \
    }

RUX_NORM_INTEGERS(8u, uint8_t, C1)      // ruxiNormDiff_L1_8u_C1R
RUX_NORM_INTEGERS(8u, uint8_t, C3)      // ruxiNormDiff_L1_8u_C3R
RUX_NORM_INTEGERS(8u, uint8_t, C4)      // ruxiNormDiff_L1_8u_C4R
RUX_NORM_INTEGERS(8u, uint8_t, AC4)     // ruxiNormDiff_L1_8u_AC4R
RUX_NORM_INTEGERS(16s, int16_t, C1)     // ruxiNormDiff_L1_16s_C1R
RUX_NORM_INTEGERS(16s, int16_t, C3)     // ruxiNormDiff_L1_16s_C3R
RUX_NORM_INTEGERS(16s, int16_t, C4)     // ruxiNormDiff_L1_16s_C4R
RUX_NORM_INTEGERS(16s, int16_t, AC4)    // ruxiNormDiff_L1_16s_AC4R
RUX_NORM_FLOATS(C1)                     // ruxiNormDiff_L1_32f_C1R
RUX_NORM_FLOATS(C3)                     // ruxiNormDiff_L1_32f_C3R
RUX_NORM_FLOATS(C4)                     // ruxiNormDiff_L1_32f_C4R
RUX_NORM_FLOATS(AC4)                    // ruxiNormDiff_L1_32f_AC4R

#undef RUX_NORM_INTEGERS
#undef RUX_NORM_FLOATS

ruxStatus RUXCALL ruxiNormDiff_L1_8u_C1MR(const uint8_t* src1, int32_t src1Step, const uint8_t* src2, int32_t src2Step,
                                          const uint8_t* mask, int32_t maskStep, ruxiSize roiSize, double* norm)
{
    if (auto failure = firstFailure(pointers(src1, src2, mask, norm), steps(src1Step, src2Step, maskStep),
                                    sizes(roiSize)))
        return failure;

    store<double>(norm, sumMaskedBytes({src1, src1Step, src2, src2Step, roiSize}, {mask, maskStep}));
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiNormDiff_L1_32f_C1MR(const float* src1, int32_t src1Step, const float* src2, int32_t src2Step,
                                           const uint8_t* mask, int32_t maskStep, ruxiSize roiSize, double* norm)
{
    if (auto failure = firstFailure(pointers(src1, src2, mask, norm), steps(src1Step, src2Step, maskStep),
                                    sizes(roiSize),
                                    require(src1Step % 4 == 0 && src2Step % 4 == 0, ruxStatusStepNotPixelMultiple)))
        return failure;

    const DoublePrecision precision;
    sumMaskedFloats({bytesOf(src1), src1Step, bytesOf(src2), src2Step, roiSize}, {mask, maskStep}, norm);
    return ruxStatusOk;
}

}
