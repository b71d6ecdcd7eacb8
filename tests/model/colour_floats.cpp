#include "model/colour_floats.h"

#include <algorithm>
#include <cmath>

namespace rux::model {
namespace {

// One channel of HLS. Real is the precision that every step is rounded to.
template <class Real>
Real channelOf(Real x, Real m1, Real m2)
{
    constexpr Real sixtieth = 0.01666666754f;
    if (x < 60) return m1 + (m2 - m1) * x * sixtieth;
    if (x < 180) return m2;
    if (x < 240) return m1 + (m2 - m1) * (240 - x) * sixtieth;
    return m1;
}

template <class Real>
void hlsToBgr(const uint8_t hls[3], uint8_t* bgr)
{
    constexpr Real unit = 0.003921568859f;
    const Real h = static_cast<Real>(hls[0]) * 360 * unit, l = hls[1] * unit, s = hls[2] * unit;
    Real channels[3] = {l, l, l};
    if (hls[2] != 0) {
        const Real m2 = l <= Real(0.5) ? (s + 1) * l : l + s - s * l;
        const Real m1 = l + l - m2;
        const Real red = h + 120 > 360 ? h + 120 - 360 : h + 120;
        const Real blue = h - 120 < 0 ? h - 120 + 360 : h - 120;
        channels[0] = channelOf(blue, m1, m2);
        channels[1] = channelOf(h, m1, m2);
        channels[2] = channelOf(red, m1, m2);
    }
    for (int i = 0; i < 3; i++) bgr[i] = static_cast<uint8_t>(static_cast<int>(channels[i] * 255.0 + 0.0000001));
}

uint8_t twistedInDouble(Level level, const uint8_t* c, const float* row)
{
    const double t = static_cast<double>(row[0]) * c[0] + row[3] + static_cast<double>(row[1]) * c[1] +
                     static_cast<double>(row[2]) * c[2];
    if (t >= 255) return 255;
    if (t <= 0) return 0;
    if (level != px) return static_cast<uint8_t>(std::nearbyint(t));
    const double above = t + 0.5;
    const int truncated = static_cast<int>(above);
    return static_cast<uint8_t>(truncated % 2 != 0 && truncated == above ? truncated - 1 : truncated);
}

uint8_t twistedInSingle(const uint8_t* c, const float* row)
{
    const float t = (row[3] + row[0] * c[0]) + (row[2] * c[2] + row[1] * c[1]);
    return static_cast<uint8_t>(std::nearbyint(std::clamp(t, 0.0f, 255.0f)));
}

}

ruxStatus ruxiHLSToBGR_8u_P3C3R(Level level, const uint8_t* const src[3], int32_t srcStep, uint8_t* dst,
                                int32_t dstStep, ruxiSize roiSize)
{
    if (!src || !dst || !src[0] || !src[1] || !src[2]) return ruxStatusNullPointer;
    if (srcStep < 1 || dstStep < 1) return ruxStatusStepError;
    if (roiSize.width < 1 || roiSize.height < 1) return ruxStatusSizeError;
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) {
            const uint8_t hls[3] = {*at(src[0], srcStep, x, y), *at(src[1], srcStep, x, y), *at(src[2], srcStep, x, y)};
            uint8_t* const bgr = at(dst, dstStep, 3 * x, y);
            if (level == px || level == m6) hlsToBgr<double>(hls, bgr);
            else hlsToBgr<float>(hls, bgr);
        }
    }
    return ruxStatusOk;
}

ruxStatus ruxiColorTwist32f_8u_C3R(Level level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                   ruxiSize roiSize, const float* twist)
{
    if (!src || !dst || !twist) return ruxStatusNullPointer;
    if (roiSize.width < 1 || roiSize.height < 1) return ruxStatusSizeError;
    if (srcStep < 1 || dstStep < 1) return ruxStatusStepError;
    float rows[3][4];
    for (int i = 0; i < 12; i++) rows[i / 4][i % 4] = load<float>(twist + i);
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) {
            const uint8_t* const c = at(src, srcStep, 3 * x, y);
            uint8_t* const to = at(dst, dstStep, 3 * x, y);
            for (int i = 0; i < 3; i++) {
                to[i] = level == w7 ? twistedInSingle(c, rows[i]) : twistedInDouble(level, c, rows[i]);
            }
        }
    }
    return ruxStatusOk;
}

}
