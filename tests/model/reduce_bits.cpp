#include "model/reduce_bits.h"

#include <algorithm>
#include <cmath>

namespace rux::model {
namespace {

constexpr float unit = 0.003921568859368563f;   // 1 / 255
constexpr float percent = 0.009999999776482582f;

class Generator {
public:
    double sample(double low, double high)
    {
        return (low + high) * 0.5 + next() * (high - low) * 2.3283064365387e-10;
    }

private:
    int32_t next()
    {
        g = g * 69069 + 1013904243;
        const uint32_t t = s1 - s2 + c;
        const bool borrow = t >> 31 != 0;
        c = borrow ? 0xFFFFFFFF : 0;
        s2 = s1;
        s1 = s0;
        s0 = borrow ? t - 18 : t;
        return static_cast<int32_t>(s0 + g);
    }

    uint32_t g = 1131199209, s0 = 0, s1 = s0 * 69069 + 1013904243, s2 = s1 * 69069 + 1013904243, c = 0xFFFFFFFF;
};

// Weights of the current row's x-2, x-1, and of x-2 .. x+2 one and two rows up.
struct Kernel {
    int here[2], above[5], higher[5];
    float scale;
};

constexpr Kernel floydSteinberg = {{0, 7}, {0, 1, 5, 3, 0}, {0, 0, 0, 0, 0}, 0.0625f};
constexpr Kernel jarvis = {{5, 7}, {3, 5, 7, 5, 3}, {1, 3, 5, 3, 1}, 0.02083333395421505f};
constexpr Kernel stucki = {{4, 8}, {2, 4, 8, 4, 2}, {1, 2, 4, 2, 1}, 0.02380952425301075f};

const Kernel& kernelOf(ruxDitherType type)
{
    return type == ruxDitherFS ? floydSteinberg : type == ruxDitherJJN ? jarvis : stucki;
}

// Three rows of errors with two spare ones at each end: rows[0] is being written.
class Errors {
public:
    explicit Errors(int width) : rows(3, std::vector<float>(static_cast<size_t>(width) + 4)) {}
    float at(int up, int x) const { return rows[static_cast<size_t>(up)][static_cast<size_t>(x + 2)]; }
    void set(int x, float error) { rows[0][static_cast<size_t>(x + 2)] = error; }
    void nextRow() { std::rotate(rows.begin(), rows.begin() + 2, rows.end()); }

