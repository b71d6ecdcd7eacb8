// Rows of interleaved YCbCr 4:2:2 to 16 bits a pixel in the scalar form from end to end.
#pragma once

#include "colour/ycbcr422_to_rgb16.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Layout>
void interleavedRow(InterleavedRow src, RgbRow dst, size_t width)
{
    convertPixels<ycbcr422Pairs, Layout>(src, dst, width);
}

}
}
