// Where a6 and w7 sum in single precision the order of the lanes is theirs: there the model holds for numbers whose sums
// need no rounding.
#include "model/norm_diff.h"

#include <cmath>

namespace rux::model {
namespace {

bool isEmpty(ruxiSize size)
{
    return size.width < 1 || size.height < 1;
}

struct Layout {
    int inPixel;     // channels that a pixel has
    int processed;   // and those that count
};

constexpr Layout C1R = {1, 1}, C3R = {3, 3}, C4R = {4, 4}, AC4R = {4, 3};

template <class T>
double difference(const T* src1, int32_t src1Step, const T* src2, int32_t src2Step, int x, int y)
{
    return std::fabs(static_cast<double>(load<T>(at(src1, src1Step, x, y))) - load<T>(at(src2, src2Step, x, y)));
}

ruxStatus checks(const void* src1, int32_t src1Step, const void* src2, int32_t src2Step, ruxiSize size,
                 const double* norm)
{
    if (!src1 || !src2 || !norm) return ruxStatusNullPointer;
    if (isEmpty(size)) return ruxStatusSizeError;
    if (src1Step < 1 || src2Step < 1) return ruxStatusStepError;
    return ruxStatusOk;
}

// One accumulator for each channel; in one channel two, for the even and the odd columns, odd plus even at the end.
template <class T>
ruxStatus norms(Layout layout, const T* src1, int32_t src1Step, const T* src2, int32_t src2Step, ruxiSize size,
                double* norm)
{
    if (const ruxStatus failure = checks(src1, src1Step, src2, src2Step, size, norm)) return failure;
    for (int channel = 0; channel < layout.processed; channel++) {
        double sums[2] = {0, 0};
        for (int y = 0; y < size.height; y++) {
            for (int x = 0; x < size.width; x++) {
                const int which = layout.inPixel == 1 ? x & 1 : 0;
                sums[which] += difference(src1, src1Step, src2, src2Step, x * layout.inPixel + channel, y);
            }
        }
        store(norm + channel, layout.inPixel == 1 ? sums[1] + sums[0] : sums[0]);
    }
    return ruxStatusOk;
}

ruxStatus maskedChecks(const void* src1, int32_t src1Step, const void* src2, int32_t src2Step, const uint8_t* mask,
                       int32_t maskStep, ruxiSize size, const double* norm)
{
    if (!src1 || !src2 || !mask || !norm) return ruxStatusNullPointer;
    if (src1Step < 1 || src2Step < 1 || maskStep < 1) return ruxStatusStepError;
    if (isEmpty(size)) return ruxStatusSizeError;
    return ruxStatusOk;
}

}

#define RUX_NORM(type, Element, layout)                                                                              \
    ruxStatus ruxiNormDiff_L1_##type##_##layout(Level, const Element* src1, int32_t src1Step, const Element* src2, \
                                                int32_t src2Step, ruxiSize roiSize, double* norm)                    \
    {                                                                                                                \
        return norms(layout, src1, src1Step, src2, src2Step, roiSize, norm);                                        \
    }
#define RUX_FLOAT_NORM(layout)                                                                               \
    ruxStatus ruxiNormDiff_L1_32f_##layout(Level, const float* src1, int32_t src1Step, const float* src2, \
                                           int32_t src2Step, ruxiSize roiSize, double* norm, int32_t)        \
    {                                                                                                        \
        return norms(layout, src1, src1Step, src2, src2Step, roiSize, norm);                                \
    }
RUX_NORM(8u, uint8_t, C1R)
RUX_NORM(8u, uint8_t, C3R)
RUX_NORM(8u, uint8_t, C4R)
RUX_NORM(8u, uint8_t, AC4R)
RUX_NORM(16s, int16_t, C1R)
RUX_NORM(16s, int16_t, C3R)
RUX_NORM(16s, int16_t, C4R)
RUX_NORM(16s, int16_t, AC4R)
RUX_FLOAT_NORM(C1R)
RUX_FLOAT_NORM(C3R)
RUX_FLOAT_NORM(C4R)
RUX_FLOAT_NORM(AC4R)
#undef RUX_NORM
#undef RUX_FLOAT_NORM

ruxStatus ruxiNormDiff_L1_8u_C1MR(Level, const uint8_t* src1, int32_t src1Step, const uint8_t* src2, int32_t src2Step,
                                  const uint8_t* mask, int32_t maskStep, ruxiSize roiSize, double* norm)
{
    if (const ruxStatus failure = maskedChecks(src1, src1Step, src2, src2Step, mask, maskStep, roiSize, norm))
        return failure;
    double total = 0;
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) {
            if (*at(mask, maskStep, x, y) != 0) total += difference(src1, src1Step, src2, src2Step, x, y);
        }
    }
    store(norm, total);
    return ruxStatusOk;
}

// At px and m6 in double: the masked differences of four pixels, then to the total, and the rest of a row singly.
ruxStatus ruxiNormDiff_L1_32f_C1MR(Level, const float* src1, int32_t src1Step, const float* src2, int32_t src2Step,
                                   const uint8_t* mask, int32_t maskStep, ruxiSize roiSize, double* norm)
{
    if (const ruxStatus failure = maskedChecks(src1, src1Step, src2, src2Step, mask, maskStep, roiSize, norm))
        return failure;
    if (src1Step % 4 != 0 || src2Step % 4 != 0) return ruxStatusStepNotPixelMultiple;
    double total = 0;
    for (int y = 0; y < roiSize.height; y++) {
        const auto masked = [&](int x) {
            return *at(mask, maskStep, x, y) != 0 ? difference(src1, src1Step, src2, src2Step, x, y) : 0.0;
        };
        int x = 0;
        for (; x + 4 <= roiSize.width; x += 4) total += ((masked(x) + masked(x + 1)) + masked(x + 2)) + masked(x + 3);
        for (; x < roiSize.width; x++) total += masked(x);
    }
    store(norm, total);
    return ruxStatusOk;
}

}
