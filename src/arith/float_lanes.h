// Loads, stores and constants of float vectors that the SSE levels share.
#pragma once

#include <xmmintrin.h>

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

inline __m128 loadFour(const uint8_t* from)
{
    return _mm_loadu_ps(reinterpret_cast<const float*>(from));
}

// Element by element through the vector unit: a signalling NaN passes unchanged, and no stack precision matters.
inline __m128 loadOne(const uint8_t* from)
{
    return _mm_load_ss(reinterpret_cast<const float*>(from));
}

inline void storeOne(uint8_t* to, __m128 value)
{
    _mm_store_ss(reinterpret_cast<float*>(to), value);
}

struct UnalignedFloats {
    static __m128 load(const uint8_t* from) { return _mm_loadu_ps(reinterpret_cast<const float*>(from)); }
    static void store(uint8_t* to, __m128 value) { _mm_storeu_ps(reinterpret_cast<float*>(to), value); }
};

struct AlignedFloats {
    static __m128 load(const uint8_t* from) { return _mm_load_ps(reinterpret_cast<const float*>(from)); }
    static void store(uint8_t* to, __m128 value) { _mm_store_ps(reinterpret_cast<float*>(to), value); }
};

struct StreamedFloats {
    static __m128 load(const uint8_t* from) { return _mm_load_ps(reinterpret_cast<const float*>(from)); }
    static void store(uint8_t* to, __m128 value) { _mm_stream_ps(reinterpret_cast<float*>(to), value); }
};

inline __m128 floatsFromBits(uint32_t a, uint32_t b, uint32_t c, uint32_t d)
{
    const uint32_t bits[4] = {a, b, c, d};
    return loadFour(reinterpret_cast<const uint8_t*>(bits));
}

inline __m128 floatFromBits(uint32_t bits)
{
    return loadOne(reinterpret_cast<const uint8_t*>(&bits));
}

}
}
