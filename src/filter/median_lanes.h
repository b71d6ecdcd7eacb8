// Median filters in lanes of the level's width.
//
// A row is cut so: where the destination stands off a boundary, one lane at any address, which lies over the next;
// blocks on the destination's boundaries; then pieces of one lane and of 8, 4, 2 and 1 pixels. No load reads a pixel
// that no window of its own pixels holds.
#pragma once

#include "filter/median.h"
#include "filter/median_networks.h"

namespace rux::RUX_LEVEL {
namespace {

// How the pixels of a block and those above and below them are read. The pixels beside a block are never on a boundary.
template <typename Lane>
struct AnyAddress {
    static Lane above(const uint8_t* from) { return Lane::load(from); }
    static Lane beside(const uint8_t* from) { return Lane::load(from); }
};

template <typename Lane>
struct OnBoundary {
    static Lane above(const uint8_t* from) { return Lane::loadAligned(from); }
    static Lane beside(const uint8_t* from) { return Lane::load(from); }
};

template <typename Lane, size_t bytes>
struct Piece {
    static Lane above(const uint8_t* from) { return Lane::template loadFirst<bytes>(from); }
    static Lane beside(const uint8_t* from) { return Lane::template loadFirst<bytes>(from); }
};

template <Window window, typename Source>
inline auto medianAt(const uint8_t* at, ptrdiff_t step)
{
    const auto left = Source::beside(at - 1);
    const auto centre = Source::above(at);
    const auto right = Source::beside(at + 1);
    if constexpr (window == Window::row3) return median3(left, right, centre);
    if constexpr (window == Window::row5)
        return median5(left, right, Source::beside(at - 2), Source::beside(at + 2), centre);
    if constexpr (window == Window::cross3)
        return median5(left, right, Source::above(at - step), Source::above(at + step), centre);
    if constexpr (window == Window::cross5)
        return median9(
            SortedTriple(Source::above(at - 2 * step), Source::above(at - step), Source::beside(at - 2)),
            SortedTriple(left, centre, right),
            SortedTriple(Source::beside(at + 2), Source::above(at + step), Source::above(at + 2 * step)));
}

constexpr bool isRow(Window window)
{
    return window == Window::row3 || window == Window::row5;
}

template <Window window, typename Source, typename Put>
inline size_t medianBlocks(Put put, const uint8_t* src, ptrdiff_t step, uint8_t* dst, size_t x, size_t width)
{
    constexpr size_t size = sizeof(Source::above(src));
    if constexpr (isRow(window))
        for (; x + 2 * size <= width; x += 2 * size) {
            put(dst + x, medianAt<window, Source>(src + x, step));
            put(dst + x + size, medianAt<window, Source>(src + x + size, step));
        }
    else
        for (; x + size <= width; x += size) put(dst + x, medianAt<window, Source>(src + x, step));
    return x;
}

template <Window window, typename Lane, size_t bytes>
inline size_t medianPiece(const uint8_t* src, ptrdiff_t step, uint8_t* dst, size_t x, size_t width)
{
    if (((width - x) & bytes) == 0) return x;
    medianAt<window, Piece<Lane, bytes>>(src + x, step).template storeFirst<bytes>(dst + x);
    return x + bytes;
}

// put(to, lane) writes a lane that stands on a boundary.
template <Window window, typename Lane, typename Put>
inline void medianRow(Put put, const uint8_t* src, ptrdiff_t step, uint8_t* dst, size_t width)
{
    constexpr size_t size = Lane::size;
    using Any = AnyAddress<Lane>;
    using Aligned = OnBoundary<Lane>;
    size_t x = 0;
    if (width >= size) {
        x = bytesToBoundary(dst, size);
        if (x != 0) medianAt<window, Any>(src, step).store(dst);
        if (isAligned(src + x, size) && (isRow(window) || step % static_cast<ptrdiff_t>(size) == 0))
            x = medianBlocks<window, Aligned>(put, src, step, dst, x, width);
        else
            x = medianBlocks<window, Any>(put, src, step, dst, x, width);
        if (width - x >= size) {
            const Lane left = medianAt<window, Any>(src + x, step);
            if constexpr (size == 8) put(dst + x, left);   // half a pair, and a whole block of that level
            else left.store(dst + x);
            x += size;
        }
    }
    if constexpr (size == 16) x = medianPiece<window, Lane, 8>(src, step, dst, x, width);
    x = medianPiece<window, Lane, 4>(src, step, dst, x, width);
    x = medianPiece<window, Lane, 2>(src, step, dst, x, width);
    medianPiece<window, Lane, 1>(src, step, dst, x, width);
}

template <Window window, typename Lane, typename Put>
inline void medianRows(Put put, const uint8_t* src, ptrdiff_t srcStep, uint8_t* dst, ptrdiff_t dstStep,
                       ruxiSize roiSize)
{
    for (int32_t y = 0; y < roiSize.height; ++y, src += srcStep, dst += dstStep)
        medianRow<window, Lane>(put, src, srcStep, dst, static_cast<size_t>(roiSize.width));
}

}
}
