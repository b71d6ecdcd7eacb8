#include "model/moments.h"

namespace rux::model {
namespace {

// The four sums of a row, in lanes of one precision.
template <class Real>
struct Lane {
    Real s[4] = {};

    void add(float pixel, Real x)
    {
        Real t = pixel;
        for (int order = 0; order < 4; order++) {
            s[order] += t;
            t *= x;
        }
    }
};

using RowSums = std::array<double, 4>;

RowSums plainRow(const float* row, int width)
{
    Lane<double> sums;
    for (int x = 0; x < width; x++) sums.add(load<float>(row + x), x);
    return {sums.s[0], sums.s[1], sums.s[2], sums.s[3]};
}

// One by one up to a 16-byte boundary; then, as long as four pixels remain, these over all lanes; the rest one by one.
template <class Real, int count>
std::array<Lane<Real>, count> lanesOf(const float* row, int width)
{
    std::array<Lane<Real>, count> lanes;
    int x = 0;
    for (; x < width && reinterpret_cast<uintptr_t>(row + x) % 16 != 0; x++) {
        lanes[0].add(load<float>(row + x), static_cast<Real>(x));
    }
    for (; width - x >= 4; x += 4) {
        for (int i = 0; i < 4; i++) {
            lanes[static_cast<size_t>(i % count)].add(load<float>(row + x + i), static_cast<Real>(x + i));
        }
    }
    for (; x < width; x++) lanes[0].add(load<float>(row + x), static_cast<Real>(x));
    return lanes;
}

RowSums rowInDouble(const float* row, int width)
{
    const auto lanes = lanesOf<double, 2>(row, width);
    RowSums sums;
    for (size_t i = 0; i < 4; i++) sums[i] = lanes[0].s[i] + lanes[1].s[i];
    return sums;
}

RowSums rowInSingle(const float* row, int width)
{
    const auto lanes = lanesOf<float, 4>(row, width);
    RowSums sums;
    for (size_t i = 0; i < 4; i++) {
        const float odd = lanes[1].s[i] + lanes[3].s[i], even = lanes[0].s[i] + lanes[2].s[i];
        sums[i] = odd + even;
    }
    return sums;
}

}

Moments momentsOf(Level level, const float* src, int32_t srcStep, ruxiSize roiSize, ruxAlgHint hint)
{
    Moments m = {};
    for (int row = 0; row < roiSize.height; row++) {
        const float* const pixels = at(src, srcStep, 0, row);
        const RowSums s = level == w7                                    ? rowInDouble(pixels, roiSize.width)
                          : level == a6 && hint != ruxAlgHintAccurate ? rowInSingle(pixels, roiSize.width)
                                                                         : plainRow(pixels, roiSize.width);
        const double y = row, a = s[0] * y, b = s[1] * y, c = a * y;
        m[0] += s[0], m[1] += s[1], m[2] += s[2], m[3] += s[3];
        m[4] += a, m[5] += b, m[6] += s[2] * y;
        m[8] += c, m[9] += b * y;
        m[12] += y * c;
    }
    return m;
}

double momentAbout(const Moments& m, int32_t xOrder, int32_t yOrder, ruxiPoint offset)
{
    const double X = offset.x, Y = offset.y;
    if (X == 0 && Y == 0) return m[static_cast<size_t>(4 * yOrder + xOrder)];
    switch (10 * xOrder + yOrder) {
    case 0: return m[0];
    case 10: return m[1] + X * m[0];
    case 20: return m[2] + 2 * X * m[1] + X * X * m[0];
    case 30: return m[3] + 3 * X * m[2] + 3 * (X * X) * m[1] + X * X * X * m[0];
    case 1: return m[4] + Y * m[0];
    case 2: return m[8] + 2 * Y * m[4] + Y * Y * m[0];
    case 3: return m[12] + 3 * Y * m[8] + 3 * (Y * Y) * m[4] + Y * Y * Y * m[0];
    case 11: return m[5] + X * m[4] + Y * m[1] + X * Y * m[0];
    case 21: return m[6] + 2 * X * m[5] + X * X * m[4] + Y * m[2] + 2 * X * Y * m[1] + X * X * Y * m[0];
    default: return m[9] + X * m[8] + 2 * Y * m[5] + Y * Y * m[1] + 2 * X * Y * m[4] + X * (Y * Y) * m[0];
    }
}

}
