// Finding coefficients one by one.
#pragma once

#include "video/run_length.h"

namespace rux::RUX_LEVEL {
namespace {

template <int32_t first>
inline uint32_t nonZeros(const int16_t* block, const int32_t* scanTable)
{
    uint32_t found = 0;
#pragma GCC unroll 8
    for (int32_t k = first ? first : 1; k < first + 32; ++k)
        found = 2 * found + (coefficient(block, scanTable, k) != 0);
    return found;
}

}
}
