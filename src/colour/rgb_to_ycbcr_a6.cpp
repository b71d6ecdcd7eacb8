// RGB to YCbCr in blocks of eight; 4:2:2 is written past the caches.
#include "colour/rows_a6.h"
#include "colour/rgb_to_ycbcr.h"
#include "colour/rgb_to_ycbcr_vector.h"

namespace rux::a6 {
namespace {

[[gnu::always_inline]] inline void blockTo422(const uint8_t* from, uint8_t* to)
{
    const RgbPairs pairs = loadPairs(from);
    const RgbWords sum = pairs.even + pairs.odd;
    storePairs<StreamingStores>(weightedSum<blockLuma422>(pairs.even), weightedSum<blockCb422>(sum),
                                weightedSum<blockLuma422>(pairs.odd), weightedSum<blockCr422>(sum), to);
}

void rowTo422(const uint8_t* src, uint8_t* dst, size_t width)
{
    const size_t fours = width & ~size_t(3);
    rowTo422Blocks<blockTo422>(src, dst, fours);
    lastPixelsTo422(src + fours * 3, dst + fours * 2, width - fours);
}

}
}
