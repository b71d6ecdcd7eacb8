// The copy of a vector in 16-byte moves; a long one goes past the caches.
#pragma once

#include "movement/run_copy_w7.h"

namespace rux::w7 {
namespace {

// From here on neither vector would be found in the caches of a processor's core.
constexpr size_t streamingBytes = 0x100000;

void copyVector(const uint8_t* src, uint8_t* dst, size_t bytes)
{
    copyBytes(src, dst, bytes, bytes > streamingBytes);
}

}
}
