// Box filter in MMX registers.
#include "filter/box_mmx.h"

namespace rux::m6 {
namespace {

// MMX multiplies signed words: one that stands for s - 65536 gives a high word too low by the factor, which is
// positive itself.
class HighProduct {
public:
    explicit HighProduct(uint16_t factor) : factor(Words::broadcast(static_cast<int16_t>(factor))) {}
    Words operator()(Words a) const
    {
        return wrappingSum(highProduct(a, factor), shiftedRight<15>(a) & factor);
    }

private:
    Words factor;
};

}
}

#include "filter/box_mmx_rows.h"

namespace rux::m6 {
namespace {

// (s * 455) >> 12 = (s * 7280) >> 16, and both factors are positive words.
struct MeanOf3x3 {
    Words operator()(Words sums) const { return highProduct(sums, Words::broadcast(7280)); }
    uint8_t operator()(int32_t sum) const { return static_cast<uint8_t>((sum * 455) >> 12); }
};

[[gnu::noinline]] void filterThreeRows(const uint8_t* src, ptrdiff_t stride, uint8_t* dst, int32_t width)
{
    const MmxState state;
    filterInStrips(MeanOf3x3(), src, stride, dst, width);
}

void fenceStores() {}

}
}
