// Thresholds element by element.
#pragma once

#include "arith/threshold.h"

namespace rux::RUX_LEVEL {
namespace {

// A NaN is neither above nor at least the lower threshold: it becomes the lower value.
template <typename Element>
inline Carried<Element> choose(Carried<Element> x, const Band<Element>& band)
{
    const Element element = compared(x);
    if (element > compared(band.thresholdGT)) return band.valueGT;
    if (!(element >= compared(band.thresholdLT))) return band.valueLT;
    return x;
}

template <typename Element>
inline void chooseElement(const uint8_t* src, uint8_t* dst, const Band<Element>& band)
{
    store(dst, choose<Element>(load<Carried<Element>>(src), band));
}

template <typename Element, Layout layout>
void thresholdElements(const RowPairs& rows, const Band<Element>* bands)
{
    constexpr size_t elementSize = sizeof(Element);
    const size_t pixels = static_cast<size_t>(rows.roiSize.width);
    if (layout == Layout::C1) {
        rows.forEach([&](const uint8_t* src, uint8_t* dst) {
            for (size_t at = 0; at < pixels * elementSize; at += elementSize)
                chooseElement(src + at, dst + at, bands[0]);
        });
        return;
    }
    // The fourth channel of AC4 is stepped over.
    constexpr size_t pixelSize = elementSize * (layout == Layout::C3 ? 3 : 4);
    rows.forEach([&](const uint8_t* src, uint8_t* dst) {
        for (size_t at = 0; at < pixels * pixelSize; at += pixelSize) {
            chooseElement(src + at, dst + at, bands[0]);
            chooseElement(src + at + elementSize, dst + at + elementSize, bands[1]);
            chooseElement(src + at + 2 * elementSize, dst + at + 2 * elementSize, bands[2]);
        }
    });
}

}
}
