// Blocks of RGB words, clamped and reduced to 16 bits a pixel.
#pragma once

#include "colour/packed16.h"
#include "colour/rgb_vector.h"

namespace rux::RUX_LEVEL {
namespace {

// The top bits of all bytes, shifted right within the byte.
template <int bits, int shift>
inline Words topBits(Words bytes)
{
    constexpr uint8_t mask = static_cast<uint8_t>(0xFF << (8 - bits));
    const Words kept = bytes & Words::broadcast(static_cast<int16_t>(mask * 0x0101));
    if constexpr (shift == 0) return kept;
    return shiftedRightUnsigned<shift>(kept);
}

// The low byte of a pixel takes the lower component and the high byte the upper; the green lies across both.
template <typename Stores, int greenBits, bool redOnTop>
inline void storeBlock(Packed16<greenBits, redOnTop>, RgbBlock block, uint8_t* to)
{
    const Words zero = Words::broadcast(0);
    const Words reds = packBytes(block.red, block.redOdd);
    const Words blues = packBytes(block.blue, block.blueOdd);
    const Words greens = topBits<greenBits, 0>(packBytes(block.green, block.greenOdd));
    const Words top = topBits<5, 6 - greenBits>(redOnTop ? reds : blues);
    const Words low = topBits<5, 3>(redOnTop ? blues : reds);

    constexpr int greenShift = greenBits - 3;   // from the top of the low byte to bit 4 + greenBits
    const Words even =
        interleaveLowBytes(low, top) | shiftedLeft<greenShift>(interleaveLowBytes(greens, zero));
    const Words odd =
        interleaveHighBytes(low, top) | shiftedLeft<greenShift>(interleaveHighBytes(greens, zero));
    Stores::put(interleaveLowWords(even, odd), to);
    Stores::put(interleaveHighWords(even, odd), to + sizeof(Words));
}

}
}
