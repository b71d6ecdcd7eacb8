// Thresholds in MMX registers for integers and in vectors of four for floats.
#include "lanes/eight_byte_elements_a6.h"

#include "arith/threshold_floats.h"
#include "arith/threshold_integers.h"
#include "frame/mmx_state.h"

namespace rux::a6 {
namespace {

template <typename Element, Layout layout>
void thresholdRows(const RowPairs& rows, const Band<Element>* bands)
{
    if constexpr (sizeof(Element) == sizeof(float)) {
        thresholdFloats<layout>(rows, bands);
    } else {
        const MmxState state;
        thresholdIntegers<EightBytes, Element, layout>(rows, bands);
    }
}

void thresholdRowsBelow(const RowPairs& rows, uint32_t threshold, uint32_t value)
{
    thresholdRowsInLanes<FourFloats, sizeof(float)>(rows, LowerFloatPattern(threshold, value));
}

}
}
