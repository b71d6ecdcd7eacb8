// Interleaving in tiles of four frames.
#pragma once

#include "frame/mmx_state.h"
#include "signal/interleave_blocks.h"

namespace rux::RUX_LEVEL {
namespace {

// Four words of each of two channels as two pairs and two pairs.
struct TwoOfFour {
    __m64 low;
    __m64 high;

    TwoOfFour(__m64 a, __m64 b) : low(_mm_unpacklo_pi16(a, b)), high(_mm_unpackhi_pi16(a, b)) {}
};

inline void storeHalves(uint8_t* to, size_t distance, __m64 value)
{
    store(to, _mm_cvtsi64_si32(value));
    store(to + distance, _mm_cvtsi64_si32(_mm_srli_si64(value, 32)));
}

inline __m64 loadHalf(const uint8_t* from)
{
    return _mm_cvtsi32_si64(load<int32_t>(from));
}

template <size_t width>
inline void interleaveTile(const SourceChannels& src, size_t channel, size_t offset, uint8_t* dst, size_t frameBytes)
{
    const TwoOfFour ab(load<__m64>(src[channel] + offset), load<__m64>(src[channel + 1] + offset));
    if (width == 2) {
        storeHalves(dst, frameBytes, ab.low);
        storeHalves(dst + 2 * frameBytes, frameBytes, ab.high);
        return;
    }
    const TwoOfFour cd(load<__m64>(src[channel + 2] + offset), load<__m64>(src[channel + 3] + offset));
    store(dst, _mm_unpacklo_pi32(ab.low, cd.low));
    store(dst + frameBytes, _mm_unpackhi_pi32(ab.low, cd.low));
    store(dst + 2 * frameBytes, _mm_unpacklo_pi32(ab.high, cd.high));
    store(dst + 3 * frameBytes, _mm_unpackhi_pi32(ab.high, cd.high));
}

template <size_t width>
inline void deinterleaveTile(const uint8_t* src, size_t frameBytes, const DestinationChannels& dst, size_t channel,
                             size_t offset)
{
    if (width == 2) {
        const __m64 early = _mm_unpacklo_pi16(loadHalf(src), loadHalf(src + frameBytes));
        const __m64 late = _mm_unpacklo_pi16(loadHalf(src + 2 * frameBytes), loadHalf(src + 3 * frameBytes));
        store(dst[channel] + offset, _mm_unpacklo_pi32(early, late));
        store(dst[channel + 1] + offset, _mm_unpackhi_pi32(early, late));
        return;
    }
    const TwoOfFour early(load<__m64>(src), load<__m64>(src + frameBytes));
    const TwoOfFour late(load<__m64>(src + 2 * frameBytes), load<__m64>(src + 3 * frameBytes));
    store(dst[channel] + offset, _mm_unpacklo_pi32(early.low, late.low));
    store(dst[channel + 1] + offset, _mm_unpackhi_pi32(early.low, late.low));
    store(dst[channel + 2] + offset, _mm_unpacklo_pi32(early.high, late.high));
    store(dst[channel + 3] + offset, _mm_unpackhi_pi32(early.high, late.high));
}

inline void interleaveTwo(const uint8_t* first, const uint8_t* second, uint8_t* dst, size_t frames)
{
    for (; frames > 0; frames -= 4, first += 8, second += 8, dst += 16) {
        const TwoOfFour pairs(load<__m64>(first), load<__m64>(second));
        store(dst, pairs.low);
        store(dst + 8, pairs.high);
    }
}

// The halves of each 32 bits, widened with their sign: packing them back saturates nothing.
inline void deinterleaveTwo(const uint8_t* src, uint8_t* first, uint8_t* second, size_t frames)
{
    for (; frames > 0; frames -= 4, src += 16, first += 8, second += 8) {
        const __m64 early = load<__m64>(src);
        const __m64 late = load<__m64>(src + 8);
        store(first, _mm_packs_pi32(_mm_srai_pi32(_mm_slli_pi32(early, 16), 16),
                                    _mm_srai_pi32(_mm_slli_pi32(late, 16), 16)));
        store(second, _mm_packs_pi32(_mm_srai_pi32(early, 16), _mm_srai_pi32(late, 16)));
    }
}

[[gnu::noinline]] void interleaveWhole(const SourceChannels& src, uint8_t* dst, size_t frames)
{
    const MmxState state;
    interleaveBlocks(src, dst, frames);
}

[[gnu::noinline]] void deinterleaveWhole(const uint8_t* src, const DestinationChannels& dst, size_t frames)
{
    const MmxState state;
    deinterleaveBlocks(src, dst, frames);
}

}
}
