// Medians by comparison and exchange, on all the bytes of a lane at once.
//
// The level includes the header that gives its lane's smaller8 and larger8 first. Both of a pair are wanted in an
// exchange; the compiler forms what they have in common once.
#pragma once

#include "frame/level.h"

namespace rux::RUX_LEVEL {
namespace {

// Afterwards low <= high.
template <typename Lane>
inline void exchange(Lane& low, Lane& high)
{
    const Lane smaller = smaller8(low, high);
    high = larger8(low, high);
    low = smaller;
}

// Between low <= high: what lies below low becomes low, what lies above high becomes high.
template <typename Lane>
inline Lane median3(Lane a, Lane b, Lane c)
{
    exchange(a, b);
    return larger8(a, smaller8(b, c));
}

// Of two sorted pairs the smaller of the lower ends has three values above it, the larger of the upper ends three
// below it: neither is the median, and it stays the median of the other three.
template <typename Lane>
inline Lane median5(Lane a, Lane b, Lane c, Lane d, Lane e)
{
    exchange(a, b);
    exchange(c, d);
    return median3(larger8(a, c), smaller8(b, d), e);
}

template <typename Lane>
struct SortedTriple {
    Lane low, middle, high;

    SortedTriple(Lane a, Lane b, Lane c) : low(a), middle(b), high(c)
    {
        exchange(low, middle);
        exchange(middle, high);
        exchange(low, middle);
    }
};

// The median of nine is the median of the largest minimum, the median middle and the smallest maximum.
template <typename Lane>
inline Lane median9(const SortedTriple<Lane>& a, const SortedTriple<Lane>& b, const SortedTriple<Lane>& c)
{
    return median3(larger8(larger8(a.low, b.low), c.low), median3(a.middle, b.middle, c.middle),
                   smaller8(smaller8(a.high, b.high), c.high));
}

}
}
