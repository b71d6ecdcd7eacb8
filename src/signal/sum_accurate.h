// The accurate sum: element i goes to accumulator i modulo 8, in double; the eight are added up in their order, and
// the tail of fewer than eight, in an accumulator of its own, is added last.
#pragma once

#include "signal/sum.h"

namespace rux::RUX_LEVEL {
namespace {

// The floating-point stack holds eight numbers: all accumulators.
[[gnu::noinline]] double sumAccurately(const uint8_t* src, size_t elements)
{
    double a = 0, b = 0, c = 0, d = 0, e = 0, f = 0, g = 0, h = 0;
    for (; elements >= 8; elements -= 8, src += 32) {
        a += load<float>(src);
        b += load<float>(src + 4);
        c += load<float>(src + 8);
        d += load<float>(src + 12);
        e += load<float>(src + 16);
        f += load<float>(src + 20);
        g += load<float>(src + 24);
        h += load<float>(src + 28);
    }
    return a + b + c + d + e + f + g + h + sumSingly(src, elements, 0);
}

}
}
