// The colour twist in double, rounded by the processor.
#include "colour/colour_twist_scalar.h"

namespace rux::a6 {
namespace {

int32_t nearestInteger(double value)
{
    return roundDouble(value);
}

}
}
