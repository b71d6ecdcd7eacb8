// What a6 holds while it converts rows: the MMX state, and a store fence behind rows written past the caches.
#pragma once

#include "colour/clamp_compare.h"
#include "frame/mmx_state.h"
#include "lanes/pixel_words4.h"

namespace rux::RUX_LEVEL {
namespace {

using Words = SaturatingWords4;
using RowState = MmxState;

class StreamedRowState : MmxState {
public:
    ~StreamedRowState() { _mm_sfence(); }
};

constexpr size_t readAhead = 32;

// How far the first bytes of a coming block are asked for in advance.
template <size_t distance = readAhead>
inline void prefetch(const uint8_t* from)
{
    _mm_prefetch(reinterpret_cast<const char*>(from) + distance, _MM_HINT_T0);
}

}
}
