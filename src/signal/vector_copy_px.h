// The copy of a vector in plain moves: four bytes at a time, the rest singly.
#pragma once

#include "frame/bytes.h"

namespace rux::px {
namespace {

void copyVector(const uint8_t* src, uint8_t* dst, size_t bytes)
{
    size_t at = 0;
    for (; bytes - at >= 4; at += 4) store(dst + at, load<uint32_t>(src + at));
    for (; at < bytes; ++at) dst[at] = src[at];
}

}
}
