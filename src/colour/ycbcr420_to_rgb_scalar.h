// Row pairs of YCbCr 4:2:0 in the scalar form.
#pragma once

#include "colour/ycbcr420_to_rgb.h"

namespace rux::RUX_LEVEL {
namespace {

void rowPair(PlanarRowPair src, RgbRowPair dst, size_t width)
{
    convertPixels<ycbcr420, Rgb24>(src, dst, width);
}

}
}
