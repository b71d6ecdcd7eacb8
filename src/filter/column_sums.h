// Sums of a column's pixels in a window of rows, element by element.
//
// Sum is int32_t or uint16_t: as long as the window's sum fits, what wraps on the way does not matter.
#pragma once

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Sum>
inline void addFrom(Sum* sums, const uint8_t* row, size_t from, size_t count)
{
    for (size_t i = from; i < count; ++i) sums[i] = static_cast<Sum>(sums[i] + row[i]);
}

template <typename Sum>
inline void exchangeFrom(Sum* sums, const uint8_t* entering, const uint8_t* leaving, size_t from, size_t count)
{
    for (size_t i = from; i < count; ++i) sums[i] = static_cast<Sum>(sums[i] + entering[i] - leaving[i]);
}

}
}
