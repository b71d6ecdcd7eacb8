// RGB to YCbCr in blocks of eight: the scalar form's sums, exact in 32 bits.
#include "colour/rows_m6.h"
#include "colour/rgb_to_ycbcr.h"
#include "colour/rgb_to_ycbcr_blocks.h"

namespace rux::m6 {
namespace {

[[gnu::always_inline]] inline void blockTo420(RgbRows from, Planes420 to)
{
    const RgbPairs upper = loadPairs(from.upper);
    const RgbPairs lower = loadPairs(from.lower);
    mergeBytes(weightedSum<roundedLuma>(upper.even), weightedSum<roundedLuma>(upper.odd)).store(to.luma);
    mergeBytes(weightedSum<roundedLuma>(lower.even), weightedSum<roundedLuma>(lower.odd)).store(to.lowerLuma);
    const RgbWords sum = upper.even + upper.odd + (lower.even + lower.odd);
    storeChroma(weightedSum<cbOfBlock>(sum), to.cb);
    storeChroma(weightedSum<crOfBlock>(sum), to.cr);
}

void rowPairTo420(RgbRows src, Planes420 dst, size_t pixels)
{
    rowPairTo420Blocks<blockTo420>(src, dst, pixels);
}

[[gnu::always_inline]] inline void blockTo422(const uint8_t* from, uint8_t* to)
{
    const RgbPairs pairs = loadPairs(from);
    const RgbWords sum = pairs.even + pairs.odd;
    storePairs<OrdinaryStores>(weightedSum<roundedLuma>(pairs.even), weightedSum<cbOfPair>(sum),
                               weightedSum<unroundedLuma>(pairs.odd), weightedSum<crOfPair>(sum), to);
}

void rowTo422(const uint8_t* src, uint8_t* dst, size_t width)
{
    const size_t paired = width & ~size_t(1);
    rowTo422Blocks<blockTo422>(src, dst, paired);
    if (width != paired)
        loneTo422(roundedLuma, cbOfOne, src + paired * 3, dst + paired * 2);
}

}
}
