// Bitwise AND, 16 bytes at a time.
#include "arith/and.h"
#include "arith/byte_rows.h"
#include "lanes/sixteen_bytes.h"

namespace rux::w7 {
namespace {

void andRow(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, size_t bytes)
{
    const size_t head = bytesToBoundary(dst, 16);
    if (bytesToBoundary(src1, 16) == head && bytesToBoundary(src2, 16) == head)
        combineByteRow<SixteenBytes, OnBoundary<SixteenBytes>>(BitwiseAnd(), src1, src2, dst, bytes);
    else
        combineByteRow<SixteenBytes>(BitwiseAnd(), src1, src2, dst, bytes);
}

}
}
