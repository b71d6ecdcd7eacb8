// Thresholds 16 bytes at a time; the floats of one channel go past the caches where they can.
#include "lanes/sixteen_byte_elements.h"

#include "arith/threshold_floats.h"
#include "arith/threshold_integers.h"

namespace rux::w7 {
namespace {

// Vectors from an offset on, blockSize bytes a turn; returns the offset that is left.
template <size_t blockSize, typename Pattern, typename Store>
inline size_t thresholdBlocks(const Pattern& pattern, const uint8_t* src, uint8_t* dst, size_t from, size_t bytes,
                              Store put)
{
    for (; bytes - from >= blockSize; from += blockSize)
        for (size_t at = from; at < from + blockSize; at += 16)
            put(dst + at, pattern.apply(FourFloats::load(src + at), 0));
    return from;
}

// Single elements up to the source's boundary, blocks, and the rest singly. Where both images stand on boundaries the
// blocks go past the caches, at any size.
template <size_t boundary, size_t blockSize, typename Pattern>
inline void thresholdFloatRow(const Pattern& pattern, const uint8_t* src, uint8_t* dst, size_t bytes)
{
    const auto singly = [&](size_t from, size_t to) {
        for (; from < to; from += 4) pattern.apply(FourFloats::loadOne(src + from), 0).storeOne(dst + from);
        return from;
    };
    size_t at = 0;
    if (isAligned(src, 4)) {
        const size_t head = bytesToBoundary(src, boundary);
        at = singly(0, head < bytes ? head : bytes);
    }
    if (isAligned(src + at, 16) && isAligned(dst + at, 16))
        at = thresholdBlocks<blockSize>(pattern, src, dst, at, bytes,
                                        [](uint8_t* to, FourFloats value) { value.storeStreaming(to); });
    else
        at = thresholdBlocks<blockSize>(pattern, src, dst, at, bytes,
                                        [](uint8_t* to, FourFloats value) { value.store(to); });
    singly(at, bytes);
}

template <size_t boundary, size_t blockSize, typename Pattern>
inline void thresholdFloatRows(const RowPairs& rows, const Pattern& pattern)
{
    const size_t bytes = static_cast<size_t>(rows.roiSize.width) * sizeof(float);
    rows.forEach([&](const uint8_t* src, uint8_t* dst) {
        thresholdFloatRow<boundary, blockSize>(pattern, src, dst, bytes);
    });
    _mm_sfence();
}

template <typename Element, Layout layout>
void thresholdRows(const RowPairs& rows, const Band<Element>* bands)
{
    if constexpr (sizeof(Element) != sizeof(float))
        thresholdIntegers<SixteenBytes, Element, layout>(rows, bands);
    else if constexpr (layout != Layout::C1)
        thresholdFloats<layout>(rows, bands);
    else
        thresholdFloatRows<16, 16>(rows, FloatPattern<Layout::C1>(bands));
}

void thresholdRowsBelow(const RowPairs& rows, uint32_t threshold, uint32_t value)
{
    thresholdFloatRows<32, 32>(rows, LowerFloatPattern(threshold, value));
}

}
}
