// The ordered dither in vectors of four floats, in blocks of three times as many bytes as a vector of bytes has: a row
// of whole fours of pixels.
#pragma once

#include "colour/reduce_bits_sse.h"
#include "lanes/partial_bytes.h"

namespace rux::RUX_LEVEL {
namespace {

// The level's: samples of a block to floats, and levels, truncated and saturated, to bytes.
constexpr size_t blockBytes = 3 * bytesAtOnce;
constexpr size_t vectorsOfBlock = blockBytes / 4;
void loadSamples(const uint8_t* from, __m128* samples);
void storeSamples(const __m128* levels, uint8_t* to);

// The thresholds of four pixels, for each of their samples.
struct SampleThresholds {
    __m128 of[3];

    explicit SampleThresholds(__m128 pixels)
        : of{_mm_shuffle_ps(pixels, pixels, _MM_SHUFFLE(1, 0, 0, 0)),
             _mm_shuffle_ps(pixels, pixels, _MM_SHUFFLE(2, 2, 1, 1)),
             _mm_shuffle_ps(pixels, pixels, _MM_SHUFFLE(3, 3, 3, 2))}
    {
    }
};

struct QuietThresholds {
    SampleThresholds four;

    QuietThresholds(const float* matrixRow, __m128 step) : four(_mm_mul_ps(_mm_loadu_ps(matrixRow), step)) {}

    const SampleThresholds& at(int32_t) const { return four; }
};

struct NoisyThresholds {
    __m128 matrix;
    __m128 step;
    const NoiseTables& noise;
    int32_t offset;

    SampleThresholds at(int32_t x) const
    {
        const __m128 pixels = fourFloats(noise.entry(x, offset), noise.entry(x + 1, offset),
                                         noise.entry(x + 2, offset), noise.entry(x + 3, offset));
        return SampleThresholds(_mm_mul_ps(_mm_add_ps(matrix, pixels), step));
    }
};

// Unrolled, here and in the level's conversions, all vectors of a block stay in registers.
template <typename Thresholds>
[[gnu::always_inline]] inline void ditherBlock(const Stairs& stairs, const Thresholds& thresholds, int32_t x,
                                               const uint8_t* src, uint8_t* dst)
{
    __m128 vectors[vectorsOfBlock];
    loadSamples(src, vectors);
#pragma GCC unroll 4
    for (size_t i = 0; i < vectorsOfBlock; i += 3) {
        const SampleThresholds four = thresholds.at(x + static_cast<int32_t>(i / 3) * 4);
#pragma GCC unroll 3
        for (int k = 0; k < 3; ++k) vectors[i + k] = levelOf(stairs, vectors[i + k], four.of[k]).value;
    }
    storeSamples(vectors, dst);
}

inline void copyPartOfBlock(const uint8_t* src, uint8_t* dst, size_t bytes)
{
    for (; bytes >= 16; src += 16, dst += 16, bytes -= 16)
        for (size_t i = 0; i < 16; i += 4) store(dst + i, load<uint32_t>(src + i));
    copyFewBytes(src, dst, bytes);
}

// What is left over behind the blocks goes through a block of its own.
template <typename Thresholds>
inline void ditherRow(const Stairs& stairs, const Thresholds& thresholds, const uint8_t* src, uint8_t* dst,
                      int32_t width)
{
    constexpr int32_t blockPixels = blockBytes / 3;
    int32_t x = 0;
    for (; width - x >= blockPixels; x += blockPixels, src += blockBytes, dst += blockBytes)
        ditherBlock(stairs, thresholds, x, src, dst);
    if (x == width) return;

    uint8_t block[blockBytes] = {};
    const size_t bytes = static_cast<size_t>(width - x) * 3;
    copyPartOfBlock(src, block, bytes);
    ditherBlock(stairs, thresholds, x, block, block);
    copyPartOfBlock(block, dst, bytes);
}

// A row of its own, not inlined, for the MMX state that a level may hold in it.
[[gnu::noinline]] void ditherQuietRow(const Stairs& stairs, const float* matrixRow, const uint8_t* src, uint8_t* dst,
                                      int32_t width)
{
    const RowState state;
    ditherRow(stairs, QuietThresholds(matrixRow, stairs.step), src, dst, width);
}

[[gnu::noinline]] void ditherNoisyRow(const Stairs& stairs, const float* matrixRow, const NoiseTables& noise,
                                      int32_t offset, const uint8_t* src, uint8_t* dst, int32_t width)
{
    const RowState state;
    const NoisyThresholds thresholds = {_mm_loadu_ps(matrixRow), stairs.step, noise, offset};
    ditherRow(stairs, thresholds, src, dst, width);
}

void ditherOrdered(const ReducedImages& images, int32_t top, const NoiseTables* noise)
{
    const Stairs stairs{Staircase(top)};
    for (int32_t y = 0; y < images.roiSize.height; ++y) {
        const float* const matrixRow = ditherMatrix[y & 3];
        const int32_t width = images.roiSize.width;
        if (noise)
            ditherNoisyRow(stairs, matrixRow, *noise, 2 * y, images.srcRow(y), images.dstRow(y), width);
        else
            ditherQuietRow(stairs, matrixRow, images.srcRow(y), images.dstRow(y), width);
    }
}

}
}
