// Bitwise AND, byte by byte.
#include "arith/and.h"

namespace rux::px {
namespace {

void andRow(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, size_t bytes)
{
    for (size_t x = 0; x < bytes; ++x) dst[x] = BitwiseAnd()(src1[x], src2[x]);
}

}
}
