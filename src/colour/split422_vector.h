// Packed 4:2:2 in vectors: as words, a pair is (Cb << 8 | Y0, Cr << 8 | Y1).
//
// The low bytes of the words are luma, the high bytes chroma; the low and high bytes of the chroma words are Cb and Cr.
// A block is four vectors of packed bytes, two of luma and one of each chroma. Moves gives the access to the packed row
// and the luma row.
#pragma once

#include "colour/split422_scalar.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Words>
struct WordPair {
    Words low, high;
};

// The low bytes of four words, and their high bytes; a byte in a word saturates to itself.
template <typename Words>
inline WordPair<Words> separateBytes(Words a, Words b)
{
    const Words lowBytes = Words::broadcast(0xFF);
    return {packBytes(a & lowBytes, b & lowBytes),
            packBytes(shiftedRightUnsigned<8>(a), shiftedRightUnsigned<8>(b))};
}

template <typename Words, typename Moves>
inline void splitBlock(const uint8_t* packed, SplitRow planes)
{
    constexpr size_t size = sizeof(Words);
    const WordPair<Words> first = separateBytes<Words>(Moves::load(packed), Moves::load(packed + size));
    const WordPair<Words> second = separateBytes<Words>(Moves::load(packed + 2 * size), Moves::load(packed + 3 * size));
    const WordPair<Words> chroma = separateBytes(first.high, second.high);
    Moves::store(first.low, planes.luma);
    Moves::store(second.low, planes.luma + size);
    chroma.low.store(planes.cb);
    chroma.high.store(planes.cr);
}

template <typename Words, typename Moves>
inline void joinBlock(JoinRow planes, uint8_t* packed)
{
    constexpr size_t size = sizeof(Words);
    const Words firstLuma = Moves::load(planes.luma);
    const Words secondLuma = Moves::load(planes.luma + size);
    const Words cb = Words::load(planes.cb);
    const Words cr = Words::load(planes.cr);
    const Words firstChroma = interleaveLowBytes(cb, cr);
    const Words secondChroma = interleaveHighBytes(cb, cr);
    Moves::store(interleaveLowBytes(firstLuma, firstChroma), packed);
    Moves::store(interleaveHighBytes(firstLuma, firstChroma), packed + size);
    Moves::store(interleaveLowBytes(secondLuma, secondChroma), packed + 2 * size);
    Moves::store(interleaveHighBytes(secondLuma, secondChroma), packed + 3 * size);
}

// How many pairs whole blocks have moved.
template <typename Words, typename Moves>
inline size_t splitBlocks(const uint8_t* packed, SplitRow planes, size_t pairs)
{
    size_t pair = 0;
    for (; pairs - pair >= sizeof(Words); pair += sizeof(Words))
        splitBlock<Words, Moves>(packed + pair * 4, planes.at(pair));
    return pair;
}

template <typename Words, typename Moves>
inline size_t joinBlocks(JoinRow planes, uint8_t* packed, size_t pairs)
{
    size_t pair = 0;
    for (; pairs - pair >= sizeof(Words); pair += sizeof(Words))
        joinBlock<Words, Moves>(planes.at(pair), packed + pair * 4);
    return pair;
}

}
}
