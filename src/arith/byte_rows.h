// Two rows of bytes into a third, in lanes of the level's width.
//
// The first and the last lane of a row stand on any address and may lie over their neighbours. Both are computed before
// anything is written and stored after everything else: so dst may be one of the sources, and the loop between them
// runs on the destination's boundaries.
#pragma once

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

// How the loop loads its sources.
template <typename Lane>
struct AnyAddress {
    static Lane load(const uint8_t* from) { return Lane::load(from); }
};

template <typename Lane>
struct OnBoundary {
    static Lane load(const uint8_t* from) { return Lane::loadAligned(from); }
};

// From an offset at which the destination stands on a boundary up to the row's last whole lane.
template <typename Lane, typename Source, typename Combine>
inline void combineLanes(Combine combine, const uint8_t* src1, const uint8_t* src2, uint8_t* dst, size_t from,
                         size_t bytes)
{
    constexpr size_t size = Lane::size;
    size_t x = from;
    for (; x + 4 * size <= bytes; x += 4 * size) {
        const Lane a = combine(Source::load(src1 + x), Source::load(src2 + x));
        const Lane b = combine(Source::load(src1 + x + size), Source::load(src2 + x + size));
        const Lane c = combine(Source::load(src1 + x + 2 * size), Source::load(src2 + x + 2 * size));
        const Lane d = combine(Source::load(src1 + x + 3 * size), Source::load(src2 + x + 3 * size));
        a.storeAligned(dst + x);
        b.storeAligned(dst + x + size);
        c.storeAligned(dst + x + 2 * size);
        d.storeAligned(dst + x + 3 * size);
    }
    for (; x + size <= bytes; x += size)
        combine(Source::load(src1 + x), Source::load(src2 + x)).storeAligned(dst + x);
}

template <typename Lane, typename Source = AnyAddress<Lane>, typename Combine>
inline void combineByteRow(Combine combine, const uint8_t* src1, const uint8_t* src2, uint8_t* dst, size_t bytes)
{
    if (bytes < Lane::size) {
        for (size_t x = 0; x < bytes; ++x) dst[x] = combine(src1[x], src2[x]);
        return;
    }
    const size_t end = bytes - Lane::size;
    const Lane first = combine(Lane::load(src1), Lane::load(src2));
    const Lane last = combine(Lane::load(src1 + end), Lane::load(src2 + end));

    combineLanes<Lane, Source>(combine, src1, src2, dst, bytesToBoundary(dst, Lane::size), bytes);

    first.store(dst);
    last.store(dst + end);
}

}
}
