// Quantisation coefficient by coefficient. *count receives the raster index of the last level that is not zero.
//
// A level's TruncatedProduct(quantScale) gives trunc(units * (1 / quantScale) * weight), each step in its precision.
#pragma once

#include "video/forward_quantisation.h"

namespace rux::RUX_LEVEL {
namespace {

// |v| in 16 bits: -32768 stays.
inline int32_t magnitude(int32_t v)
{
    return static_cast<int16_t>(v < 0 ? -v : v);
}

inline int32_t clampedLevel(int32_t level)
{
    return level < -largestLevel ? -largestLevel : level > largestLevel ? largestLevel : level;
}

// Rounds t for a coefficient's sign s, 1 or -1: half up where it is positive, half down in size where it is negative.
struct IntraLevel {
    static constexpr int32_t unit = intraUnit;
    static int32_t of(int32_t t, int32_t s) { return (s * (t + s)) >> 1; }
};

struct NonIntraLevel {
    static constexpr int32_t unit = nonIntraUnit;
    static int32_t of(int32_t t, int32_t s) { return s * t; }
};

template <typename TruncatedProduct, typename Level>
inline void quantiseBlock(int first, uint8_t* coefficients, int32_t quantScale, const uint8_t* matrix, int32_t* count)
{
    const TruncatedProduct product(quantScale);
    int32_t last = 0;
    for (int k = first; k < 64; ++k) {
        const int32_t v = load<int16_t>(coefficients + 2 * k);
        const int32_t t = product(magnitude(v) * Level::unit, matrix + 4 * k);
        const int32_t level = clampedLevel(Level::of(t, v < 0 ? -1 : 1));
        store(coefficients + 2 * k, static_cast<int16_t>(level));
        if (level != 0) last = k;
    }
    store(count, last);
}

}
}
