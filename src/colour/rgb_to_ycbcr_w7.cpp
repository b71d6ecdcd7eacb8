// RGB to YCbCr in blocks of sixteen.
#include "colour/rows_w7.h"
#include "colour/rgb_to_ycbcr.h"
#include "colour/rgb_to_ycbcr_vector.h"

namespace rux::w7 {
namespace {

// ((hu(256 R, red) + hu(256 G, green) + hu(256 B, blue)) >> 8) + 16 with hu(a, k) = (a k) >> 16, unsigned: the sum of
// white is 56075, so that 16 bits hold it without a sign.
inline Words unsignedLuma(RgbWords pixels)
{
    const Words red = highProductUnsigned(shiftedLeft<8>(pixels.red), lumaWeights.red);
    const Words green = highProductUnsigned(shiftedLeft<8>(pixels.green), lumaWeights.green);
    const Words blue = highProductUnsigned(shiftedLeft<8>(pixels.blue), lumaWeights.blue);
    return shiftedRightUnsigned<8>(wrappingSum(wrappingSum(red, green), blue)) + Words::broadcast(16);
}

[[gnu::always_inline]] inline void blockTo422(const uint8_t* from, uint8_t* to)
{
    const RgbPairs pairs = loadPairs(from);
    const RgbWords sum = pairs.even + pairs.odd;
    storePairs<OrdinaryStores>(unsignedLuma(pairs.even), weightedSum<cbOfPair>(sum),
                               unsignedLuma(pairs.odd), weightedSum<crOfPair>(sum), to);
}

void rowTo422(const uint8_t* src, uint8_t* dst, size_t width)
{
    const size_t fours = width & ~size_t(3);
    rowTo422Blocks<blockTo422>(src, dst, fours);
    lastPixelsTo422(src + fours * 3, dst + fours * 2, width - fours);
}

}
}
