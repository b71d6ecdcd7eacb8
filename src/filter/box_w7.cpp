// Box filter in SSE2.
#include "filter/box_sse2.h"
#include "filter/box_3x3_sse.h"

namespace rux::w7 {
namespace {

void clearColumns(const Columns& columns)
{
    for (size_t i = 0; i < columns.count; ++i) columns.sums[i] = 0;
}

void addRow(const Columns& columns, const uint8_t* row)
{
    addRowInLanes(columns, row);
}

void exchangeRow(const Columns& columns, const uint8_t* entering, const uint8_t* leaving)
{
    exchangeRowInLanes(columns, entering, leaving);
}

void filterColumns(const Columns& columns, uint8_t* dst)
{
    filterColumnsInLanes(columns, dst);
}

// Whole blocks of 8 pixels one way, the pixels behind them another.
void filterThreeRows(const uint8_t* src, ptrdiff_t stride, uint8_t* dst, int32_t width)
{
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
