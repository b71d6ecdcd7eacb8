// YUV 4:2:2 to RGB in blocks of eight; all but the planar form with three bytes a pixel write past the caches.
#include "colour/rows_a6.h"
#include "colour/rgb_vector.h"
#include "colour/yuv422_to_rgb.h"

namespace rux::a6 {
namespace {

void interleavedRow(InterleavedRow src, RgbRow dst, size_t width)
{
    const size_t paired = width & ~size_t(1);
    convertBlocks<yuvVectors, Rgb24, StreamingStores>(src, dst, paired);
    if (width != paired) convertLone<yuvPairsLone, Rgb24>(src.at(paired), dst.at<Rgb24>(paired));
}

void planarRow(PlanarRow src, RgbRow dst, size_t width)
{
    const size_t paired = width & ~size_t(1);
    convertBlocks<yuvVectors, Rgb24, OrdinaryStores>(src, dst, paired);
    if (width != paired) convertLone<yuv, Rgb24>(src.at(paired), dst.at<Rgb24>(paired));
}

void planarRowToRgb0(PlanarRow src, RgbRow dst, size_t width)
{
    const size_t fours = width & ~size_t(3);
    convertBlocks<yuv422AlphaVectors, Rgb0, StreamingStores>(src, dst, fours);
    convertPixels<yuv, Rgb0>(src.at(fours), dst.at<Rgb0>(fours), width - fours);
}

}
}
