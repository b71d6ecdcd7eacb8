// The rows of the box filter, each with an MMX state of its own.
#pragma once

#include "filter/box_3x3_lanes.h"

namespace rux::RUX_LEVEL {
namespace {

void clearColumns(const Columns& columns)
{
    for (size_t i = 0; i < columns.count; ++i) columns.sums[i] = 0;
}

[[gnu::noinline]] void addRow(const Columns& columns, const uint8_t* row)
{
    const MmxState state;
    addRowInLanes(columns, row);
}

[[gnu::noinline]] void exchangeRow(const Columns& columns, const uint8_t* entering, const uint8_t* leaving)
{
    const MmxState state;
    exchangeRowInLanes(columns, entering, leaving);
}

[[gnu::noinline]] void filterColumns(const Columns& columns, uint8_t* dst)
{
    const MmxState state;
    filterColumnsInLanes(columns, dst);
}

}
}
