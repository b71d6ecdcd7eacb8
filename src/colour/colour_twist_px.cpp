// The colour twist in double, ties to even by hand.
#include "colour/colour_twist_scalar.h"

namespace rux::px {
namespace {

int32_t nearestInteger(double value)
{
    const double raised = value + 0.5;
    const int32_t whole = static_cast<int32_t>(raised);
    return whole - (whole & static_cast<int32_t>(whole == raised));   // a jump would be mispredicted
}

}
}