    // In double, in which the sum of weighted floats is next to exact.
    double weighted(const Kernel& kernel, int x) const
    {
        double sum = 0;
        for (int i = 0; i < 2; i++) sum += static_cast<double>(kernel.here[i]) * at(0, x - 2 + i);
        for (int i = 0; i < 5; i++) {
            sum += static_cast<double>(kernel.above[i]) * at(1, x - 2 + i);
            sum += static_cast<double>(kernel.higher[i]) * at(2, x - 2 + i);
        }
        return sum;
    }

private:
    std::vector<std::vector<float>> rows;
};

struct Steps {
    explicit Steps(int levels)
        : L(levels - 1), step(65280.0 / L * (1.0 / 256)), fixed(static_cast<int>(65280.0 / L + 0.000009)),
          inverse(L * static_cast<double>(unit)), single(static_cast<float>(step)),
          singleInverse(static_cast<float>(inverse))
    {
    }
    int L;
    double step;
    int fixed;
    double inverse;
    float single, singleInverse;
};

// Each quantises one value: the byte, and the error that is kept.
struct Quantised {
    uint8_t byte;
    float error;
};

Quantised inDouble(const Steps& steps, double v, double T)
{
    if (v >= 255) return {255, 0};
    if (v < 0) return {0, 0};
    int q = static_cast<int>(v * steps.singleInverse + 0.000009);
    double e = v - q * static_cast<double>(steps.single);
    if (e > T) {
        e -= steps.single;
        q++;
    }
    return {static_cast<uint8_t>(q * steps.fixed >> 8), static_cast<float>(e)};
}

Quantised inSingle(const Steps& steps, float v, float T)
{
    if (v >= 255) return {255, 0};
    if (v < 0) return {0, 0};
    const float inverse = static_cast<float>(steps.L) * unit;
    const float base = static_cast<float>(static_cast<int>(v * inverse)) * steps.single;
    const float level = T < v - base ? base + steps.single : base;
    return {static_cast<uint8_t>(static_cast<int>(level)), v - level};
}

float diffusedInSingle(const Errors& e, const Kernel& kernel, int x)
{
    if (&kernel != &floydSteinberg) return static_cast<float>(e.weighted(kernel, x)) * kernel.scale;
    const float sum = ((e.at(1, x + 1) * 3 + e.at(1, x - 1)) + e.at(1, x) * 5) + e.at(0, x - 1) * 7;
    return sum * 0.0625f;
}

// Calls an action with each sample in the order of diffusion: action(x, y, channel, errors).
template <class Action>
void eachSample(ruxiSize size, const Action& action)
{
    Errors errors(size.width);
    for (int channel = 0; channel < 3; channel++) {
        for (int y = 0; y < size.height; y++) {
            for (int x = 0; x < size.width; x++) errors.set(x, action(x, y, channel, errors));
            errors.nextRow();
        }
    }
}

uint8_t orderedInDouble(const Steps& steps, int v, double T)
{
    int q = static_cast<int>(v * steps.inverse + 0.000009);
    if (v - q * steps.step > T) q++;
    return static_cast<uint8_t>(q * steps.fixed >> 8);
}

uint8_t orderedInSingle(const Steps& steps, int sample, float fraction)
{
    const float step = 255.0f / static_cast<float>(steps.L), inverse = static_cast<float>(steps.L) * unit;
    const auto v = static_cast<float>(sample);
    const float base = static_cast<float>(static_cast<int>(v * inverse)) * step;
    const float level = fraction * step < v - base ? base + step : base;
    return static_cast<uint8_t>(std::min(static_cast<int>(level), 255));
}

bool isInDouble(Level level)
{
    return level == px || level == m6;
}

constexpr int bayer[16] = {0, 8, 2, 10, 12, 4, 14, 6, 3, 11, 1, 9, 15, 7, 13, 5};

void orderedDither(Level level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize size,
                   int32_t noise, int32_t levels)
{
    const Steps steps(levels);
    const float single = static_cast<float>(noise) * percent;
    const double range = isInDouble(level) ? noise * static_cast<double>(percent) : single;
    const Noise values(-range, range);
    for (int y = 0; y < size.height; y++) {
        for (int x = 0; x < 3 * size.width; x++) {
            const float matrix = static_cast<float>(bayer[(y & 3) * 4 + (x / 3 & 3)]) / 15;
            const float value = noise ? values.at(x / 3, 2 * y) : 0;
            const int sample = *at(src, srcStep, x, y);
            *at(dst, dstStep, x, y) =
                isInDouble(level)
                    ? orderedInDouble(steps, sample, (static_cast<double>(matrix) + value) * steps.step)
                    : orderedInSingle(steps, sample, matrix + value);
        }
    }
}

double thresholdAt(const Steps& steps, const Noise& values, int32_t noise, int x, int y)
{
    return noise ? values.at(x, 2 * y + x) : 0.5 * steps.single;
}

// The ends of the range are formed from the single-precision step, in the precision of the level.
Noise noiseOfDiffusion(Level level, const Steps& steps, int32_t noise)
{
    const auto end = [&](int32_t parts) -> double {
        if (isInDouble(level)) return static_cast<double>(steps.single) * parts * percent;
        const float single = steps.single * static_cast<float>(parts);
        return single * percent;
    };
    return Noise(end(50 - noise), end(50 + noise));
}

}

Noise::Noise(double low, double high)
{
    Generator whole, real;
    for (int i = 0; i < 1024; i++) {
        indices.push_back(static_cast<int>(whole.sample(0, 1024)));
        values.push_back(static_cast<float>(real.sample(low, high)));
    }
}

float Noise::at(int x, int offset) const
{
    return values[static_cast<size_t>((indices[static_cast<size_t>(x & 1023)] + offset) & 1023)];
}

ruxStatus ruxiReduceBits_8u_C3R(Level level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                ruxiSize roiSize, int32_t noise, ruxDitherType ditherType, int32_t levels)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (roiSize.width < 1 || roiSize.height < 1) return ruxStatusSizeError;
    if (srcStep < 1 || dstStep < 1) return ruxStatusStepError;
    if (ditherType == ruxDitherNone) {
        for (int y = 0; y < roiSize.height; y++) {
            for (int x = 0; x < 3 * roiSize.width; x++) *at(dst, dstStep, x, y) = *at(src, srcStep, x, y);
        }
        return ruxStatusOk;
    }
    if (noise < 0 || noise > 100) return ruxStatusNoiseAmplitude;
    if (levels < 2 || levels > 256) return ruxStatusDitherLevels;
    if (ditherType < ruxDitherNone || ditherType > ruxDitherBayer) return ruxStatusOk;
    if (ditherType == ruxDitherBayer) {
        orderedDither(level, src, srcStep, dst, dstStep, roiSize, noise, levels);
        return ruxStatusOk;
    }

    const Steps steps(levels);
    const Kernel& kernel = kernelOf(ditherType);
    const Noise values = noiseOfDiffusion(level, steps, noise);
    eachSample(roiSize, [&](int x, int y, int channel, const Errors& errors) {
        const double T = thresholdAt(steps, values, noise, x, y);
        const int sample = *at(src, srcStep, 3 * x + channel, y);
        const Quantised result =
            isInDouble(level)
                ? inDouble(steps, sample + errors.weighted(kernel, x) * kernel.scale, T)
                : inSingle(steps, static_cast<float>(sample) + diffusedInSingle(errors, kernel, x),
                           static_cast<float>(T));
        *at(dst, dstStep, 3 * x + channel, y) = result.byte;
        return result.error;
    });
    return ruxStatusOk;
}

bool followsDiffusion(const uint8_t* src, int32_t srcStep, const uint8_t* dst, int32_t dstStep, ruxiSize roiSize,
                      int32_t noise, ruxDitherType ditherType, int32_t levels)
{
    constexpr double nearness = 1.0 / 1024;   // far above what single-precision sums of a dozen errors can lose
    const Steps steps(levels);
    const Kernel& kernel = kernelOf(ditherType);
    const Noise values = noiseOfDiffusion(w7, steps, noise);
    bool right = true;
    eachSample(roiSize, [&](int x, int y, int channel, const Errors& errors) -> float {
        const double T = thresholdAt(steps, values, noise, x, y);
        const double v = *at(src, srcStep, 3 * x + channel, y) + errors.weighted(kernel, x) * kernel.scale;
        const uint8_t byte = *at(dst, dstStep, 3 * x + channel, y);
        const auto taken = [&](double value) {
            return inSingle(steps, static_cast<float>(value), static_cast<float>(T));
        };
        for (const double value : {v, v - nearness, v + nearness}) {
            const Quantised result = taken(value);
            if (result.byte == byte) return result.error == 0 && value != v ? 0 : static_cast<float>(result.error + v - value);
        }
        right = false;
        return 0;
    });
    return right;
}

}
