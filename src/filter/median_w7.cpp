// Medians in SSE2 registers, 16 pixels at a time, past the caches.
#include "lanes/sixteen_byte_elements.h"

#include "filter/median_lanes.h"

namespace rux::w7 {
namespace {

template <Window window>
void medianImage(const uint8_t* src, ptrdiff_t srcStep, uint8_t* dst, ptrdiff_t dstStep, ruxiSize roiSize)
{
    const auto put = [](uint8_t* to, SixteenBytes value) {
        _mm_stream_si128(reinterpret_cast<__m128i*>(to), value.value);
    };
    medianRows<window, SixteenBytes>(put, src, srcStep, dst, dstStep, roiSize);
    _mm_sfence();
}

}
}
