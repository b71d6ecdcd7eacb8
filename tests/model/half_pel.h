// Samples at half-pel places.
#pragma once

#include "model/memory.h"
#include "ruxlib/video.h"

namespace rux::model {

// The samples around a half-pel place; those that the mode does not name are not read, and 0.
struct Neighbours {
    int a, b, c, d;
};

// The row below stands `below` bytes further on: the stride, as a rule.
inline Neighbours neighbours(const uint8_t* src, int32_t step, int32_t below, ruxHalfPelMode mode, int x, int y)
{
    const auto sample = [&](int right, int down) -> int {
        const bool named = (!right || mode & mcHalfHorz) && (!down || mode & mcHalfVert);
        return named ? *advance(at(src, step, x + right, y), down * below) : 0;
    };
    return {sample(0, 0), sample(1, 0), sample(0, 1), sample(1, 1)};
}

inline Neighbours neighbours(const uint8_t* src, int32_t step, ruxHalfPelMode mode, int x, int y)
{
    return neighbours(src, step, step, mode, x, y);
}

// Division rounds toward zero: this matters for a roundControl of 2 alone.
inline int exact(const Neighbours& s, ruxHalfPelMode mode, int r)
{
    switch (mode & mcHalfBoth) {
    case mcFullPel: return s.a;
    case mcHalfHorz: return (s.a + s.b + 1 - r) / 2;
    case mcHalfVert: return (s.a + s.c + 1 - r) / 2;
    default: return (s.a + s.b + s.c + s.d + 2 - r) / 4;
    }
}

}
