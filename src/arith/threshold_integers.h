// Thresholds of 8-bit and 16-bit elements a lane at a time.
//
// The level includes the header that gives its integer lane's comparisons first.
#pragma once

#include "arith/threshold_lanes.h"

namespace rux::RUX_LEVEL {
namespace {

// No element is both above and below, since the thresholds are in order.
template <typename Lane>
inline Lane replace(uint8_t, Lane x, const BandLanes<Lane>& band)
{
    const Lane notAbove = atMost8(x, band.thresholdGT);
    const Lane notBelow = atLeast8(x, band.thresholdLT);
    return (x & notAbove & notBelow) | andNot(notAbove, band.valueGT) | andNot(notBelow, band.valueLT);
}

template <typename Lane>
inline Lane replace(int16_t, Lane x, const BandLanes<Lane>& band)
{
    const Lane above = greater16(x, band.thresholdGT);
    const Lane below = greater16(band.thresholdLT, x);
    return andNot(above | below, x) | (above & band.valueGT) | (below & band.valueLT);
}

template <typename Lane, typename Element, Layout layout>
class IntegerPattern {
public:
    static constexpr int lanes = BandPeriod<Lane, Element, layout>::lanes;

    explicit IntegerPattern(const Band<Element>* bands) : period(bands), colour(colourMask()) {}

    Lane apply(Lane x, int lane) const { return replace(Element(), x, period[lane]); }

    void put(uint8_t* dst, Lane value) const
    {
        (layout == Layout::AC4 ? withAlphaOf(Lane::load(dst), value) : value).store(dst);
    }

    void putPartial(uint8_t* dst, Lane value, size_t bytes) const
    {
        storePartial(layout == Layout::AC4 ? withAlphaOf(loadPartial<Lane>(dst, bytes), value) : value, dst, bytes);
    }

private:
    static Lane colourMask()
    {
        uint8_t bytes[Lane::size];
        for (size_t i = 0; i < Lane::size; ++i) bytes[i] = i / sizeof(Element) % 4 == 3 ? 0 : 0xFF;
        return Lane::load(bytes);
    }

    Lane withAlphaOf(Lane old, Lane value) const { return (value & colour) | andNot(colour, old); }

    BandPeriod<Lane, Element, layout> period;
    Lane colour;
};

template <typename Lane, typename Element, Layout layout>
void thresholdIntegers(const RowPairs& rows, const Band<Element>* bands)
{
    using Pattern = IntegerPattern<Lane, Element, layout>;
    constexpr size_t channels = layout == Layout::C1 ? 1 : layout == Layout::C3 ? 3 : 4;
    thresholdRowsInLanes<Lane, channels * sizeof(Element)>(rows, Pattern(bands));
}

}
}
