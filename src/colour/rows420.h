// The order of work of the 4:2:0 conversions to RGB: the row pairs, then the lone row of an odd height.
#pragma once

#include "colour/rgb_scalar.h"

namespace rux::RUX_LEVEL {
namespace {

// The level gives the row pairs: blocks of 2x2, then the lone column of an odd width in the scalar form. The lone row
// is scalar at every level. Chroma stands at column x >> 1 and row y >> 1.
template <const PixelMatrix& matrix, typename Layout, typename RowPair>
inline void convertRows420(RowPair rowPair, PlanarRow src, PlaneSteps steps, uint8_t* dst, ptrdiff_t dstStep,
                           ruxiSize size)
{
    const size_t width = static_cast<size_t>(size.width);
    for (int32_t pairs = size.height / 2; pairs > 0; --pairs) {
        rowPair({src, src.luma + steps.luma}, {dst, dst + dstStep}, width);
        src = {src.luma + 2 * steps.luma, src.u + steps.u, src.v + steps.v};
        dst += 2 * dstStep;
    }
    if (size.height % 2 != 0) convertPixels<matrix, Layout>(src, RgbRow{dst}, width);
}

}
}
