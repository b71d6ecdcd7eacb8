#include "model/quant.h"

#include <xmmintrin.h>

#include <algorithm>
#include <cmath>

namespace rux::model {
namespace {

int16_t wrapped(int32_t value)
{
    return static_cast<int16_t>(static_cast<uint32_t>(value));
}

int32_t times(int32_t a, int32_t b)
{
    return static_cast<int32_t>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
}

int32_t plus(int32_t a, int32_t b)
{
    return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}

int signOf(int32_t v)
{
    return (v > 0) - (v < 0);
}

int16_t clampedForward(int32_t r)
{
    return static_cast<int16_t>(std::clamp(r, -2047, 2047));
}

int16_t clampedInverse(int16_t d)
{
    return std::clamp<int16_t>(d, -2048, 2047);
}

bool isAligned(const void* pointer)
{
    return reinterpret_cast<uintptr_t>(pointer) % 16 == 0;
}

// The processor's estimate, as it stands.
float reciprocalEstimate(float value)
{
    return _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(value)));
}

// The element times 16 or 32, over the scale, times the matrix, cut toward zero.
int32_t product(Level level, int32_t element, int32_t factor, int32_t quantScale, float weight)
{
    const int32_t scaled = element * factor;
    if (level == px || level == m6) {
        const double reciprocal = 1.0 / quantScale;
        return static_cast<int32_t>((scaled * reciprocal) * static_cast<double>(weight));
    }
    const float scale = static_cast<float>(quantScale);
    const float reciprocal = level == a6 ? 1.0f / scale : reciprocalEstimate(scale);
    const float first = static_cast<float>(scaled) * reciprocal;
    const float t = first * weight;
    return static_cast<int32_t>(t);
}

int16_t magnitude(int16_t v)
{
    return v < 0 ? wrapped(-v) : v;   // -32768 stays
}

}

ruxStatus ruxiQuantIntra_MPEG2_16s_C1I(Level level, int16_t* srcDst, int32_t quantScale, const float* matrix,
                                       int32_t* count)
{
    if (!srcDst || !matrix || !count) return ruxStatusNullPointer;
    if (quantScale == 0) return ruxStatusDivideByZero;
    const bool signedProduct = level == w7 && !(isAligned(srcDst) && isAligned(matrix));
    int32_t last = 0;
    for (int k = 1; k < 64; k++) {
        const int16_t v = load<int16_t>(srcDst + k);
        const float weight = load<float>(matrix + k);
        int32_t r;
        if (signedProduct) {
            r = (product(level, v, 32, quantScale, weight) + signOf(v)) >> 1;
        } else {
            const int32_t s = v < 0 ? -1 : level == w7 && v == 0 ? 0 : 1;
            r = (s * (product(level, magnitude(v), 32, quantScale, weight) + s)) >> 1;
        }
        const int16_t stored = clampedForward(r);
        store(srcDst + k, stored);
        if (stored != 0) last = k;
    }
    store(count, level == w7 ? 64 : last);
    return ruxStatusOk;
}

ruxStatus ruxiQuant_MPEG2_16s_C1I(Level level, int16_t* srcDst, int32_t quantScale, const float* matrix, int32_t* count)
{
    if (!srcDst || !matrix || !count) return ruxStatusNullPointer;
    if (quantScale == 0) return ruxStatusDivideByZero;
    const bool aligned = isAligned(srcDst) && isAligned(matrix);
    int32_t last = 0;
    bool any = false;
    for (int k = 0; k < 64; k++) {
        const int16_t v = load<int16_t>(srcDst + k);
        const float weight = load<float>(matrix + k);
        const int32_t s = v < 0 ? -1 : 1;
        const int32_t r = level == w7 ? product(level, v, 16, quantScale, weight)
                                      : s * product(level, magnitude(v), 16, quantScale, weight);
        const int16_t stored = clampedForward(r);
        store(srcDst + k, stored);
        if (stored != 0) last = k, any = true;
    }
    if (level != w7) store(count, last);
    else if (aligned) store(count, int32_t(any));
    return ruxStatusOk;
}

// An even sum of the coefficients changes the last by one: toward even from odd, toward odd from even.
static void controlMismatch(int16_t* block, int32_t sum)
{
    if (sum & 1) return;
    const int16_t last = load<int16_t>(block + 63);
    store(block + 63, wrapped(last & 1 ? last - 1 : last + 1));
}

ruxStatus ruxiQuantInvIntra_MPEG2_16s_C1I(Level level, int16_t* srcDst, int32_t quantScale, const int16_t* matrix)
{
    if (!srcDst || !matrix) return ruxStatusNullPointer;
    int32_t sum = load<int16_t>(srcDst);
    for (int k = 1; k < 64; k++) {
        const int16_t v = load<int16_t>(srcDst + k);
        const int16_t weight = load<int16_t>(matrix + k);
        int16_t d;
        if (level == px || level == m6) {
            const int32_t p = times(times(v, times(2, quantScale)), weight);
            d = wrapped(p / 32);
        } else {
            const int16_t p = wrapped(times(wrapped(times(v, wrapped(quantScale))), weight));
            d = static_cast<int16_t>(wrapped(p + (v > 0 ? 0 : 15)) >> 4);
        }
        d = clampedInverse(d);
        store(srcDst + k, d);
        sum += d;
    }
    controlMismatch(srcDst, sum);
    return ruxStatusOk;
}

ruxStatus ruxiQuantInv_MPEG2_16s_C1I(Level level, int16_t* srcDst, int32_t quantScale, const int16_t* matrix)
{
    if (!srcDst) return ruxStatusNullPointer;
    int32_t sum = 0;
    for (int k = 0; k < 64; k++) {
        const int16_t v = load<int16_t>(srcDst + k);
        const int s = signOf(v);
        int16_t d;
        if (level == px || level == m6) {
            if (v == 0) continue;
            if (matrix) {
                const int32_t p = times(times(load<int16_t>(matrix + k), quantScale), 2 * v + s);
                d = wrapped(p / 32);
            } else {
                const int32_t p = plus(times(v, times(2, quantScale)), times(s, quantScale));
                d = wrapped(p / 2);
            }
        } else {
            int16_t p = wrapped(times(wrapped(2 * v + s), wrapped(quantScale)));
            if (matrix) p = wrapped(times(p, load<int16_t>(matrix + k)));
            const int bias = matrix ? 31 : 1;
            d = static_cast<int16_t>(wrapped(p + (v < 0 ? bias : 0)) >> (matrix ? 5 : 1));
        }
        d = clampedInverse(d);
        store(srcDst + k, d);
        sum += d;
    }
    controlMismatch(srcDst, sum);
    return ruxStatusOk;
}

}
