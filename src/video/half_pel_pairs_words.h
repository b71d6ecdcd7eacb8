// The prediction of mcHalfBoth from sums in words, which hold four samples and 2.
#pragma once

#include "frame/level.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Samples>
using PairsOf = decltype(widened(Samples()));

template <typename Samples>
inline PairsOf<Samples> pairsOf(Samples a, Samples b)
{
    return widened(a) + widened(b);
}

template <typename Words>
inline Words quarterUp(Words above, Words below)
{
    return shiftedRight<2>(above + below + Words::broadcast(2));
}

template <typename Words>
inline Words quarterDown(Words above, Words below)
{
    return shiftedRight<2>(above + below + Words::broadcast(1));
}

}
}
