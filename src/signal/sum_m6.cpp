// The sum in its accurate form, whatever the hint: MMX has no floats.
#include "signal/sum_accurate.h"

namespace rux::m6 {
namespace {

double sumOf(const uint8_t* src, size_t elements, int32_t)
{
    return sumAccurately(src, elements);
}

}
}
