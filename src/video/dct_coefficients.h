// The constants of the vector levels' transforms.
//
// cosines[t][k] = 2^15 cos(k pi/16) scaled by the factor that the column stage leaves out for the rows of table t, so
// that the column stage can use bare tangents.
#pragma once

#include <stdint.h>

#include "frame/level.h"

namespace rux::RUX_LEVEL {
namespace {

constexpr int16_t cosines[4][8] = {
    {16384, 22725, 21407, 19266, 16384, 12873, 8867, 4520},
    {22725, 31521, 29692, 26722, 22725, 17855, 12299, 6270},
    {21407, 29692, 27969, 25172, 21407, 16819, 11585, 5906},
    {19266, 26722, 25172, 22654, 19266, 15137, 10426, 5315},
};

// The table of each row of a block.
constexpr int tableOfRow[8] = {0, 1, 2, 3, 0, 3, 2, 1};

// Tangents and cosines for a high product, 16 fractional bits.
constexpr int16_t tangent1 = 13036;            // tan(pi/16)
constexpr int16_t tangent2 = 27146;            // tan(2 pi/16)
constexpr int16_t tangent3LessOne = -21746;    // tan(3 pi/16) - 1
constexpr int16_t cosine4LessOne = -19195;     // cos(4 pi/16) - 1
constexpr int16_t halfCosine4 = 23170;         // cos(4 pi/16) / 2

// value * (1 + factor / 65536), for the factors that are stored less one: above 1/2 they do not fit a signed word.
template <typename Words>
inline Words productOnePlus(Words value, int16_t factor)
{
    return highProduct(value, factor) + value;
}

constexpr int16_t negative(int16_t value)
{
    return static_cast<int16_t>(-value);
}

}
}
