// The copy of a vector in 8-byte MMX moves.
#pragma once

#include "movement/run_copy_mmx.h"

namespace rux::m6 {
namespace {

void copyVector(const uint8_t* src, uint8_t* dst, size_t bytes)
{
    copyBytes(src, dst, bytes);
}

}
}
