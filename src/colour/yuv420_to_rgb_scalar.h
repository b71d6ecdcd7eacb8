// Row pairs of YUV 4:2:0 in the scalar form.
#pragma once

#include "colour/yuv420_to_rgb.h"

namespace rux::RUX_LEVEL {
namespace {

void rowPair(PlanarRowPair src, RgbRowPair dst, size_t width)
{
    convertPixels<yuv, Rgb24>(src, dst, width);
}

}
}
