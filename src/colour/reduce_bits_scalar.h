// ReduceBits sample by sample, in double. The level gives the truncation.
#pragma once

#include "colour/reduce_bits.h"

namespace rux::RUX_LEVEL {
namespace {

// How many whole steps a value is above 0: what hardly misses a step counts as one.
int32_t wholeSteps(double steps);

// The levels in units of a sample. The byte of a level comes from the step with 8 fractional bits.
struct Staircase {
    double step;
    double inverse;
    int32_t stepFixed;

    explicit Staircase(int32_t top)
        : step(65280.0 / top * (1.0 / 256)), inverse(top * 0.003921568859368563),
          stepFixed(static_cast<int32_t>(65280.0 / top + 0.000009))
    {
    }

    uint8_t byteOf(int32_t level) const { return static_cast<uint8_t>((level * stepFixed) >> 8); }
};

inline Staircase staircaseInSingle(int32_t top)
{
    Staircase stairs(top);
    stairs.step = roundedToSingle(stairs.step);
    stairs.inverse = roundedToSingle(stairs.inverse);
    return stairs;
}

NoiseRange diffusionNoise(int32_t top, int32_t noise)
{
    const double step = staircaseInSingle(top).step;
    return {step * (50 - noise) * double(percent), step * (50 + noise) * double(percent)};
}

NoiseRange orderedNoise(int32_t noise)
{
    return {-noise * double(percent), noise * double(percent)};
}

struct Reduced {
    uint8_t byte;
    float error;
};

inline Reduced reduceValue(const Staircase& stairs, double value, double threshold)
{
    if (value >= 255.0) return {255, 0};
    if (value < 0.0) return {0, 0};
    int32_t level = wholeSteps(value * stairs.inverse);
    double error = value - level * stairs.step;
    if (error > threshold) {
        error -= stairs.step;
        ++level;
    }
    return {stairs.byteOf(level), roundedToSingle(error)};
}

// Rows of errors; the columns beside a row have none.
struct ErrorRows {
    float* current;
    const float* up;
    const float* upTwo;
};

template <typename Kernel>
void diffuseRow(const Staircase& stairs, const uint8_t* src, uint8_t* dst, int32_t width, ErrorRows errors,
                const NoiseTables* noise, int32_t y)
{
    double leftTwo = 0;
    double left = 0;
    for (int32_t x = 0; x < width; ++x) {
        const auto up = [&](int i) { return double(errors.up[x + i]); };
        const auto upTwo = [&](int i) { return double(errors.upTwo[x + i]); };
        const double sum = Kernel::withLeft(Kernel::fromAbove(up, upTwo), leftTwo, left);
        const double threshold = noise ? double(*noise->entry(x, 2 * y + x)) : 0.5 * stairs.step;
        const Reduced reduced = reduceValue(stairs, src[3 * x] + sum * Kernel::scale, threshold);
        dst[3 * x] = reduced.byte;
        errors.current[x] = reduced.error;
        leftTwo = left;
        left = reduced.error;
    }
}

template <typename Kernel>
void diffuseErrors(const ReducedImages& images, int32_t top, const NoiseTables* noise, float* rows)
{
    const Staircase stairs = staircaseInSingle(top);
    constexpr int margin = Kernel::rowsAbove;
    const ptrdiff_t pitch = images.roiSize.width + 2 * margin;
    float* const first = rows + margin;
    ErrorRows errors = {first, first + pitch, Kernel::rowsAbove == 2 ? first + 2 * pitch : first};
    for (int channel = 0; channel < 3; ++channel) {
        for (int32_t y = 0; y < images.roiSize.height; ++y) {
            diffuseRow<Kernel>(stairs, images.srcRow(y) + channel, images.dstRow(y) + channel, images.roiSize.width,
                               errors, noise, y);
            float* const oldest = const_cast<float*>(Kernel::rowsAbove == 2 ? errors.upTwo : errors.up);
            errors = {oldest, errors.current, errors.up};
        }
    }
}

// What becomes of each sample: the bytes of its level and of the level above, and the error that decides.
struct SampleLevels {
    double error[256];
    uint8_t bytes[2][256];

    explicit SampleLevels(const Staircase& stairs)
    {
        for (int32_t sample = 0; sample < 256; ++sample) {
            const int32_t level = wholeSteps(sample * stairs.inverse);
            error[sample] = sample - level * stairs.step;
            bytes[0][sample] = stairs.byteOf(level);
            bytes[1][sample] = stairs.byteOf(level + 1);
        }
    }

    // By a branch, for samples in order: most of them go the way of the one before.
    uint8_t reducedInOrder(int32_t sample, double threshold) const
    {
        return error[sample] > threshold ? bytes[1][sample] : bytes[0][sample];
    }

    // By an index, where nothing foretells the way.
    uint8_t reduced(uint8_t sample, double threshold) const { return bytes[error[sample] > threshold][sample]; }
};

// Without noise every fourth row has the same four thresholds: a table of bytes for each.
struct QuietLevels {
    uint8_t bytes[4][4][256];

    QuietLevels(const SampleLevels& levels, double step, int32_t rows)
    {
        for (int row = 0; row < 4 && row < rows; ++row)
            for (int column = 0; column < 4; ++column)
                for (int32_t sample = 0; sample < 256; ++sample)
                    bytes[row][column][sample] = levels.reducedInOrder(sample, ditherMatrix[row][column] * step);
    }
};

void ditherQuietly(const ReducedImages& images, const QuietLevels& levels)
{
    for (int32_t y = 0; y < images.roiSize.height; ++y) {
        const uint8_t* src = images.srcRow(y);
        uint8_t* dst = images.dstRow(y);
        for (int32_t x = 0; x < images.roiSize.width; ++x, src += 3, dst += 3) {
            const uint8_t* const byteOf = levels.bytes[y & 3][x & 3];
            for (int channel = 0; channel < 3; ++channel) dst[channel] = byteOf[src[channel]];
        }
    }
}

void ditherNoisily(const ReducedImages& images, const SampleLevels& levels, double step, const NoiseTables& noise)
{
    for (int32_t y = 0; y < images.roiSize.height; ++y) {
        const uint8_t* src = images.srcRow(y);
        uint8_t* dst = images.dstRow(y);
        for (int32_t x = 0; x < images.roiSize.width; ++x, src += 3, dst += 3) {
            const double threshold = (double(ditherMatrix[y & 3][x & 3]) + *noise.entry(x, 2 * y)) * step;
            for (int channel = 0; channel < 3; ++channel) dst[channel] = levels.reduced(src[channel], threshold);
        }
    }
}

void ditherOrdered(const ReducedImages& images, int32_t top, const NoiseTables* noise)
{
    const Staircase stairs(top);
    const SampleLevels levels(stairs);
    if (noise)
        ditherNoisily(images, levels, stairs.step, *noise);
    else
        ditherQuietly(images, QuietLevels(levels, stairs.step, images.roiSize.height));
}

}
}
