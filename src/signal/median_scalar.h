// Medians sample by sample, their windows in local words, so that the filter may overwrite its input.
#pragma once

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

using Sample = int16_t;

inline Sample smaller(Sample a, Sample b)
{
    return a < b ? a : b;
}

inline Sample larger(Sample a, Sample b)
{
    return a < b ? b : a;
}

// Of samples, or of vectors of samples.
template <typename Lane>
inline Lane median(Lane a, Lane b, Lane c)
{
    return larger(smaller(a, b), smaller(larger(a, b), c));
}

// The inner two of the pairs' extremes, and the fifth: the smallest of four and the largest of four cannot be it.
template <typename Lane>
inline Lane median(Lane a, Lane b, Lane c, Lane d, Lane e)
{
    return median(larger(smaller(a, b), smaller(c, d)), smaller(larger(a, b), larger(c, d)), e);
}

inline Sample sampleAt(const uint8_t* samples, size_t i)
{
    return load<Sample>(samples + i * 2);
}

inline void putSample(uint8_t* samples, size_t i, Sample value)
{
    store(samples + i * 2, value);
}

// The places from one on, to the last but one, which has not been written yet. The sample before the place is given:
// in place it is gone. The last sample is kept.
inline void medianOfThreeSingly(const uint8_t* src, uint8_t* dst, size_t i, size_t samples, Sample before)
{
    Sample at = sampleAt(src, i);
    for (; i < samples - 1; ++i) {
        const Sample after = sampleAt(src, i + 1);
        putSample(dst, i, median(before, at, after));
        before = at;
        at = after;
    }
    putSample(dst, samples - 1, at);
}

// The same with the two samples before the place.
inline void medianOfFiveSingly(const uint8_t* src, uint8_t* dst, size_t i, size_t samples, Sample second, Sample first)
{
    Sample at = sampleAt(src, i);
    if (i == samples - 1) return putSample(dst, i, at);
    Sample after = sampleAt(src, i + 1);
    for (; i < samples - 1; ++i) {
        const Sample next = i + 2 < samples ? sampleAt(src, i + 2) : after;
        putSample(dst, i, median(second, first, after, next, at));
        second = first;
        first = at;
        at = after;
        after = next;
    }
    putSample(dst, samples - 1, at);
}

}
}
