// Reduction of the three channels to a few evenly spaced levels, with error diffusion or ordered dither.
//
// The operation stands here once; each level's file gives the two methods and the ranges of their noise. The levels of
// the result are counted from 0 to top.
#pragma once

#include "colour/reduce_bits_kernels.h"
#include "colour/reduce_bits_noise.h"
#include "frame/bytes.h"
#include "frame/checks.h"
#include "frame/work_memory.h"

namespace rux::RUX_LEVEL {
namespace {

struct ReducedImages {
    const uint8_t* src;
    ptrdiff_t srcStep;
    uint8_t* dst;
    ptrdiff_t dstStep;
    ruxiSize roiSize;

    const uint8_t* srcRow(int32_t y) const { return src + y * srcStep; }
    uint8_t* dstRow(int32_t y) const { return dst + y * dstStep; }
};

// The thresholds of the ordered dither, in steps.
constexpr float ditherMatrix[4][4] = {
    {0 / 15.0f, 8 / 15.0f, 2 / 15.0f, 10 / 15.0f},
    {12 / 15.0f, 4 / 15.0f, 14 / 15.0f, 6 / 15.0f},
    {3 / 15.0f, 11 / 15.0f, 1 / 15.0f, 9 / 15.0f},
    {15 / 15.0f, 7 / 15.0f, 13 / 15.0f, 5 / 15.0f},
};

constexpr float percent = 0.009999999776482582f;   // the nearest float of 1/100

NoiseRange diffusionNoise(int32_t top, int32_t noise);
NoiseRange orderedNoise(int32_t noise);

// Without noise the tables are null. The rows, Kernel::workFloats of them, are all 0. One channel is done after the
// other, and the last rows of one are the rows above the first of the next.
template <typename Kernel>
void diffuseErrors(const ReducedImages& images, int32_t top, const NoiseTables* noise, float* rows);

void ditherOrdered(const ReducedImages& images, int32_t top, const NoiseTables* noise);

template <typename Work>
ruxStatus withNoise(bool noisy, NoiseRange range, Work work)
{
    if (!noisy) return work(nullptr);
    const WorkMemory<float> values(noiseEntries);
    if (!values) return ruxStatusMemoryAllocated;
    const WorkMemory<uint16_t> indices(noiseEntries);
    if (!indices) return ruxStatusMemoryAllocated;
    fillNoise(values, indices, range);
    const NoiseTables tables = {values, indices};
    return work(&tables);
}

template <typename Kernel>
ruxStatus diffuse(const ReducedImages& images, int32_t top, int32_t noise)
{
    return withNoise(noise != 0, diffusionNoise(top, noise), [&](const NoiseTables* tables) {
        const int64_t count = Kernel::workFloats(images.roiSize.width);
        const WorkMemory<float> rows(count);
        if (!rows) return ruxStatusMemoryAllocated;
        for (int64_t i = 0; i < count; ++i) rows[i] = 0;
        diffuseErrors<Kernel>(images, top, tables, rows);
        return ruxStatusOk;
    });
}

// The level's: reduce() in the rounding mode in which the level works.
ruxStatus reduceInMode(const ReducedImages& images, int32_t top, int32_t noise, ruxDitherType ditherType);

// Not inlined: compilers move arithmetic over a change of the control registers.
[[gnu::noinline]] ruxStatus reduce(const ReducedImages& images, int32_t top, int32_t noise, ruxDitherType ditherType)
{
    switch (ditherType) {
    case ruxDitherFS: return diffuse<FloydSteinberg>(images, top, noise);
    case ruxDitherJJN: return diffuse<JarvisJudiceNinke>(images, top, noise);
    case ruxDitherStucki: return diffuse<Stucki>(images, top, noise);
    case ruxDitherBayer:
        return withNoise(noise != 0, orderedNoise(noise), [&](const NoiseTables* tables) {
            ditherOrdered(images, top, tables);
            return ruxStatusOk;
        });
    default: return ruxStatusOk;
    }
}

}

ruxStatus RUXCALL ruxiReduceBits_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        ruxiSize roiSize, int32_t noise, ruxDitherType ditherType, int32_t levels)
{
    if (auto failure = firstFailure(pointers(src, dst), sizes(roiSize), steps(srcStep, dstStep))) return failure;
    if (ditherType == ruxDitherNone) return RUX_LEVEL::ruxiCopy_8u_C3R(src, srcStep, dst, dstStep, roiSize);
    if (auto failure = firstFailure(require(noise >= 0 && noise <= 100, ruxStatusNoiseAmplitude),
                                    require(levels >= 2 && levels <= 256, ruxStatusDitherLevels)))
        return failure;

    const DoublePrecision precision;
    return reduceInMode({src, srcStep, dst, dstStep, roiSize}, levels - 1, noise, ditherType);
}

}
