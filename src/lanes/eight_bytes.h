// Eight bytes in an MMX register.
#pragma once

#include <mmintrin.h>

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

struct EightBytes {
    static constexpr size_t size = 8;
    __m64 value;

    static EightBytes load(const uint8_t* from) { return {RUX_LEVEL::load<__m64>(from)}; }
    static EightBytes loadAligned(const uint8_t* from) { return load(from); }
    void store(uint8_t* to) const { RUX_LEVEL::store(to, value); }
    void storeAligned(uint8_t* to) const { store(to); }

    // The first 1, 2 or 4 bytes in one move; the other bytes of the lane are 0.
    template <size_t bytes>
    static EightBytes loadFirst(const uint8_t* from)
    {
        return {_mm_cvtsi32_si64(static_cast<int>(RUX_LEVEL::load<UnsignedOf<bytes>>(from)))};
    }
    template <size_t bytes>
    void storeFirst(uint8_t* to) const
    {
        RUX_LEVEL::store(to, static_cast<UnsignedOf<bytes>>(_mm_cvtsi64_si32(value)));
    }
};

inline EightBytes operator&(EightBytes a, EightBytes b)
{
    return {_mm_and_si64(a.value, b.value)};
}

inline EightBytes operator|(EightBytes a, EightBytes b)
{
    return {_mm_or_si64(a.value, b.value)};
}

inline EightBytes operator^(EightBytes a, EightBytes b)
{
    return {_mm_xor_si64(a.value, b.value)};
}

// a - b in each byte, and 0 where b is above a.
inline EightBytes subtractSaturated(EightBytes a, EightBytes b)
{
    return {_mm_subs_pu8(a.value, b.value)};
}

}
}
