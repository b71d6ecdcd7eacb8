// Zero crossings, product by product.
#include "signal/sign_change_rate_double.h"

namespace rux::px {
namespace {

int32_t countChanges16s(const uint8_t* src, size_t samples)
{
    return countChanges16sSingly(src, 1, samples);
}

}
}
