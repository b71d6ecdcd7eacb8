// Comparison element by element.
#include "arith/compare_scalar.h"

namespace rux::px {
namespace {

// Every comparison of two images holds for a NaN.
template <ruxCmpOp cmpOp>
inline bool holds(float a, float b)
{
    return cmpOp == ruxCmpLess ? !(a >= b) : cmpOp == ruxCmpLessEq ? !(a > b) : isNotUnequal(a, b);
}

template <ruxCmpOp cmpOp>
void compareByteRow(const uint8_t* src, uint8_t value, uint8_t* dst, size_t width)
{
    for (size_t x = 0; x < width; ++x) {
        switch (cmpOp) {
        case ruxCmpLess: dst[x] = maskByte(src[x] < value); break;
        case ruxCmpLessEq: dst[x] = maskByte(src[x] <= value); break;
        case ruxCmpEq: dst[x] = maskByte(src[x] == value); break;
        case ruxCmpGreaterEq: dst[x] = maskByte(src[x] >= value); break;
        default: dst[x] = maskByte(src[x] > value); break;
        }
    }
}

}
}
