// What a6 holds while it converts rows: the MMX state, and a store fence behind rows written past the caches.
#pragma once

#include "colour/clamp_compare.h"
#include "frame/mmx_state.h"
#include "lanes/pixel_words4_sse.h"

namespace rux::RUX_LEVEL {
namespace {

using Words = SaturatingWords4;
using RowState = MmxState;

class StreamedRowState : MmxState {
public:
    ~StreamedRowState() { _mm_sfence(); }
};

// Asks for bytes of blocks to come.
inline void prefetch(const uint8_t* from, size_t distance = 32)
{
    _mm_prefetch(reinterpret_cast<const char*>(from) + distance, _MM_HINT_T0);
}

}
}
