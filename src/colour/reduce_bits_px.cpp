// ReduceBits in double, truncated.
#include "colour/reduce_bits_scalar.h"

namespace rux::px {
namespace {

int32_t wholeSteps(double steps)
{
    return static_cast<int32_t>(steps + 0.000009);
}

ruxStatus reduceInMode(const ReducedImages& images, int32_t top, int32_t noise, ruxDitherType ditherType)
{
    return reduce(images, top, noise, ditherType);
}

}
}
