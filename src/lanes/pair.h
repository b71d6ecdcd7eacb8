// Two vectors that work as one of twice the width.
#pragma once

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Half>
struct Pair {
    Half low;
    Half high;

    static Pair load(const uint8_t* from) { return {Half::load(from), Half::load(from + sizeof(Half))}; }
    static Pair loadAligned(const uint8_t* from)
    {
        return {Half::loadAligned(from), Half::loadAligned(from + sizeof(Half))};
    }
    static Pair broadcast(int16_t value) { return {Half::broadcast(value), Half::broadcast(value)}; }
    void store(uint8_t* to) const
    {
        low.store(to);
        high.store(to + sizeof(Half));
    }
};

template <typename Half>
inline Pair<Half> operator+(Pair<Half> a, Pair<Half> b)
{
    return {a.low + b.low, a.high + b.high};
}

template <typename Half>
inline Pair<Half> operator-(Pair<Half> a, Pair<Half> b)
{
    return {a.low - b.low, a.high - b.high};
}

template <int bits, typename Half>
inline Pair<Half> shiftedRight(Pair<Half> a)
{
    return {shiftedRight<bits>(a.low), shiftedRight<bits>(a.high)};
}

}
}
