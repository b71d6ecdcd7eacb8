// Row pairs of YUV 4:2:0 to 16 bits a pixel in the scalar form.
#pragma once

#include "colour/yuv420_to_rgb16.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Layout>
void rowPair(PlanarRowPair src, RgbRowPair dst, size_t width)
{
    convertPixels<yuv, Layout>(src, dst, width);
}

}
}
