// What m6 holds while it converts rows: the MMX state, for it clamps all three components at once by saturation.
#pragma once

#include "colour/rgb_scalar.h"
#include "frame/mmx_state.h"
#include "lanes/pixel_words4.h"

namespace rux::RUX_LEVEL {
namespace {

using Words = SaturatingWords4;
using RowState = MmxState;
using StreamedRowState = RowState;

// Signed saturation to 16 bits and then unsigned to 8 is the clamp to 0..255 of any 32-bit number.
inline ClampedRgb clamped(Rgb pixel)
{
    const __m64 words = _mm_packs_pi32(_mm_set_pi32(pixel.green, pixel.red), _mm_cvtsi32_si64(pixel.blue));
    const uint32_t bytes = static_cast<uint32_t>(_mm_cvtsi64_si32(_mm_packs_pu16(words, words)));
    return {static_cast<uint8_t>(bytes), static_cast<uint8_t>(bytes >> 8), static_cast<uint8_t>(bytes >> 16)};
}

// MMX has no prefetch.
inline void prefetch(const uint8_t*, size_t = 0)
{
}

}
}
