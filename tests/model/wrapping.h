// A 32-bit integer whose sums, differences, products and left shifts wrap, and whose right shifts are arithmetic.
#pragma once

#include <cstdint>

namespace rux::model {

class Wrapping {
public:
    constexpr Wrapping(int32_t value = 0) : bits(static_cast<uint32_t>(value)) {}

    constexpr int32_t value() const { return static_cast<int32_t>(bits); }
    constexpr int16_t low16() const { return static_cast<int16_t>(static_cast<uint16_t>(bits)); }

    friend constexpr Wrapping operator+(Wrapping a, Wrapping b) { return of(a.bits + b.bits); }
    friend constexpr Wrapping operator-(Wrapping a, Wrapping b) { return of(a.bits - b.bits); }
    friend constexpr Wrapping operator*(Wrapping a, Wrapping b) { return of(a.bits * b.bits); }
    friend constexpr Wrapping operator<<(Wrapping a, int count) { return of(a.bits << count); }
    friend constexpr Wrapping operator>>(Wrapping a, int count) { return a.value() >> count; }

private:
    static constexpr Wrapping of(uint32_t bits) { return static_cast<int32_t>(bits); }

    uint32_t bits;
};

}
