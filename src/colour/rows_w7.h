// What w7 holds while it converts rows: nothing.
#pragma once

#include "colour/clamp_compare.h"
#include "lanes/pixel_words8.h"

namespace rux::RUX_LEVEL {
namespace {

using Words = SaturatingWords8;

struct RowState {
    RowState() {}
    ~RowState() {}
};

using StreamedRowState = RowState;

// The processor's own prefetch does better.
inline void prefetch(const uint8_t*, size_t = 0)
{
}

}
}
