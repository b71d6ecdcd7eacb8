// Mirroring in MMX registers, with the word shuffle that SSE adds.
#include <xmmintrin.h>

#include "frame/mmx_state.h"
#include "lanes/eight_bytes.h"
#include "movement/mirror_lanes.h"

namespace rux::a6 {
namespace {

inline EightBytes reverseWords(EightBytes a)
{
    return {_mm_shuffle_pi16(a.value, _MM_SHUFFLE(0, 1, 2, 3))};
}

inline EightBytes reverseDoublewords(EightBytes a)
{
    return {_mm_shuffle_pi16(a.value, _MM_SHUFFLE(1, 0, 3, 2))};
}

inline EightBytes reverseBytes(EightBytes a)
{
    return reverseWords({_mm_or_si64(_mm_slli_pi16(a.value, 8), _mm_srli_pi16(a.value, 8))});
}

template <typename Pixel>
[[gnu::noinline]] void exchange(uint8_t* a, uint8_t* b, size_t pixels)
{
    const MmxState state;
    exchangeLanes<EightBytes>(Pixel(), a, b, pixels);
}

template <typename Pixel>
[[gnu::noinline]] void exchangeReversed(uint8_t* a, uint8_t* b, size_t pixels)
{
    const MmxState state;
    exchangeReversedLanes<EightBytes>(Pixel(), a, b, pixels);
}

}
}
