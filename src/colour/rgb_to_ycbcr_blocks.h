// RGB to YCbCr in blocks of two lanes of pixels: 8 in MMX registers, 16 in SSE2 registers. Even and odd pixels stand in
// registers of their own, so that the sums over pairs are sums of registers.
#pragma once

#include "colour/blocks.h"
#include "colour/rgb_to_ycbcr_scalar.h"

namespace rux::RUX_LEVEL {
namespace {

struct RgbWords {
    Words red, green, blue;
};

inline RgbWords operator+(RgbWords a, RgbWords b)
{
    return {a.red + b.red, a.green + b.green, a.blue + b.blue};
}

struct RgbPairs {
    RgbWords even, odd;
};

// Two pixels are three words: R0 G0, B0 R1, G1 B1.
inline RgbPairs loadPairs(const uint8_t* src)
{
    const WordTriples words = loadTriples(src);
    const Words low = Words::broadcast(0xFF);
    return {{words.x & low, shiftedRightUnsigned<8>(words.x), words.y & low},
            {shiftedRightUnsigned<8>(words.y), words.z & low, shiftedRightUnsigned<8>(words.z)}};
}

// A component in 32 bits. A green weight beyond 16 bits is halved and the green doubled; the addend comes in as the
// product of its 2048th part and a lane of 2048.
template <const Component& of>
inline Words weightedSum(RgbWords pixels)
{
    constexpr Weights weights = of.weights;
    constexpr Rounding rounding = of.rounding;
    constexpr bool halved = weights.green > 0x7FFF;
    static_assert(!halved || weights.green % 2 == 0);
    static_assert(rounding.addend % 2048 == 0 && rounding.addend / 2048 <= 0x7FFF);
    const Words redGreenWeights = broadcastPair(weights.red, halved ? weights.green / 2 : weights.green);
    const Words blueWeights = broadcastPair(weights.blue, rounding.addend / 2048);
    const Words unit = Words::broadcast(2048);
    const Words green = halved ? pixels.green + pixels.green : pixels.green;

    const Words low =
        doubleWordSum(multiplyAddPairs(interleaveLowWords(pixels.red, green), redGreenWeights),
                      multiplyAddPairs(interleaveLowWords(pixels.blue, unit), blueWeights));
    const Words high =
        doubleWordSum(multiplyAddPairs(interleaveHighWords(pixels.red, green), redGreenWeights),
                      multiplyAddPairs(interleaveHighWords(pixels.blue, unit), blueWeights));
    return packWords(doubleWordsShiftedRight<rounding.shift>(low), doubleWordsShiftedRight<rounding.shift>(high));
}

// Words of 0..255 to bytes, even and odd pixels side by side.
inline Words mergeBytes(Words even, Words odd)
{
    return even | shiftedLeft<8>(odd);
}

// Y0, Cb, Y1, Cr.
template <typename Stores>
inline void storePairs(Words evenLuma, Words cb, Words oddLuma, Words cr, uint8_t* dst)
{
    const Words first = mergeBytes(evenLuma, cb);
    const Words second = mergeBytes(oddLuma, cr);
    Stores::put(interleaveLowWords(first, second), dst);
    Stores::put(interleaveHighWords(first, second), dst + sizeof(Words));
}

inline void storeChroma(Words chroma, uint8_t* dst)
{
    storeHalf(packBytes(chroma, chroma), dst);
}

// An even number of pixels.
template <void block(const uint8_t*, uint8_t*)>
inline void rowTo422Blocks(const uint8_t* src, uint8_t* dst, size_t pixels)
{
    const auto whole = [=](size_t x) {
        prefetch(src + x * 3, 48);
        block(src + x * 3, dst + x * 2);
    };
    const auto rest = [=](size_t x) {
        uint8_t source[blockPixels * 3] = {};
        uint8_t destination[blockPixels * 2];
        copyShortRow(src + x * 3, source, (pixels - x) * 3);
        block(source, destination);
        copyShortRow(destination, dst + x * 2, (pixels - x) * 2);
    };
    forEachBlock(pixels, true, whole, rest);
}

template <void block(RgbRows, Planes420)>
inline void rowPairTo420Blocks(RgbRows src, Planes420 dst, size_t pixels)
{
    const auto whole = [=](size_t x) {
        prefetch(src.upper + x * 3);
        prefetch(src.lower + x * 3);
        block(src.at(x), dst.at(x));
    };
    const auto rest = [=](size_t x) {
        const RgbRows from = src.at(x);
        const Planes420 to = dst.at(x);
        const size_t left = pixels - x;
        uint8_t upper[blockPixels * 3] = {};
        uint8_t lower[blockPixels * 3] = {};
        uint8_t luma[blockPixels], lowerLuma[blockPixels], cb[blockPixels / 2], cr[blockPixels / 2];
        copyShortRow(from.upper, upper, left * 3);
        copyShortRow(from.lower, lower, left * 3);
        block({upper, lower}, {luma, lowerLuma, cb, cr});
        copyShortRow(luma, to.luma, left);
        copyShortRow(lowerLuma, to.lowerLuma, left);
        copyShortRow(cb, to.cb, left / 2);
        copyShortRow(cr, to.cr, left / 2);
    };
    forEachBlock(pixels, true, whole, rest);
}

}
}
