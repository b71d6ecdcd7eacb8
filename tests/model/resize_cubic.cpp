// The cubic through four neighbours, by forward differences. t is the place from the second sample.
#include <algorithm>
#include <cmath>

#include "model/resize_kernels.h"

namespace rux::model {
namespace {

constexpr float thirdUp = 0x1.555556p-2f;     // 0x3EAAAAAB
constexpr float thirdDown = 0x1.555554p-2f;   // 0x3EAAAAAA
constexpr float blockBias = 0x1.4F8B58p-17f;  // 0x3727C5AC

struct Stencil {
    int32_t index;   // of the second sample
    float t;
};

// A stencil that would leave the image is moved inward, and its t with it.
std::vector<Stencil> stencilsOf(const Axis& axis)
{
    std::vector<Stencil> stencils;
    for (const double position : positionsOf(axis)) {
        int32_t index = indexOf(position);
        const int32_t absolute = index + axis.srcBegin;
        if (absolute == axis.srcLength - 1) {
            stencils.push_back({index - 2, 2.0f});
            continue;
        }
        if (absolute == 0) index++;
        else if (absolute == axis.srcLength - 2) index--;
        stencils.push_back({index, static_cast<float>(position - index)});
    }
    return stencils;
}

struct Samples {
    float a, b, c, d;
};

// px and m6: every step in double.
double wideAlong(const Samples& samples, double t)
{
    const double a = samples.a, b = samples.b, c = samples.c, d = samples.d;
    const double e1 = b - a, e2 = (c - b) - e1, e3 = ((b - (c + c)) + d) - e2;
    const double u = 1.0 + t, h = (u * t) * 0.5, q = ((t - 1.0) * h) * thirdUp;
    return ((a + e3 * q) + e2 * h) + e1 * u;
}

double wideDown(const Samples& samples, double t)
{
    const double a = samples.a, b = samples.b, c = samples.c, d = samples.d;
    const double e1 = b - a, e2 = (c - b) - e1, e3 = (((d - c) - c) + b) - e2;
    const double u = 1.0 + t, h = (u * t) * 0.5, q = ((t - 1.0) * h) * thirdUp;
    return ((a + e3 * q) + e2 * h) + e1 * u;
}

float blockAlong(const Samples& samples, float t)
{
    const auto [a, b, c, d] = samples;
    const float e1 = b - a, e2 = (c - b) - e1, e3 = ((d - c) - c) + (b - e2);
    const float u = 1.0f + t, h = (t * 0.5f) * u, q = (t - 1.0f) * (h * thirdDown);
    return (a + e1 * u) + (e2 * h + e3 * q);
}

float blockDown(const Samples& samples, float t)
{
    const auto [a, b, c, d] = samples;
    const float e1 = b - a, e2 = (c - b) - e1, e3 = (d - e2) + ((b - c) - c);
    const float u = 1.0f + t, h = (t * 0.5f) * u, q = ((t - 1.0f) * thirdDown) * h;
    return (a + e1 * u) + (e2 * h + e3 * q);
}

float tailAlong(const Samples& samples, float t)
{
    const auto [a, b, c, d] = samples;
    const float e1 = b - a, e2 = (c - b) - e1, e3 = ((b - (c + c)) + d) - e2;
    const float u = 1.0f + t, h = (u * t) * 0.5f, q = ((t - 1.0f) * h) * thirdUp;
    return ((a + e3 * q) + e2 * h) + e1 * u;
}

// The steps in single, the sum in double.
double tailDown(const Samples& samples, float t)
{
    const auto [a, b, c, d] = samples;
    const float e1 = b - a, e2 = (c - b) - e1, e3 = (((d - c) - c) + b) - e2;
    const float u = 1.0f + t, h = (u * t) * 0.5f, q = ((t - 1.0f) * h) * thirdUp;
    return ((double(a) + double(e3) * q) + double(e2) * h) + double(e1) * u;
}

uint8_t saturated(int32_t value)
{
    return static_cast<uint8_t>(std::clamp(value, 0, 255));
}

uint8_t truncatedByte(double value)
{
    return saturated(truncated(value + resizeEpsilon));
}

uint8_t roundedByte(float value)
{
    const float biased = value + blockBias;
    return saturated(static_cast<int32_t>(std::nearbyint(biased)));
}

enum class Evaluation { wide, block, tail };

// At a6 and w7 the last 0 to 3 pixels of a row are no block of four.
Evaluation evaluationOf(Level level, int j, int width)
{
    if (level == px || level == m6) return Evaluation::wide;
    return j < width / 4 * 4 ? Evaluation::block : Evaluation::tail;
}

float along(Evaluation evaluation, const Samples& samples, float t)
{
    switch (evaluation) {
    case Evaluation::wide: return static_cast<float>(wideAlong(samples, t));
    case Evaluation::block: return blockAlong(samples, t);
    default: return tailAlong(samples, t);
    }
}

uint8_t down(Evaluation evaluation, const Samples& samples, float t)
{
    switch (evaluation) {
    case Evaluation::wide: return truncatedByte(wideDown(samples, t));
    case Evaluation::block: return roundedByte(blockDown(samples, t));
    default: return truncatedByte(tailDown(samples, t));
    }
}

std::vector<float> scaledRow(Level level, const uint8_t* row, const std::vector<Stencil>& columns)
{
    std::vector<float> scaled;
    const int width = static_cast<int>(columns.size());
    for (int j = 0; j < width; j++) {
        const uint8_t* const b = row + columns[j].index;
        const Samples samples = {float(b[-1]), float(b[0]), float(b[1]), float(b[2])};
        scaled.push_back(along(evaluationOf(level, j, width), samples, columns[j].t));
    }
    return scaled;
}

}

void resizeCubic(const Scaling& s, const Axis& x, const Axis& y)
{
    const auto columns = stencilsOf(x), rows = stencilsOf(y);
    for (int i = 0; i < y.count; i++) {
        std::vector<float> scaled[4];
        for (int k = 0; k < 4; k++) {
            const uint8_t* const row = advance(s.origin, rowOffset(rows[i].index, s.srcStep));
            scaled[k] = scaledRow(s.level, advance(row, static_cast<ptrdiff_t>(k - 1) * s.srcStep), columns);
        }
        for (int j = 0; j < x.count; j++) {
            const Samples samples = {scaled[0][j], scaled[1][j], scaled[2][j], scaled[3][j]};
            *at(s.dst, s.dstStep, j, i) = down(evaluationOf(s.level, j, x.count), samples, rows[i].t);
        }
    }
}

}
