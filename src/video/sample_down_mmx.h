// Halving a plane in MMX registers. A level gives, before, the means of eight samples of two rows, in words.
#pragma once

#include "frame/mmx_state.h"
#include "video/sample_down.h"

namespace rux::RUX_LEVEL {
namespace {

[[gnu::noinline]] void halveRows(const uint8_t* upper, const uint8_t* lower, uint8_t* dst, int32_t width)
{
    const MmxState state;
    for (; width >= 8; width -= 8) {
        store(dst, _mm_packs_pu16(means(upper, lower), means(upper + 8, lower + 8)));
        upper += 16;
        lower += 16;
        dst += 8;
    }
    if (width >= 4) {
        const __m64 four = means(upper, lower);
        store(dst, _mm_cvtsi64_si32(_mm_packs_pu16(four, four)));
        upper += 8;
        lower += 8;
        dst += 4;
        width -= 4;
    }
    halveSamples(upper, lower, dst, width);
}

}
}
