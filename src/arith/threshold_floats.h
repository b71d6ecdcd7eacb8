// Thresholds of floats in vectors of four.
//
// result = (x AND m1 AND m2) OR (valueGT AND NOT m1) OR (valueLT AND NOT m2): m1, "thresholdGT is not below x", holds
// for a NaN and m2, "thresholdLT is at or below x", does not, so a NaN becomes valueLT.
#pragma once

#include "arith/threshold_lanes.h"
#include "lanes/four_floats.h"
#include "lanes/spread.h"

namespace rux::RUX_LEVEL {
namespace {

inline FourFloats isNotBelow(FourFloats a, FourFloats b)
{
    return {_mm_cmpnlt_ps(a.value, b.value)};
}

inline FourFloats isAtMost(FourFloats a, FourFloats b)
{
    return {_mm_cmple_ps(a.value, b.value)};
}

template <Layout layout>
class FloatPattern {
public:
    static constexpr int lanes = BandPeriod<FourFloats, float, layout>::lanes;

    explicit FloatPattern(const Band<float>* bands) : period(bands) {}

    FourFloats apply(FourFloats x, int lane) const
    {
        const BandLanes<FourFloats>& band = period[lane];
        const FourFloats notAbove = isNotBelow(band.thresholdGT, x);
        const FourFloats notBelow = isAtMost(band.thresholdLT, x);
        return (x & notAbove & notBelow) | andNot(notAbove, band.valueGT) | andNot(notBelow, band.valueLT);
    }

    // A lane is one pixel of AC4, whose fourth float is neither read into a result nor written.
    void put(uint8_t* dst, FourFloats value) const
    {
        if (layout == Layout::AC4)
            value.storeThree(dst);
        else
            value.store(dst);
    }

    void putPartial(uint8_t* dst, FourFloats value, size_t bytes) const { storePartial(value, dst, bytes); }

private:
    BandPeriod<FourFloats, float, layout> period;
};

// result = (x AND m) OR (value AND NOT m), with m "threshold is at or below x".
class LowerFloatPattern {
public:
    static constexpr int lanes = 1;

    LowerFloatPattern(uint32_t threshold, uint32_t value)
        : threshold(spread<FourFloats>(threshold)), value(spread<FourFloats>(value))
    {
    }

    FourFloats apply(FourFloats x, int) const
    {
        const FourFloats notBelow = isAtMost(threshold, x);
        return (x & notBelow) | andNot(notBelow, value);
    }

    void put(uint8_t* dst, FourFloats result) const { result.store(dst); }
    void putPartial(uint8_t* dst, FourFloats result, size_t bytes) const { storePartial(result, dst, bytes); }

private:
    FourFloats threshold;
    FourFloats value;
};

template <Layout layout>
void thresholdFloats(const RowPairs& rows, const Band<float>* bands)
{
    constexpr size_t channels = layout == Layout::C1 ? 1 : layout == Layout::C3 ? 3 : 4;
    thresholdRowsInLanes<FourFloats, channels * sizeof(float)>(rows, FloatPattern<layout>(bands));
}

}
}
