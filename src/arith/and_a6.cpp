// Bitwise AND in MMX registers, 8 bytes at a time.
#include "arith/and.h"
#include "arith/byte_rows.h"
#include "frame/mmx_state.h"
#include "lanes/eight_bytes.h"

namespace rux::a6 {
namespace {

[[gnu::noinline]] void andRow(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, size_t bytes)
{
    const MmxState state;
    combineByteRow<EightBytes>(BitwiseAnd(), src1, src2, dst, bytes);
}

}
}
