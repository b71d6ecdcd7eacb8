// Moves that the MMX levels of Copy and Set share.
#pragma once

#include <mmintrin.h>

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

inline __m64 loadWhole(const uint8_t* from)
{
    return load<__m64>(from);
}

// A source on a 4-byte boundary that is no 8-byte boundary: two halves never cross a cache line.
inline __m64 loadHalves(const uint8_t* from)
{
    return _mm_unpacklo_pi32(_mm_cvtsi32_si64(load<int32_t>(from)), _mm_cvtsi32_si64(load<int32_t>(from + 4)));
}

// The last bytes of a run, fewer than 8, in ever smaller moves.
inline void copySmall(const uint8_t* src, uint8_t* dst, size_t bytes)
{
    if (bytes & 4) {
        store(dst, load<uint32_t>(src));
        src += 4, dst += 4;
    }
    if (bytes & 2) {
        store(dst, load<uint16_t>(src));
        src += 2, dst += 2;
    }
    if (bytes & 1) *dst = *src;
}

}
}
