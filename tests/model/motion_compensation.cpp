#include "model/motion_compensation.h"

#include <algorithm>

#include "model/half_pel.h"

namespace rux::model {
namespace {

struct Size {
    int width, height;
};

uint8_t sat8(int value)
{
    return static_cast<uint8_t>(std::clamp(value, 0, 255));
}

int sat16(int value)
{
    return std::clamp(value, -32768, 32767);
}

int avg(int u, int v)
{
    return (u + v + 1) >> 1;
}

int floor0(int u)
{
    return std::max(u, 0);
}

int dec(int u)
{
    return u == 0 ? 255 : u == 128 ? 128 : u - 1;
}

int decGuard(int u)
{
    return dec(std::max(u, 1));
}

int averaged(const Neighbours& s, ruxHalfPelMode mode)
{
    switch (mode & mcHalfBoth) {
    case mcFullPel: return s.a;
    case mcHalfHorz: return avg(s.a, s.b);
    default: return avg(s.a, s.c);
    }
}

// One direction.
int predicted(Level level, Size size, const Neighbours& s, ruxHalfPelMode mode, int r, bool lastRow)
{
    if (level == px || level == m6) return exact(s, mode, r);
    const bool both = (mode & mcHalfBoth) == mcHalfBoth;
    const int P0 = avg(s.a, s.b), P1 = avg(s.c, s.d);
    if (size.width == 16) {
        if (level == a6) return exact(s, mode, r);
        if (!both) return averaged(s, mode);
        return lastRow ? avg(P0, P1) : avg(decGuard(P0), P1);
    }
    if (r & 1) return exact(s, mode, r);
    if (!both) return averaged(s, mode);
    return level == w7 && size.height != 16 ? avg(decGuard(P0), P1) : avg(dec(P0), P1);
}

// Either direction of two, at a6 and w7.
int predictedOfTwo(const Neighbours& s, ruxHalfPelMode mode, bool odd)
{
    const int P0 = avg(s.a, s.b), P1 = avg(s.c, s.d);
    switch (mode & mcHalfBoth) {
    case mcFullPel: return s.a;
    case mcHalfHorz: return odd ? avg(floor0(s.a - 1), s.b) : avg(s.a, s.b);
    case mcHalfVert: return odd ? avg(floor0(s.a - 1), s.c) : avg(s.a, s.c);
    default: return odd ? avg(P0, floor0(P1 - 2)) : avg(P0, floor0(P1 - 1));
    }
}

uint8_t ofBoth(Level level, Size size, const Neighbours& forward, ruxHalfPelMode modeForward,
               const Neighbours& backward, ruxHalfPelMode modeBackward, int e, int r)
{
    if (level == px || level == m6) {
        return sat8((exact(forward, modeForward, r) + exact(backward, modeBackward, r) + 2 * e + 1) >> 1);
    }
    const bool odd = r & 1 && !(level == w7 && size.width == 16);
    const int pf = predictedOfTwo(forward, modeForward, odd), pb = predictedOfTwo(backward, modeBackward, odd);
    const int t = sat16(sat16(sat16(pf + e) + e) + pb);
    return sat8((floor0(t) + 1) >> 1);
}

ruxStatus motionCompensation(Level level, Size size, const uint8_t* src, int32_t srcStep, const int16_t* diff,
                             int32_t diffStep, uint8_t* dst, int32_t dstStep, ruxHalfPelMode mode, int32_t r)
{
    if (!src || !diff || !dst) return ruxStatusNullPointer;
    for (int y = 0; y < size.height; y++) {
        for (int x = 0; x < size.width; x++) {
            const Neighbours s = neighbours(src, srcStep, mode, x, y);
            const int p = predicted(level, size, s, mode, r, y == size.height - 1);
            *at(dst, dstStep, x, y) = sat8(p + load<int16_t>(at(diff, diffStep, x, y)));
        }
    }
    return ruxStatusOk;
}

ruxStatus motionCompensation(Level level, Size size, const uint8_t* srcForward, int32_t srcForwardStep,
                             ruxHalfPelMode modeForward, const uint8_t* srcBackward, int32_t srcBackwardStep,
                             ruxHalfPelMode modeBackward, const int16_t* diff, int32_t diffStep, uint8_t* dst,
                             int32_t dstStep, int32_t r)
{
    if (!srcForward || !srcBackward || !diff || !dst) return ruxStatusNullPointer;
    for (int y = 0; y < size.height; y++) {
        for (int x = 0; x < size.width; x++) {
            const Neighbours forward = neighbours(srcForward, srcForwardStep, modeForward, x, y);
            const Neighbours backward = neighbours(srcBackward, srcBackwardStep, modeBackward, x, y);
            const int e = load<int16_t>(at(diff, diffStep, x, y));
            *at(dst, dstStep, x, y) = ofBoth(level, size, forward, modeForward, backward, modeBackward, e, r);
        }
    }
    return ruxStatusOk;
}

}

#define RUX_MODEL_MOTION_COMPENSATION(width, height)                                                                  \
    ruxStatus ruxiMC##width##x##height##_8u_C1(Level level, const uint8_t* src, int32_t srcStep, const int16_t* diff, \
                                               int32_t diffStep, uint8_t* dst, int32_t dstStep,                       \
                                               ruxHalfPelMode mcType, int32_t roundControl)                           \
    {                                                                                                                 \
        return motionCompensation(level, {width, height}, src, srcStep, diff, diffStep, dst, dstStep, mcType,         \
                                  roundControl);                                                                      \
    }                                                                                                                 \
    ruxStatus ruxiMC##width##x##height##B_8u_C1(                                                                      \
        Level level, const uint8_t* srcForward, int32_t srcForwardStep, ruxHalfPelMode mcTypeForward,                 \
        const uint8_t* srcBackward, int32_t srcBackwardStep, ruxHalfPelMode mcTypeBackward, const int16_t* diff,      \
        int32_t diffStep, uint8_t* dst, int32_t dstStep, int32_t roundControl)                                        \
    {                                                                                                                 \
        return motionCompensation(level, {width, height}, srcForward, srcForwardStep, mcTypeForward, srcBackward,     \
                                  srcBackwardStep, mcTypeBackward, diff, diffStep, dst, dstStep, roundControl);       \
    }
RUX_MODEL_MOTION_COMPENSATION(16, 16)
RUX_MODEL_MOTION_COMPENSATION(16, 8)
RUX_MODEL_MOTION_COMPENSATION(8, 16)
RUX_MODEL_MOTION_COMPENSATION(8, 8)
RUX_MODEL_MOTION_COMPENSATION(8, 4)

}
