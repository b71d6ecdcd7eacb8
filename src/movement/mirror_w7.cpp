// Mirroring, 16 bytes at a time.
#include "lanes/sixteen_bytes.h"
#include "movement/mirror_lanes.h"

namespace rux::w7 {
namespace {

inline SixteenBytes reverseWords(SixteenBytes a)
{
    constexpr int backward = _MM_SHUFFLE(0, 1, 2, 3);
    const __m128i halves = _mm_shufflehi_epi16(_mm_shufflelo_epi16(a.value, backward), backward);
    return {_mm_shuffle_epi32(halves, _MM_SHUFFLE(1, 0, 3, 2))};
}

inline SixteenBytes reverseDoublewords(SixteenBytes a)
{
    return {_mm_shuffle_epi32(a.value, _MM_SHUFFLE(0, 1, 2, 3))};
}

inline SixteenBytes reverseBytes(SixteenBytes a)
{
    return reverseWords({_mm_or_si128(_mm_slli_epi16(a.value, 8), _mm_srli_epi16(a.value, 8))});
}

template <typename Pixel>
void exchange(uint8_t* a, uint8_t* b, size_t pixels)
{
    exchangeLanes<SixteenBytes>(Pixel(), a, b, pixels);
}

template <typename Pixel>
void exchangeReversed(uint8_t* a, uint8_t* b, size_t pixels)
{
    exchangeReversedLanes<SixteenBytes>(Pixel(), a, b, pixels);
}

}
}
