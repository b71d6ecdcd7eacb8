// The box filter element by element: for px, and for what is left of a row behind the vectors.
//
// Sum is the type of a column's sum, int32_t or uint16_t; the sum of a mask is formed in 32 bits and wraps there.
#pragma once

#include "filter/box.h"
#include "filter/column_sums.h"

namespace rux::RUX_LEVEL {
namespace {

inline uint8_t meanOf(int32_t sum, Reciprocal reciprocal)
{
    return static_cast<uint8_t>(wrappingProduct(sum, reciprocal.factor) >> (reciprocal.shift & 31));
}

template <typename Sum>
inline int32_t sumOfFirstMask(const Columns& columns, const Sum* sums)
{
    int32_t sum = 0;
    for (int32_t i = 0; i < columns.maskWidth; ++i) sum += sums[i];
    return sum;
}

// The pixels behind one of which the mask's sum is known.
template <typename Sum>
inline void filterBehind(const Columns& columns, const Sum* sums, uint8_t* dst, int32_t x, int32_t sum)
{
    const Sum* const entering = sums + columns.maskWidth;
    for (; x < columns.width - 1; ++x) {
        sum += entering[x] - sums[x];
        dst[x + 1] = meanOf(sum, columns.reciprocal);
    }
}

template <typename Sum>
inline void filterColumnsSingly(const Columns& columns, const Sum* sums, uint8_t* dst)
{
    const int32_t sum = sumOfFirstMask(columns, sums);
    dst[0] = meanOf(sum, columns.reciprocal);
    filterBehind(columns, sums, dst, 0, sum);
}

inline int32_t sumOf3x3(const uint8_t* src, ptrdiff_t stride)
{
    const uint8_t* const second = src + stride;
    const uint8_t* const third = second + stride;
    return src[0] + src[1] + src[2] + second[0] + second[1] + second[2] + third[0] + third[1] + third[2];
}

inline void filterThreeRowsFrom(const uint8_t* src, ptrdiff_t stride, uint8_t* dst, int32_t from, int32_t width)
{
    for (int32_t x = from; x < width; ++x) dst[x] = static_cast<uint8_t>((sumOf3x3(src + x, stride) * 455) >> 12);
}

}
}
