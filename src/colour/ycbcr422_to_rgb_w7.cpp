// YCbCr 4:2:2 to RGB in blocks of sixteen.
#include "colour/rows_w7.h"
#include "colour/rgb_vector.h"
#include "colour/ycbcr422_to_rgb.h"

namespace rux::w7 {
namespace {

void interleavedRow(InterleavedRow src, RgbRow dst, size_t width)
{
    const size_t fours = width & ~size_t(3);
    convertBlocks<ycbcr422PairsVectors, Rgb24, OrdinaryStores>(src, dst, fours);
    convertPixels<ycbcr422Pairs, Rgb24>(src.at(fours), dst.at<Rgb24>(fours), width - fours);
}

void planarRow(PlanarRow src, RgbRow dst, size_t width)
{
    const size_t eights = width & ~size_t(7);
    convertBlocks<ycbcr422PlanarVectors, Rgb24, OrdinaryStores>(src, dst, eights);
    convertPixels<ycbcr422Tail, Rgb24>(src.at(eights), dst.at<Rgb24>(eights), width - eights);
}

}
}
