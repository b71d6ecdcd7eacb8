// Box filter in MMX registers with the unsigned products of SSE.
#include "filter/box_mmx.h"
#include "lanes/pixel_words4_sse.h"

namespace rux::a6 {
namespace {

class HighProduct {
public:
    explicit HighProduct(uint16_t factor) : factor(factor) {}
    Words operator()(Words a) const { return highProductUnsigned(a, factor); }

private:
    uint16_t factor;
};

}
}

#include "filter/box_mmx_rows.h"
#include "filter/box_3x3_sse.h"

namespace rux::a6 {
namespace {

// Whole blocks of 8 pixels one way, the pixels behind them another.
[[gnu::noinline]] void filterThreeRows(const uint8_t* src, ptrdiff_t stride, uint8_t* dst, int32_t width)
{
    const MmxState state;
    const int32_t blocksEnd = width / 8 * 8;
    filterInStrips(MeanOfBlocks3x3(), src, stride, dst, blocksEnd);
    filterThreeRowsFrom(src, stride, dst, blocksEnd, width);
}

void fenceStores()
{
    _mm_sfence();
}

}
}
