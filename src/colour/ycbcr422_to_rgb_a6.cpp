// YCbCr 4:2:2 to RGB: interleaved pixel by pixel, planar in blocks of eight with streaming stores.
#include "colour/rows_a6.h"
#include "colour/rgb_vector.h"
#include "colour/ycbcr422_to_rgb.h"

namespace rux::a6 {
namespace {

void interleavedRow(InterleavedRow src, RgbRow dst, size_t width)
{
    convertPixels<ycbcr422Pairs, Rgb24>(src, dst, width);
}

void planarRow(PlanarRow src, RgbRow dst, size_t width)
{
    const size_t eights = width & ~size_t(7);
    convertBlocks<ycbcr422PlanarVectors, Rgb24, StreamingStores>(src, dst, eights);
    convertPixels<ycbcr422Tail, Rgb24>(src.at(eights), dst.at<Rgb24>(eights), width - eights);
}

}
}
