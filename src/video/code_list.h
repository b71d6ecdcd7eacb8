// Source lists of variable-length codes, which a host writes as words.
//
// Word 1 counts the widths that follow; then stand groups for the code lengths from 1 up, each a count and its records,
// closed by a negative count.
#pragma once

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

// A word of the host's list, which may stand at any address.
inline int32_t wordOf(const int32_t* list, ptrdiff_t index = 0)
{
    return load<int32_t>(list + index);
}

// Runs that are none.
constexpr int32_t endOfBlockRun = 254;
constexpr int32_t escapeRun = 255;

}
}
