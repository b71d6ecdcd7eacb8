// Thresholds element by element; the floats of one channel are compared by their bits.
#include "arith/threshold_bits.h"
#include "arith/threshold_scalar.h"

namespace rux::px {
namespace {

template <Signs signs>
inline bool isAbove(uint32_t x, uint32_t threshold)
{
    return signs == Signs::bothBelowZero ? x < threshold : static_cast<int32_t>(x) > static_cast<int32_t>(threshold);
}

template <Signs signs>
inline bool isBelow(uint32_t x, uint32_t threshold)
{
    return signs == Signs::noneBelowZero ? static_cast<int32_t>(x) < static_cast<int32_t>(threshold) : x > threshold;
}

template <typename Choose>
inline void chooseBits(const RowPairs& rows, Choose choose)
{
    const size_t bytes = static_cast<size_t>(rows.roiSize.width) * 4;
    rows.forEach([&](const uint8_t* src, uint8_t* dst) {
        for (size_t at = 0; at < bytes; at += 4) store<uint32_t>(dst + at, choose(load<uint32_t>(src + at)));
    });
}

void thresholdBits(const RowPairs& rows, Band<float> band)
{
    chooseSigns(band.thresholdLT, band.thresholdGT, [&](auto signs) {
        chooseBits(rows, [=](uint32_t x) {
            if (isAbove<decltype(signs)::value>(x, band.thresholdGT)) return band.valueGT;
            if (isBelow<decltype(signs)::value>(x, band.thresholdLT)) return band.valueLT;
            return x;
        });
    });
}

template <typename Element, Layout layout>
void thresholdRows(const RowPairs& rows, const Band<Element>* bands)
{
    if constexpr (comparesBits<Element, layout>)
        thresholdBits(rows, bands[0]);
    else
        thresholdElements<Element, layout>(rows, bands);
}

void thresholdRowsBelow(const RowPairs& rows, uint32_t threshold, uint32_t value)
{
    chooseSign(threshold, [&](auto signs) {
        chooseBits(rows, [=](uint32_t x) { return isBelow<decltype(signs)::value>(x, threshold) ? value : x; });
    });
}

}
}
