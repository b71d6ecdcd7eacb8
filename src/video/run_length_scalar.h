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
    for (int32_t k = first + 31; k > first; --k) found = 2 * found + (coefficient(block, scanTable, k) != 0);
    return 2 * found + (first != 0 && coefficient(block, scanTable, first) != 0);
}

}
}
