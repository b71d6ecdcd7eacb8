// Thresholds a lane at a time: the part that does not depend on the element.
//
// A pattern turns a lane of the source into a lane of the result. Three channels need three lanes until the channels
// stand in a lane as at the start, so a pattern has a period of 1 or 3 lanes, and the row's last lane, which ends with
// the last channel, is always the last of a period.
#pragma once

#include "arith/threshold.h"
#include "lanes/partial_bytes.h"

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

// The row's last lane may lie over its neighbour. It is read before anything is written and stored after everything
// else, since in place the neighbour's elements must not be judged twice.
template <typename Lane, typename Pattern>
inline void thresholdLanes(const Pattern& pattern, const uint8_t* src, uint8_t* dst, size_t bytes)
{
    constexpr size_t size = Lane::size;
    if (bytes < size) {
        pattern.putPartial(dst, pattern.apply(loadPartial<Lane>(src, bytes), 0), bytes);
        return;
    }
    constexpr int period = Pattern::lanes;
    constexpr int turn = period == 3 ? 3 : 4;
    const Lane last = pattern.apply(Lane::load(src + bytes - size), period - 1);

    size_t at = 0;
    for (; bytes - at >= turn * size; at += turn * size)
        for (int lane = 0; lane < turn; ++lane)
            pattern.put(dst + at + lane * size, pattern.apply(Lane::load(src + at + lane * size), lane % period));
    for (int lane = 0; bytes - at >= size; at += size, ++lane)
        pattern.put(dst + at, pattern.apply(Lane::load(src + at), lane % period));
    if (at < bytes) pattern.put(dst + bytes - size, last);
}

template <typename Lane, size_t pixelSize, typename Pattern>
inline void thresholdRowsInLanes(const RowPairs& rows, const Pattern& pattern)
{
    const size_t bytes = static_cast<size_t>(rows.roiSize.width) * pixelSize;
    rows.forEach([&](const uint8_t* src, uint8_t* dst) { thresholdLanes<Lane>(pattern, src, dst, bytes); });
}

}
}
