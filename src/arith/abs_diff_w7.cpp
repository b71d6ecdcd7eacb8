// Absolute difference, 16 bytes at a time.
#include "arith/abs_diff.h"
#include "arith/byte_rows.h"
#include "lanes/sixteen_bytes.h"

namespace rux::w7 {
namespace {

void absDiffRow(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, size_t bytes)
{
    combineByteRow<SixteenBytes>(AbsoluteDifference(), src1, src2, dst, bytes);
}

}
}
