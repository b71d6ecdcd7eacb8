// Counts of bytes in MMX registers; a row's count is kept in 32-bit numbers.
#pragma once

#include "arith/count_in_range_bytes.h"
#include "frame/mmx_state.h"

namespace rux::RUX_LEVEL {
namespace {

int32_t countBytes(const CountedImage& image, uint8_t lowerBound, uint8_t upperBound)
{
    const MmxState state;
    const ByteRange<EightBytes> range(lowerBound, upperBound);
    uint32_t count = 0;
    image.forEachRow([&](const uint8_t* row) {
        count += countRow(
            range, row, static_cast<size_t>(image.roiSize.width),
            [](EightBytes sums, EightBytes counts) { return add32(sums, sumBytes(counts)); },
            [](EightBytes sums) { return total32(sums); });
    });
    return static_cast<int32_t>(count);
}

}
}
