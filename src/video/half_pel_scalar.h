// The exact half-pel prediction of a sample.
#pragma once

#include "video/half_pel.h"

namespace rux::RUX_LEVEL {
namespace {

// The row below stands `below` bytes further on. A roundControl above 1 can make an intermediate negative; it is then
// rounded toward zero.
template <int mode>
inline int32_t exactPrediction(const uint8_t* at, ptrdiff_t below, int32_t roundControl)
{
    if (mode == modeIndex(mcHalfVert)) return (at[0] + at[below] + 1 - roundControl) / 2;
    if (mode == modeIndex(mcHalfHorz)) return (at[0] + at[1] + 1 - roundControl) / 2;
    if (mode == modeIndex(mcHalfBoth)) return (at[0] + at[1] + at[below] + at[below + 1] + 2 - roundControl) / 4;
    return at[0];
}

}
}
