// Medians in MMX registers with the byte minimum and maximum of SSE, 8 pixels at a time, past the caches.
#include "lanes/eight_byte_elements_a6.h"

#include "filter/median_lanes.h"
#include "frame/mmx_state.h"

namespace rux::a6 {
namespace {

template <Window window>
[[gnu::noinline]] void medianImage(const uint8_t* src, ptrdiff_t srcStep, uint8_t* dst, ptrdiff_t dstStep,
                                   ruxiSize roiSize)
{
    const MmxState state;
    const auto put = [](uint8_t* to, EightBytes value) { _mm_stream_pi(reinterpret_cast<__m64*>(to), value.value); };
    medianRows<window, EightBytes>(put, src, srcStep, dst, dstStep, roiSize);
    _mm_sfence();
}

}
}
