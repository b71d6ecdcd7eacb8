// Box filter, pixel by pixel.
#include "filter/box_scalar.h"

namespace rux::px {
namespace {

void clearColumns(const Columns& columns)
{
    for (size_t i = 0; i < columns.count; ++i) columns.sums[i] = 0;
}

void addRow(const Columns& columns, const uint8_t* row)
{
    addFrom(columns.sums, row, 0, columns.count);
}

void exchangeRow(const Columns& columns, const uint8_t* entering, const uint8_t* leaving)
{
    exchangeFrom(columns.sums, entering, leaving, 0, columns.count);
}

void filterColumns(const Columns& columns, uint8_t* dst)
{
    filterColumnsSingly(columns, columns.sums, dst);
}

void filterThreeRows(const uint8_t* src, ptrdiff_t stride, uint8_t* dst, int32_t width)
{
    filterThreeRowsFrom(src, stride, dst, 0, width);
}

void fenceStores() {}

}
}
