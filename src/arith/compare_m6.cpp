// Comparison in MMX registers for bytes, singly for floats.
#include "lanes/eight_byte_elements_m6.h"

#include "arith/compare_bytes.h"
#include "arith/compare_scalar.h"
#include "frame/mmx_state.h"

namespace rux::m6 {
namespace {

// Of the comparisons of two images only equality holds for a NaN.
template <ruxCmpOp cmpOp>
inline bool holds(float a, float b)
{
    return cmpOp == ruxCmpLess ? a < b : cmpOp == ruxCmpLessEq ? a <= b : isNotUnequal(a, b);
}

// Not inlined into the loop over the rows: no MMX instruction of the next row may move up to this one's end.
template <ruxCmpOp cmpOp>
[[gnu::noinline]] void compareByteRow(const uint8_t* src, uint8_t value, uint8_t* dst, size_t width)
{
    const MmxState state;
    transformRow<EightBytes>(ByteComparison<EightBytes, cmpOp>(value), src, dst, width);
}

}
}
