// The lowpass filter in MMX registers.
#pragma once

#include "frame/mmx_state.h"
#include "lanes/pixel_words4.h"

namespace rux::RUX_LEVEL {
namespace {

using Words = SaturatingWords4;

}
}

#include "filter/lowpass_lanes.h"

namespace rux::RUX_LEVEL {
namespace {

template <int size>
[[gnu::noinline]] void filterRowsInState(const MaskedImages& images, uint16_t* columns)
{
    const MmxState state;
    filterRows<size>(images, columns);
}

}
}
