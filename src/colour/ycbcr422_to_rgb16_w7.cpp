// Interleaved YCbCr 4:2:2 to RGB of 16 bits a pixel in blocks of sixteen.
#include "colour/rows_w7.h"
#include "colour/packed16_vector.h"
#include "colour/ycbcr422_to_rgb16.h"

namespace rux::w7 {
namespace {

// Vectors for whole eights; then pairs, and a lone last pixel in a form of its own.
template <typename Layout>
void interleavedRow(InterleavedRow src, RgbRow dst, size_t width)
{
    const size_t eights = width & ~size_t(7);
    const size_t paired = width & ~size_t(1);
    convertBlocks<ycbcr422Packed16Vectors, Layout, OrdinaryStores>(src, dst, eights);
    convertPairs<ycbcr422Pairs, Layout>(src.at(eights), dst.at<Layout>(eights), paired - eights);
    if (width != paired) convertLone<ycbcr420, Layout>(src.at(paired), dst.at<Layout>(paired));
}

}
}
