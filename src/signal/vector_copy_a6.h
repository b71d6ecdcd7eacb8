// The copy of a vector in 16-byte SSE moves; an SSE register carries any bits.
#pragma once

#include "lanes/four_floats.h"

namespace rux::a6 {
namespace {

void copyVector(const uint8_t* src, uint8_t* dst, size_t bytes)
{
    if (bytes >= 64) {
        FourFloats::load(src).store(dst);
        const size_t head = bytesToBoundary(dst, 16);
        src += head, dst += head, bytes -= head;

        for (; bytes >= 64; src += 64, dst += 64, bytes -= 64) {
            const FourFloats block[4] = {FourFloats::load(src), FourFloats::load(src + 16),
                                         FourFloats::load(src + 32), FourFloats::load(src + 48)};
            for (int i = 0; i < 4; ++i) _mm_store_ps(reinterpret_cast<float*>(dst + i * 16), block[i].value);
        }
    }
    for (; bytes >= 16; src += 16, dst += 16, bytes -= 16) FourFloats::load(src).store(dst);
    for (; bytes >= 4; src += 4, dst += 4, bytes -= 4) store(dst, load<uint32_t>(src));
    for (; bytes > 0; ++src, ++dst, --bytes) *dst = *src;
}

}
}
