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

    // The first 1, 2, 4 or 8 bytes in one move; the other bytes of the lane are 0.
    template <size_t bytes>
    static SixteenBytes loadFirst(const uint8_t* from)
    {
        if constexpr (bytes == 8)
            return {_mm_loadl_epi64(reinterpret_cast<const __m128i*>(from))};
        else
            return {_mm_cvtsi32_si128(static_cast<int>(RUX_LEVEL::load<UnsignedOf<bytes>>(from)))};
    }
    template <size_t bytes>
    void storeFirst(uint8_t* to) const
    {
        if constexpr (bytes == 8)
            _mm_storel_epi64(reinterpret_cast<__m128i*>(to), value);
        else
            RUX_LEVEL::store(to, static_cast<UnsignedOf<bytes>>(_mm_cvtsi128_si32(value)));
    }
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
