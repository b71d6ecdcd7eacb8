// What SSE adds to the words of pixels in MMX registers.
#pragma once

#include <xmmintrin.h>

#include "lanes/pixel_words4.h"

namespace rux::RUX_LEVEL {
namespace {

inline SaturatingWords4 highProductUnsigned(SaturatingWords4 a, uint16_t factor)
{
    return {_mm_mulhi_pu16(a.value, _mm_set1_pi16(static_cast<int16_t>(factor)))};
}

struct StreamingStores {
    static void put(SaturatingWords4 a, uint8_t* to) { _mm_stream_pi(reinterpret_cast<__m64*>(to), a.value); }
};

}
}
