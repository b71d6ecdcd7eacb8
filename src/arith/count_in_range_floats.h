// Counts of floats in a range in vectors of four.
#pragma once

#include "arith/count_in_range.h"
#include "lanes/four_floats.h"
#include "lanes/spread.h"

namespace rux::RUX_LEVEL {
namespace {

// Neither a NaN nor anything beside a bound that is one is in the range.
class FloatRange {
public:
    FloatRange(uint32_t lowerBound, uint32_t upperBound)
        : lower(spread<FourFloats>(lowerBound)), upper(spread<FourFloats>(upperBound))
    {
    }

    FourFloats holds(FourFloats x) const
    {
        return {_mm_and_ps(_mm_cmpge_ps(x.value, lower.value), _mm_cmple_ps(x.value, upper.value))};
    }

    bool holdsOne(const uint8_t* x) const
    {
        return (_mm_movemask_ps(holds(FourFloats::loadOne(x)).value) & 1) != 0;
    }

private:
    FourFloats lower;
    FourFloats upper;
};

// The pixels of a row in whole vectors; the others are counted singly.
uint32_t countVectors(const FloatRange& range, const uint8_t* row, size_t vectors);

int32_t countFloats(const CountedImage& image, uint32_t lowerBound, uint32_t upperBound)
{
    const FloatRange range(lowerBound, upperBound);
    const size_t width = static_cast<size_t>(image.roiSize.width);
    uint32_t count = 0;
    image.forEachRow([&](const uint8_t* row) {
        count += countVectors(range, row, width / 4);
        for (size_t x = width & ~size_t(3); x < width; ++x) count += range.holdsOne(row + x * 4);
    });
    return static_cast<int32_t>(count);
}

}
}
