// Counts in MMX registers for bytes and in vectors of four for floats.
#include "lanes/eight_byte_elements_a6.h"

#include "arith/count_in_range_floats.h"
#include "arith/count_in_range_mmx.h"

namespace rux::a6 {
namespace {

constexpr uint8_t bitCounts[16] = {0, 1, 1, 2, 1, 2, 2, 3, 1, 2, 2, 3, 2, 3, 3, 4};

uint32_t countVectors(const FloatRange& range, const uint8_t* row, size_t vectors)
{
    uint32_t count = 0;
    for (; vectors > 0; --vectors, row += 16)
        count += bitCounts[_mm_movemask_ps(range.holds(FourFloats::load(row)).value)];
    return count;
}

}
}
