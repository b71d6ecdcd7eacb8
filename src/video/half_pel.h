// Half-pel modes and what they read.
#pragma once

#include <stddef.h>

#include "frame/level.h"

namespace rux::RUX_LEVEL {
namespace {

struct Reference {
    const uint8_t* samples;
    ptrdiff_t stride;
};

// A half-pel mode's bits 2 and 3 as an index: full-pel, vertical, horizontal, both.
constexpr int modeIndex(ruxHalfPelMode mode)
{
    return (mode >> 2) & 3;
}

}
}
