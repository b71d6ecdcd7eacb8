// Planar YUV 4:2:0 to RGB in blocks of sixteen columns; the lone column of an odd width is scalar.
#include "colour/rows_w7.h"
#include "colour/rgb_vector.h"
#include "colour/yuv420_to_rgb.h"

namespace rux::w7 {
namespace {

void rowPair(PlanarRowPair src, RgbRowPair dst, size_t width)
{
    const size_t paired = width & ~size_t(1);
    convertBlocks<yuvVectors, Rgb24, OrdinaryStores>(src, dst, paired);
    convertPixels<yuv, Rgb24>(src.at(paired), dst.at<Rgb24>(paired), width - paired);
}

}
}
