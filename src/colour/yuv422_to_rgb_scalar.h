// Rows of YUV 4:2:2 in the scalar form from end to end.
#pragma once

#include "colour/yuv422_to_rgb.h"

namespace rux::RUX_LEVEL {
namespace {

void interleavedRow(InterleavedRow src, RgbRow dst, size_t width)
{
    convertPixels<yuv, Rgb24>(src, dst, width);
}

void planarRow(PlanarRow src, RgbRow dst, size_t width)
{
    convertPixels<yuv, Rgb24>(src, dst, width);
}

void planarRowToRgb0(PlanarRow src, RgbRow dst, size_t width)
{
    convertPixels<yuv, Rgb0>(src, dst, width);
}

}
}
