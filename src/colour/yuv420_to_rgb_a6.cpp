// Planar YUV 4:2:0 to RGB in blocks of eight columns with streaming stores; the lone column of an odd width is scalar.
#include "colour/rows_a6.h"
#include "colour/rgb_vector.h"
#include "colour/yuv420_to_rgb.h"

namespace rux::a6 {
namespace {

void rowPair(PlanarRowPair src, RgbRowPair dst, size_t width)
{
    const size_t paired = width & ~size_t(1);
    convertBlocks<yuv420FourthPixelVectors, Rgb24, StreamingStores>(src, dst, paired);
    convertPixels<yuv, Rgb24>(src.at(paired), dst.at<Rgb24>(paired), width - paired);
}

}
}
