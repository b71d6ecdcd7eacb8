// Sixteen bytes in an SSE2 register.
#pragma once

#include <emmintrin.h>

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

struct SixteenBytes {
    static constexpr size_t size = 16;
    __m128i value;

    static SixteenBytes load(const uint8_t* from)
    {
        return {_mm_loadu_si128(reinterpret_cast<const __m128i*>(from))};
    }
    static SixteenBytes loadAligned(const uint8_t* from)
    {
        return {_mm_load_si128(reinterpret_cast<const __m128i*>(from))};
    }
    void store(uint8_t* to) const { _mm_storeu_si128(reinterpret_cast<__m128i*>(to), value); }
    void storeAligned(uint8_t* to) const { _mm_store_si128(reinterpret_cast<__m128i*>(to), value); }
};

inline SixteenBytes operator&(SixteenBytes a, SixteenBytes b)
{
    return {_mm_and_si128(a.value, b.value)};
}

inline SixteenBytes operator|(SixteenBytes a, SixteenBytes b)
{
    return {_mm_or_si128(a.value, b.value)};
}

inline SixteenBytes operator^(SixteenBytes a, SixteenBytes b)
{
    return {_mm_xor_si128(a.value, b.value)};
}

// a - b in each byte, and 0 where b is above a.
inline SixteenBytes subtractSaturated(SixteenBytes a, SixteenBytes b)
{
    return {_mm_subs_epu8(a.value, b.value)};
}

}
}
