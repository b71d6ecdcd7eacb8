// The sliding of a median's window: a ring knows which sample leaves, the sorted window where the entering one goes.
#pragma once

#include "signal/median_scalar.h"

namespace rux::RUX_LEVEL {
namespace {

// The window starts far before the vector, where all samples read as the first, and moves on sample by sample; from
// the place 1 on it gives medians.
template <typename Element, typename Window>
inline void slideMedian(uint8_t* srcDst, size_t samples, size_t mask, Window window, uint8_t* ring)
{
    const size_t half = mask / 2;
    const Sample last = sampleAt(srcDst, samples - 1);
    Element* const values = reinterpret_cast<Element*>(ring);
    for (size_t i = 0; i < mask; ++i) values[i] = sampleAt(srcDst, 0);

    size_t oldest = 0;
    const auto enter = [&](Sample entering) {
        const Element leaving = values[oldest];
        values[oldest] = entering;
        oldest = oldest + 1 == mask ? 0 : oldest + 1;
        if (leaving != entering) window.replace(static_cast<Sample>(leaving), entering);
    };
    const auto read = [&](size_t i) { return i < samples ? sampleAt(srcDst, i) : last; };

    for (size_t i = 1; i <= half; ++i) enter(read(i));
    for (size_t i = 1; i + 1 < samples; ++i) {
        enter(read(i + half));
        putSample(srcDst, i, window.middle());
    }
}

}
}
