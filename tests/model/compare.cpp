#include "model/compare.h"

#include <cmath>
#include <limits>

namespace rux::model {
namespace {

bool isEmpty(ruxiSize size)
{
    return size.width < 1 || size.height < 1;
}

template <class T>
bool holds(T a, T b, ruxCmpOp op)
{
    switch (op) {
    case ruxCmpLess: return a < b;
    case ruxCmpLessEq: return a <= b;
    case ruxCmpEq: return a == b;
    case ruxCmpGreaterEq: return a >= b;
    default: return a > b;
    }
}

// The mask with NaN on either side, by operator: less, less or equal, equal, greater or equal, greater.
constexpr bool comparePx[5] = {true, true, true, true, true};
constexpr bool compareM6[5] = {false, false, true, false, false};
constexpr bool compareSse[5] = {false, false, false, false, false};
constexpr bool constantScalar[5] = {true, true, true, false, false};
constexpr bool constantSse[5] = {false, false, false, true, true};

bool holdsForNan(Level level, bool withConstant, ruxCmpOp op)
{
    const bool scalar = level == Level::px || level == Level::m6;
    if (withConstant) return scalar ? constantScalar[op] : constantSse[op];
    if (level == Level::px) return comparePx[op];
    return level == Level::m6 ? compareM6[op] : compareSse[op];
}

uint8_t maskOf(Level level, bool withConstant, float a, float b, ruxCmpOp op)
{
    const bool nan = std::isnan(a) || std::isnan(b);
    return (nan ? holdsForNan(level, withConstant, op) : holds(a, b, op)) ? 255 : 0;
}

}

ruxStatus ruxiCompare_32f_C1R(Level level, const float* src1, int32_t src1Step, const float* src2, int32_t src2Step,
                              uint8_t* dst, int32_t dstStep, ruxiSize roiSize, ruxCmpOp cmpOp)
{
    if (!src1 || !src2 || !dst) return ruxStatusNullPointer;
    if (src1Step < 1 || src2Step < 1 || dstStep < 1) return ruxStatusStepError;
    if (isEmpty(roiSize)) return ruxStatusSizeError;
    if (cmpOp < 0 || cmpOp > 4) return ruxStatusOk;
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) {
            *at(dst, dstStep, x, y) =
                maskOf(level, false, load<float>(at(src1, src1Step, x, y)), load<float>(at(src2, src2Step, x, y)), cmpOp);
        }
    }
    return ruxStatusOk;
}

ruxStatus ruxiCompareC_32f_C1R(Level level, const float* src, int32_t srcStep, float value, uint8_t* dst,
                               int32_t dstStep, ruxiSize roiSize, ruxCmpOp cmpOp)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (srcStep < 1 || dstStep < 1) return ruxStatusStepError;
    if (isEmpty(roiSize)) return ruxStatusSizeError;
    if (cmpOp < 0 || cmpOp > 4) return ruxStatusOk;
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) {
            *at(dst, dstStep, x, y) = maskOf(level, true, load<float>(at(src, srcStep, x, y)), value, cmpOp);
        }
    }
    return ruxStatusOk;
}

ruxStatus ruxiCompareC_8u_C1R(Level, const uint8_t* src, int32_t srcStep, uint8_t value, uint8_t* dst, int32_t dstStep,
                              ruxiSize roiSize, ruxCmpOp cmpOp)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (srcStep < 1 || dstStep < 1) return ruxStatusStepError;
    if (isEmpty(roiSize)) return ruxStatusSizeError;
    if (cmpOp < 0 || cmpOp > 4) return ruxStatusOk;
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) {
            *at(dst, dstStep, x, y) = holds(*at(src, srcStep, x, y), value, cmpOp) ? 255 : 0;
        }
    }
    return ruxStatusOk;
}

ruxStatus ruxiCountInRange_8u_C1R(Level, const uint8_t* src, int32_t srcStep, ruxiSize roiSize, int32_t* counts,
                                  uint8_t lowerBound, uint8_t upperBound)
{
    if (!src || !counts) return ruxStatusNullPointer;
    if (srcStep < 1) return ruxStatusStepError;
    if (isEmpty(roiSize)) return ruxStatusSizeError;
    if (lowerBound > upperBound) return ruxStatusBoundsError;
    int32_t count = 0;
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) {
            const uint8_t value = *at(src, srcStep, x, y);
            if (lowerBound <= value && value <= upperBound) count++;
        }
    }
    store(counts, count);
    return ruxStatusOk;
}

ruxStatus ruxiCountInRange_32f_C1R(Level level, const float* src, int32_t srcStep, ruxiSize roiSize, int32_t* counts,
                                   float lowerBound, float upperBound)
{
    if (!src || !counts) return ruxStatusNullPointer;
    if (srcStep < 1) return ruxStatusStepError;
    if (isEmpty(roiSize)) return ruxStatusSizeError;
    if (lowerBound > upperBound) return ruxStatusBoundsError;
    const bool nanBound = std::isnan(lowerBound) || std::isnan(upperBound);
    if (nanBound && (level == Level::px || level == Level::m6)) return ruxStatusBoundsError;
    int32_t count = 0;
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) {
            const float value = load<float>(at(src, srcStep, x, y));
            if (!nanBound && !std::isnan(value) && !(value < lowerBound) && !(value > upperBound)) count++;
        }
    }
    store(counts, count);
    return ruxStatusOk;
}

ruxStatus ruxiMax_32f_C1R(Level level, const float* src, int32_t srcStep, ruxiSize roiSize, float* max)
{
    if (!src || !max) return ruxStatusNullPointer;
    if (isEmpty(roiSize)) return ruxStatusSizeError;
    if (srcStep < 1) return ruxStatusStepError;
    const bool lanes = level == Level::a6 || level == Level::w7;
    float largest = 0;
    for (int y = 0; y < roiSize.height; y++) {
        float ofRow = load<float>(at(src, srcStep, 0, y));
        for (int x = 1; x < roiSize.width; x++) {
            const float value = load<float>(at(src, srcStep, x, y));
            if (value > ofRow) ofRow = value;
        }
        if (y == 0 || ofRow > largest) largest = ofRow;
    }
    const float lowest = std::numeric_limits<float>::lowest();
    store(max, lanes && largest < lowest ? lowest : largest);
    return ruxStatusOk;
}

ruxStatus ruxiSum_8u_C1R(Level, const uint8_t* src, int32_t srcStep, ruxiSize roiSize, double* sum)
{
    if (!src || !sum) return ruxStatusNullPointer;
    if (isEmpty(roiSize)) return ruxStatusSizeError;
    if (srcStep < 1) return ruxStatusStepError;
    uint64_t total = 0;
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) total += *at(src, srcStep, x, y);
    }
    store(sum, static_cast<double>(total));
    return ruxStatusOk;
}

}
