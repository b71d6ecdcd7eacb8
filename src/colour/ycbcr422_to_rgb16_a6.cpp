// Interleaved YCbCr 4:2:2 to RGB of 16 bits a pixel in blocks of eight.
#include "colour/rows_a6.h"
#include "colour/packed16_vector.h"
#include "colour/ycbcr422_to_rgb16.h"

namespace rux::a6 {
namespace {

// Vectors for whole fours; then pairs, and a lone last pixel in a form of its own.
template <typename Layout>
void interleavedRow(InterleavedRow src, RgbRow dst, size_t width)
{
    const size_t fours = width & ~size_t(3);
    const size_t paired = width & ~size_t(1);
    convertBlocks<ycbcr422Packed16Vectors, Layout, OrdinaryStores>(src, dst, fours);
    convertPairs<ycbcr422Pairs, Layout>(src.at(fours), dst.at<Layout>(fours), paired - fours);
    if (width != paired) convertLone<ycbcr420, Layout>(src.at(paired), dst.at<Layout>(paired));
}

}
}
