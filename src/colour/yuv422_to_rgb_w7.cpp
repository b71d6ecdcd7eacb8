// YUV 4:2:2 to RGB in blocks of sixteen.
#include "colour/rows_w7.h"
#include "colour/rgb_vector.h"
#include "colour/yuv422_to_rgb.h"

namespace rux::w7 {
namespace {

void interleavedRow(InterleavedRow src, RgbRow dst, size_t width)
{
    const size_t paired = width & ~size_t(1);
    convertBlocks<yuvVectors, Rgb24, OrdinaryStores>(src, dst, paired);
    if (width != paired) convertLone<yuvPairsLone, Rgb24>(src.at(paired), dst.at<Rgb24>(paired));
}

void planarRow(PlanarRow src, RgbRow dst, size_t width)
{
    const size_t paired = width & ~size_t(1);
    convertBlocks<yuvVectors, Rgb24, OrdinaryStores>(src, dst, paired);
    if (width != paired) convertLone<yuv, Rgb24>(src.at(paired), dst.at<Rgb24>(paired));
}

// Blocks begin at multiples of four pixels, so that they all stand on the boundary on which the row begins.
void planarRowToRgb0(PlanarRow src, RgbRow dst, size_t width)
{
    const size_t fours = width & ~size_t(3);
    if (isAligned(dst.pixels, 16))
        convertBlocks<yuv422AlphaVectors, Rgb0, AlignedStores>(src, dst, fours);
    else
        convertBlocks<yuv422AlphaVectors, Rgb0, OrdinaryStores>(src, dst, fours);
    convertPixels<yuv, Rgb0>(src.at(fours), dst.at<Rgb0>(fours), width - fours);
}

}
}
