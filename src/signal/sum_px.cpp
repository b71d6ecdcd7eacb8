// The sum in two accumulators: even positions and odd positions, as long as four elements are left.
#include "signal/sum.h"

namespace rux::px {
namespace {

[[gnu::noinline]] double sumOf(const uint8_t* src, size_t elements, int32_t)
{
    double even = 0;
    double odd = 0;
    for (; elements >= 4; elements -= 4, src += 16) {
        even += load<float>(src);
        odd += load<float>(src + 4);
        even += load<float>(src + 8);
        odd += load<float>(src + 12);
    }
    odd += even;
    return sumSingly(src, elements, odd);
}

}
}
