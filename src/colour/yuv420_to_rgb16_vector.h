// Row pairs of YUV 4:2:0 to 16 bits a pixel in vector blocks; the lone column of an odd width is scalar.
#pragma once

#include "colour/packed16_vector.h"
#include "colour/yuv420_to_rgb16.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Layout>
void rowPair(PlanarRowPair src, RgbRowPair dst, size_t width)
{
    const size_t paired = width & ~size_t(1);
    convertBlocks<yuv420Packed16Vectors, Layout, OrdinaryStores>(src, dst, paired);
    convertPixels<yuv, Layout>(src.at(paired), dst.at<Layout>(paired), width - paired);
}

}
}
