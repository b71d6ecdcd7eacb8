// Absolute difference, byte by byte.
#include "arith/abs_diff.h"

namespace rux::px {
namespace {

void absDiffRow(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, size_t bytes)
{
    for (size_t x = 0; x < bytes; ++x) dst[x] = AbsoluteDifference()(src1[x], src2[x]);
}

}
}
