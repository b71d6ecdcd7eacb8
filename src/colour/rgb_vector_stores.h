// Blocks of RGB words, clamped to bytes and laid out in memory.
#pragma once

#include "colour/vector_rows.h"

namespace rux::RUX_LEVEL {
namespace {

// A word for each pixel, not yet clamped.
struct RgbBlock {
    Words red, redOdd, green, greenOdd, blue, blueOdd;
};

// Two pixels are three words: R0 G0, B0 R1, G1 B1. Packing (R0, G1) and (G0, B1) puts the first and the third of them
// on the low and on the high halves of two registers.
template <typename Stores>
inline void storeBlock(Rgb24, RgbBlock block, uint8_t* to)
{
    const Words redGreen = packBytes(block.red, block.greenOdd);
    const Words greenBlue = packBytes(block.green, block.blueOdd);
    const Words blueRed = packBytes(block.blue, block.redOdd);
    storeTriples<Stores>(interleaveLowBytes(redGreen, greenBlue), interleaveHalves(blueRed),
                         interleaveHighBytes(redGreen, greenBlue), to);
}

template <typename Stores>
inline void storeBlock(Rgb0, RgbBlock block, uint8_t* to)
{
    const Words zero = Words::broadcast(0);
    const Words reds = packBytes(block.red, block.redOdd);
    const Words greens = packBytes(block.green, block.greenOdd);
    const Words blues = packBytes(block.blue, block.blueOdd);
    const Words evenRedGreen = interleaveLowBytes(reds, greens);
    const Words oddRedGreen = interleaveHighBytes(reds, greens);
    const Words evenBlue = interleaveLowBytes(blues, zero);
    const Words oddBlue = interleaveHighBytes(blues, zero);

    const Words evenLow = interleaveLowWords(evenRedGreen, evenBlue);
    const Words evenHigh = interleaveHighWords(evenRedGreen, evenBlue);
    const Words oddLow = interleaveLowWords(oddRedGreen, oddBlue);
    const Words oddHigh = interleaveHighWords(oddRedGreen, oddBlue);
    constexpr size_t step = sizeof(Words);
    Stores::put(interleaveLowDoubleWords(evenLow, oddLow), to);
    Stores::put(interleaveHighDoubleWords(evenLow, oddLow), to + step);
    Stores::put(interleaveLowDoubleWords(evenHigh, oddHigh), to + 2 * step);
    Stores::put(interleaveHighDoubleWords(evenHigh, oddHigh), to + 3 * step);
}

}
}
