// ReduceBits in double, truncated.
#include "colour/reduce_bits_scalar.h"

namespace rux::px {
namespace {

int32_t wholeSteps(double steps)
{
    return static_cast<int32_t>(steps + 0.000009);
}

}
}
