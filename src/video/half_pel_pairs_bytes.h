// The prediction of mcHalfBoth from byte averages.
//
// With P0 = avg(a, b), P1 = avg(c, d) and the odd bits l0 = (a ^ b) & 1, l1 = (c ^ d) & 1 the four samples' sum is
// 2 (P0 + P1) - l0 - l1. Let m = (P0 + P1) >> 1; avg(P0, P1) is m, or m + 1 where P0 + P1 is odd. So
//
//     (sum + 2) >> 2  is  avg(P0, P1), less 1 where P0 + P1 is odd and l0 or l1 is 1,
//     (sum + 1) >> 2  is  avg(P0, P1), less 1 where P0 + P1 is odd or l0 and l1 are both 1.
#pragma once

#include "frame/level.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Samples>
struct PairsOf {
    Samples averages;
    Samples differences;   // the lowest bit of each byte matters
};

template <typename Samples>
inline PairsOf<Samples> pairsOf(Samples a, Samples b)
{
    return {average(a, b), a ^ b};
}

template <typename Samples>
inline Samples quarterUp(PairsOf<Samples> above, PairsOf<Samples> below)
{
    const Samples excess = (above.averages ^ below.averages) & (above.differences | below.differences);
    return wrappingDifference(average(above.averages, below.averages), excess & broadcastByte<Samples>(1));
}

template <typename Samples>
inline Samples quarterDown(PairsOf<Samples> above, PairsOf<Samples> below)
{
    const Samples excess = (above.averages ^ below.averages) | (above.differences & below.differences);
    return wrappingDifference(average(above.averages, below.averages), excess & broadcastByte<Samples>(1));
}

}
}
