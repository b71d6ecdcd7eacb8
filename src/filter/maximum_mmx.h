// The maximum filter in MMX registers, after the level's larger8.
#pragma once

#include "frame/mmx_state.h"
#include "lanes/eight_bytes.h"

namespace rux::RUX_LEVEL {
namespace {

using Lane = EightBytes;

}
}

#include "filter/maximum_lanes.h"

namespace rux::RUX_LEVEL {
namespace {

[[gnu::noinline]] void copyImage(const MaximumImages& images)
{
    const MmxState state;
    copyImageInLanes(images);
}

[[gnu::noinline]] void filterRowsInState(const MaximumImages& images, size_t maskWidth, int32_t maskHeight,
                                         const MaximumWork& work)
{
    const MmxState state;
    filterRows(images, maskWidth, maskHeight, work);
}

}
}
