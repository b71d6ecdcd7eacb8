// Medians in MMX registers, 8 pixels at a time; minimum and maximum are composed of saturating bytes.
#include "lanes/eight_byte_elements_m6.h"

#include "filter/median_lanes.h"
#include "frame/mmx_state.h"

namespace rux::m6 {
namespace {

template <Window window>
[[gnu::noinline]] void medianImage(const uint8_t* src, ptrdiff_t srcStep, uint8_t* dst, ptrdiff_t dstStep,
                                   ruxiSize roiSize)
{
    const MmxState state;
    const auto put = [](uint8_t* to, EightBytes value) { value.store(to); };
    medianRows<window, EightBytes>(put, src, srcStep, dst, dstStep, roiSize);
}

}
}
