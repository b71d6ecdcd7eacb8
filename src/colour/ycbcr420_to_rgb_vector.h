// Row pairs of YCbCr 4:2:0 in vector blocks; the lone column of an odd width is scalar.
#pragma once

#include "colour/rgb_vector.h"
#include "colour/ycbcr420_to_rgb.h"

namespace rux::RUX_LEVEL {
namespace {

void rowPair(PlanarRowPair src, RgbRowPair dst, size_t width)
{
    const size_t paired = width & ~size_t(1);
    convertBlocks<ycbcr420Vectors, Rgb24, OrdinaryStores>(src, dst, paired);
    convertPixels<ycbcr420, Rgb24>(src.at(paired), dst.at<Rgb24>(paired), width - paired);
}

}
}
