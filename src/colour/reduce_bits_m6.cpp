// ReduceBits in double, truncated by a conversion that rounds to nearest. A call holds that mode, whatever the host has
// set, and nothing switches it sample by sample. MMX brings nothing to doubles.
#include "colour/reduce_bits_scalar.h"
#include "frame/rounding.h"

namespace rux::m6 {
namespace {

// Rounding lets a value that misses a step by 1e-5 count as the step, truncation only one that misses it by 9e-6.
int32_t wholeSteps(double steps)
{
    const int32_t rounded = roundDouble(steps - 0.49999);
    return rounded > steps + 0.000009 ? rounded - 1 : rounded;
}

ruxStatus reduceInMode(const ReducedImages& images, int32_t top, int32_t noise, ruxDitherType ditherType)
{
    const DoubleRounding rounding(Rounding::nearest);
    return reduce(images, top, noise, ditherType);
}

}
}
