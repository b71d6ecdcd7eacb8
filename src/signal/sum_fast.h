// The fast sum: four single-precision lanes, moved into a double after each block.
//
// The elements before the first 16-byte boundary go straight to the double, as do those that fill no vector; a vector
// that meets no such boundary has none before it.
#pragma once

#include "lanes/four_floats.h"
#include "signal/sum.h"

namespace rux::RUX_LEVEL {
namespace {

constexpr size_t fastBlock = 32768;

// A multiple of four elements, at most a block; lane 0 first.
inline double sumLanes(const uint8_t* src, size_t elements, double sum)
{
    FourFloats lanes = {_mm_setzero_ps()};
    for (; elements >= 16; elements -= 16, src += 64)
        for (int at = 0; at < 64; at += 16) lanes.value = _mm_add_ps(lanes.value, FourFloats::load(src + at).value);
    for (; elements > 0; elements -= 4, src += 16) lanes.value = _mm_add_ps(lanes.value, FourFloats::load(src).value);
    uint8_t stored[FourFloats::size];
    lanes.store(stored);
    return sumSingly(stored, 4, sum);
}

[[gnu::noinline]] double sumFast(const uint8_t* src, size_t elements)
{
    size_t head = isAligned(src, 4) ? bytesToBoundary(src, 16) / 4 : 0;
    if (head > elements) head = elements;
    double sum = sumSingly(src, head, 0);
    src += head * 4, elements -= head;

    for (; elements >= 4;) {
        const size_t block = elements < fastBlock ? elements & ~size_t{3} : fastBlock;
        sum = sumLanes(src, block, sum);
        src += block * 4, elements -= block;
    }
    return sumSingly(src, elements, sum);
}

}
}
