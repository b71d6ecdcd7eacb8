// Rows of YCbCr 4:2:2 in the scalar form from end to end.
#pragma once

#include "colour/ycbcr422_to_rgb.h"

namespace rux::RUX_LEVEL {
namespace {

void interleavedRow(InterleavedRow src, RgbRow dst, size_t width)
{
    convertPixels<ycbcr422Pairs, Rgb24>(src, dst, width);
}

void planarRow(PlanarRow src, RgbRow dst, size_t width)
{
    convertPixels<ycbcr422Planar, Rgb24>(src, dst, width);
}

}
}
