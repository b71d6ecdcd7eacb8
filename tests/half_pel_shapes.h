// Modes and blocks of half-pel operations that read exactly what the mode names.
#pragma once

#include "ruxlib.h"
#include "support/sweep.h"

namespace rux::test {

inline constexpr int32_t halfPelModes[] = {mcFullPel, mcHalfVert, mcHalfHorz, mcHalfBoth};

// One of the four, at times with other bits set.
inline int32_t halfPelMode(Random& random)
{
    const int32_t mode = halfPelModes[random.below(4)];
    if (!random.oneIn(3)) return mode;
    return mode | (static_cast<int32_t>(random.next()) & ~mcHalfBoth);
}

// The samples that a mode reads.
inline Shape halfPelShape(int width, int height, int32_t mode)
{
    return Shape{width + (mode & mcHalfHorz ? 1 : 0), height + (mode & mcHalfVert ? 1 : 0)};
}

// An image at the case's stride or upside down.
template <class T>
Image<T> blockOf(Case& c, const Shape& shape, const Fill<T>& contents = mixture<T>)
{
    const int row = shape.width * static_cast<int>(sizeof(T));
    const int apart = c.random.oneIn(3) ? 0 : c.random.between(1, 40);
    return c.random.oneIn(3) ? c.image<T>(shape.withStep(-row - apart), contents) : c.image<T>(shape, contents);
}

}
