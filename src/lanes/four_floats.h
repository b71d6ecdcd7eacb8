// Four floats in an SSE register.
#pragma once

#include <xmmintrin.h>

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

// A float off its natural boundary.
typedef float FloatAnywhere __attribute__((aligned(1), may_alias));

struct FourFloats {
    static constexpr size_t size = 16;
    __m128 value;

    static FourFloats load(const uint8_t* from) { return {_mm_loadu_ps(reinterpret_cast<const float*>(from))}; }
    static FourFloats loadAligned(const uint8_t* from)
    {
        return {_mm_load_ps(reinterpret_cast<const float*>(from))};
    }

    // One float, and zeros above it.
    static FourFloats loadOne(const uint8_t* from)
    {
        return {_mm_set_ss(*reinterpret_cast<const FloatAnywhere*>(from))};
    }

    void store(uint8_t* to) const { _mm_storeu_ps(reinterpret_cast<float*>(to), value); }
    void storeStreaming(uint8_t* to) const { _mm_stream_ps(reinterpret_cast<float*>(to), value); }
    void storeOne(uint8_t* to) const { *reinterpret_cast<FloatAnywhere*>(to) = _mm_cvtss_f32(value); }
    void storeThree(uint8_t* to) const
    {
        _mm_storel_pi(reinterpret_cast<__m64*>(to), value);
        FourFloats{_mm_movehl_ps(value, value)}.storeOne(to + 8);
    }
};

inline FourFloats operator&(FourFloats a, FourFloats b)
{
    return {_mm_and_ps(a.value, b.value)};
}

inline FourFloats operator|(FourFloats a, FourFloats b)
{
    return {_mm_or_ps(a.value, b.value)};
}

inline FourFloats andNot(FourFloats mask, FourFloats a)
{
    return {_mm_andnot_ps(mask.value, a.value)};
}

}
}
