// Sobel derivatives in MMX registers, 8 pixels at a time, the first and the last pixels singly.
#include "lanes/eight_byte_elements.h"

#include "filter/sobel_accumulate.h"
#include "filter/sobel_lanes.h"
#include "frame/mmx_state.h"
#include "lanes/saturating_words4.h"

namespace rux::m6 {
namespace {

// Saturating words serve: no sum leaves their range.
template <typename Kernel, typename Step>
[[gnu::noinline]] void accumulateRow(const uint8_t* src, ResultRows to, int32_t width)
{
    const MmxState state;
    accumulatePixel<Kernel, Step>(src, to, 0, width);
    int32_t x = 1;
    for (; width - 1 - x >= 8; x += 8) {
        const auto words = alongBlock<EightBytes>(Kernel(), src + x);
        Step::apply(SaturatingWords4{words.lower().value}, to.at(x));
        Step::apply(SaturatingWords4{words.upper().value}, to.at(x + 4));
    }
    for (; x < width; ++x) accumulatePixel<Kernel, Step>(src, to, x, width);
}

}
}
