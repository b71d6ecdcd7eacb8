// The sum in four vector lanes, or accurately on the floating-point stack, as the hint asks.
#include "signal/sum_accurate.h"
#include "signal/sum_fast.h"

namespace rux::a6 {
namespace {

double sumOf(const uint8_t* src, size_t elements, int32_t hint)
{
    return hint == 1 ? sumFast(src, elements) : sumAccurately(src, elements);
}

}
}
