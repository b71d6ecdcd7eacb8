// Cubic interpolation pixel by pixel in double. The result is truncated, not rounded.
#pragma once

#include "geometry/resize_cubic.h"

namespace rux::RUX_LEVEL {
namespace {

struct CubicPlace {
    double u;
    double h;
    double q;

    explicit CubicPlace(double t) : u(1.0 + t), h((u * t) * 0.5), q(((t - 1.0) * h) * cubicThirdAbove) {}

    double value(double a, double e1, double e2, double e3) const { return ((a + e3 * q) + e2 * h) + e1 * u; }
};

void scaleRowCubic(const uint8_t* src, const int32_t* offsets, const float* fractions, float* row, int32_t width)
{
    for (int32_t j = 0; j < width; ++j) {
        const uint8_t* const second = src + offsets[j];
        const int32_t a = second[-1];
        const int32_t b = second[0];
        const int32_t c = second[1];
        const int32_t d = second[2];
        const int32_t e1 = b - a;   // differences of bytes are exact in any order
        const int32_t e2 = (c - b) - e1;
        const int32_t e3 = ((b - (c + c)) + d) - e2;
        row[j] = static_cast<float>(CubicPlace(fractions[j]).value(a, e1, e2, e3));
    }
}

inline uint8_t truncatedByte(double value)
{
    const int32_t whole = static_cast<int32_t>(value + 1e-07);
    return static_cast<uint8_t>(whole < 0 ? 0 : whole > 255 ? 255 : whole);
}

void combineRowsCubic(CubicRows& rows, float fraction, uint8_t* dst, int32_t width)
{
    const CubicPlace place(fraction);
    for (int32_t j = 0; j < width; ++j) {
        const double a = rows[0][j];
        const double b = rows[1][j];
        const double c = rows[2][j];
        const double d = rows[3][j];
        const double e1 = b - a;
        const double e2 = (c - b) - e1;
        const double e3 = (((d - c) - c) + b) - e2;
        dst[j] = truncatedByte(place.value(a, e1, e2, e3));
    }
}

}
}
