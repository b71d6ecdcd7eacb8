// Thresholds a lane at a time: the part that does not depend on the element.
//
// A pattern's lanes hold the thresholds and values of the channels that stand there.
#pragma once

#include "arith/lane_rows.h"
#include "arith/threshold.h"

namespace rux::RUX_LEVEL {
namespace {

// Thresholds and values side by side, as the elements of a lane want them.
template <typename Lane>
struct BandLanes {
    Lane thresholdLT;
    Lane valueLT;
    Lane thresholdGT;
    Lane valueGT;
};

// The lanes of a period; in AC4 the fourth channel's entries have no meaning.
template <typename Lane, typename Element, Layout layout>
class BandPeriod {
public:
    static constexpr int lanes = layout == Layout::C3 ? 3 : 1;

    explicit BandPeriod(const Band<Element>* bands)
    {
        for (int lane = 0; lane < lanes; ++lane) {
            period[lane].thresholdLT = spread(bands, lane, [](const Band<Element>& b) { return b.thresholdLT; });
            period[lane].valueLT = spread(bands, lane, [](const Band<Element>& b) { return b.valueLT; });
            period[lane].thresholdGT = spread(bands, lane, [](const Band<Element>& b) { return b.thresholdGT; });
            period[lane].valueGT = spread(bands, lane, [](const Band<Element>& b) { return b.valueGT; });
        }
    }

    const BandLanes<Lane>& operator[](int lane) const { return period[lane]; }

private:
    static constexpr size_t elements = Lane::size / sizeof(Element);

    template <typename Entry>
    static Lane spread(const Band<Element>* bands, int lane, Entry entry)
    {
        uint8_t bytes[Lane::size];
        for (size_t i = 0; i < elements; ++i) {
            const size_t at = static_cast<size_t>(lane) * elements + i;
            const size_t channel = layout == Layout::C1 ? 0 : layout == Layout::C3 ? at % 3 : at % 4;
            store(bytes + i * sizeof(Element), entry(bands[channel == 3 ? 0 : channel]));
        }
        return Lane::load(bytes);
    }

    BandLanes<Lane> period[lanes];
};

template <typename Lane, size_t pixelSize, typename Pattern>
inline void thresholdRowsInLanes(const RowPairs& rows, const Pattern& pattern)
{
    const size_t bytes = static_cast<size_t>(rows.roiSize.width) * pixelSize;
    rows.forEach([&](const uint8_t* src, uint8_t* dst) { transformRow<Lane>(pattern, src, dst, bytes); });
}

}
}
