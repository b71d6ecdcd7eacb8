// Comparison in MMX registers for bytes and in vectors of four for floats.
#include "lanes/eight_byte_elements_a6.h"

#include "arith/compare_bytes.h"
#include "arith/compare_floats.h"
#include "frame/mmx_state.h"

namespace rux::a6 {
namespace {

inline void storeSixteen(uint8_t* dst, FourFloats a, FourFloats b, FourFloats c, FourFloats d)
{
    storeFour(dst, a);
    storeFour(dst + 4, b);
    storeFour(dst + 8, c);
    storeFour(dst + 12, d);
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
