#include "model/dct.h"

#include <algorithm>
#include <array>

#include "model/wrapping.h"

namespace rux::model {
namespace {

using Eight = std::array<int16_t, 8>;   // a row or a column
using Block = std::array<Eight, 8>;

template <class Transform>
Block eachRow(const Block& block, const Transform& transform)
{
    Block result;
    for (int r = 0; r < 8; r++) result[r] = transform(block[r], r);
    return result;
}

Block transposed(const Block& block)
{
    Block result;
    for (int r = 0; r < 8; r++) {
        for (int c = 0; c < 8; c++) result[c][r] = block[r][c];
    }
    return result;
}

template <class Transform>
Block eachColumn(const Block& block, const Transform& transform)
{
    return transposed(eachRow(transposed(block), transform));
}

// px: 32 bits within a pass, 16 between the passes.

Eight forwardPlain(const Eight& in, bool second)
{
    std::array<Wrapping, 8> x;
    for (int i = 0; i < 8; i++) x[i] = in[i];
    const auto rotated = [&](Wrapping y) { return (second ? (y + 0x100000) >> 21 : (y + 2048) >> 12).low16(); };
    const auto summed = [&](Wrapping y) { return (second ? (y + 32) >> 6 : y << 3).low16(); };
    Eight out;

    const Wrapping a = x[0] + x[7] + x[3] + x[4];
    const Wrapping b = x[0] + x[7] - (x[3] + x[4]);
    const Wrapping c = x[1] + x[6] + x[2] + x[5];
    const Wrapping d = x[1] + x[6] - (x[2] + x[5]);
    out[0] = summed(a + c);
    out[4] = summed(a - c);
    const Wrapping e = (b + d) * 17734;
    out[2] = rotated(25080 * b + e);
    out[6] = rotated(e - 60547 * d);

    const Wrapping p = ((x[3] - x[4]) * 46341 + 2048) >> 12;
    const Wrapping q = ((x[0] - x[7]) * 46341 + 2048) >> 12;
    const Wrapping m = 8 * ((x[2] - x[5]) + (x[1] - x[6]));
    const Wrapping n = 8 * ((x[5] - x[2]) + (x[1] - x[6]));
    Wrapping u = q + m;
    Wrapping v = p + n;
    const Wrapping f = (u + v) * 799;
    out[1] = rotated(f + 3218 * u);
    out[7] = rotated(f - 4816 * v);
    u = q - m;
    v = p - n;
    const Wrapping g = (u + v) * 3406;
    out[3] = rotated(g - 5681 * v);
    out[5] = rotated(g - 1130 * u);
    return out;
}

Eight inversePlain(const Eight& in, bool second)
{
    std::array<Wrapping, 8> x;
    for (int i = 0; i < 8; i++) x[i] = in[i];
    const auto rounded = [&](Wrapping y) { return (second ? (y + 0x100000) >> 21 : (y + 2048) >> 12).low16(); };

    const Wrapping t = (x[5] + x[3]) * 27246;
    const Wrapping w = t - 9041 * x[5];
    const Wrapping s = t - 45451 * x[3];
    const Wrapping h = (x[1] + x[7]) * 6393;
    const Wrapping y = h + 25746 * x[1];
    const Wrapping z = h - 38531 * x[7];
    const Wrapping P = ((w + y + 2048) >> 12) * 5793;
    const Wrapping Q = ((s + z + 2048) >> 12) * 5793;
    const Wrapping A = y - w;
    const Wrapping B = z - s;
    const Wrapping E = (x[0] + x[4]) << 15;
    const Wrapping F = (x[0] - x[4]) << 15;
    const Wrapping g = (x[2] + x[6]) * 17734;
    const Wrapping H = 25080 * x[2] + g;
    const Wrapping J = g - 60547 * x[6];
    return {rounded(E + H + P),       rounded(F + J + (A + B)), rounded(F - J + (A - B)), rounded(E - H + Q),
            rounded(E - H - Q),       rounded(F - J - (A - B)), rounded(F + J - (A + B)), rounded(E + H - P)};
}

// The vector levels: saturating 16-bit columns, 32-bit rows of multiply-and-add.

int16_t sat16(int32_t value)
{
    return static_cast<int16_t>(std::clamp(value, -32768, 32767));
}

int16_t add(int16_t a, int16_t b)
{
    return sat16(a + b);
}

int16_t sub(int16_t a, int16_t b)
{
    return sat16(a - b);
}

int16_t shiftedLeft(int16_t a, int count)
{
    return (Wrapping(a) << count).low16();
}

int16_t mulhi(int16_t a, int16_t b)
{
    return static_cast<int16_t>((a * b) >> 16);
}

constexpr int16_t tg1 = 13036, tg2 = 27146, tg3m1 = -21746, c4m1 = -19195, c4h = 23170;

constexpr int32_t rowTables[4][8] = {
    {16384, 22725, 21407, 19266, 16384, 12873, 8867, 4520},
    {22725, 31521, 29692, 26722, 22725, 17855, 12299, 6270},
    {21407, 29692, 27969, 25172, 21407, 16819, 11585, 5906},
    {19266, 26722, 25172, 22654, 19266, 15137, 10426, 5315},
};
constexpr int tableOfRow[8] = {0, 1, 2, 3, 0, 3, 2, 1};
constexpr int32_t inverseRowBias[8] = {65536, 5802, 4520, 3408, 2048, 910, 1024, 746};

Eight forwardColumn(Level level, const Eight& s)
{
    const auto low = [](int16_t value) { return static_cast<int16_t>(value | 1); };
    const int16_t a16 = shiftedLeft(add(s[1], s[6]), 3), a25 = shiftedLeft(add(s[2], s[5]), 3);
    const int16_t d07 = shiftedLeft(sub(s[0], s[7]), 3), d34 = shiftedLeft(sub(s[3], s[4]), 3);
    const int16_t d16 = shiftedLeft(sub(s[1], s[6]), 4), d25 = shiftedLeft(sub(s[2], s[5]), 4);

    int16_t e0, e1;
    if (level == w7) {
        e0 = shiftedLeft(add(add(s[0], s[7]), add(s[3], s[4])), 3);
        e1 = shiftedLeft(sub(add(s[0], s[7]), add(s[3], s[4])), 3);
    } else {
        const int16_t a07 = shiftedLeft(add(s[0], s[7]), 3), a34 = shiftedLeft(add(s[3], s[4]), 3);
        e0 = add(a07, a34);
        e1 = sub(a07, a34);
    }
    const int16_t e2 = add(a16, a25), e3 = sub(a16, a25);
    const int16_t m1 = low(mulhi(add(d16, d25), c4h)), m2 = mulhi(sub(d16, d25), c4h);
    const int16_t p = add(d34, m2), q = sub(d34, m2), u = add(d07, m1), v = sub(d07, m1);
    Eight out;
    out[0] = add(e0, e2);
    out[1] = low(add(mulhi(tg1, p), u));
    out[2] = low(add(mulhi(tg2, e3), e1));
    out[3] = sub(v, add(mulhi(tg3m1, q), q));
    out[4] = sub(e0, e2);
    out[5] = add(add(mulhi(tg3m1, v), v), q);
    out[6] = low(sub(mulhi(tg2, e1), e3));
    out[7] = sub(mulhi(tg1, u), p);
    return out;
}

Eight forwardRow(const Eight& x, int row)
{
    const auto& K = rowTables[tableOfRow[row]];
    Wrapping a[4], b[4];
    for (int i = 0; i < 4; i++) {
        a[i] = add(x[i], x[7 - i]);
        b[i] = sub(x[i], x[7 - i]);
    }
    const Wrapping y[8] = {
        K[0] * (a[0] + a[1] + a[2] + a[3]),
        K[1] * b[0] + K[3] * b[1] + K[5] * b[2] + K[7] * b[3],
        K[2] * a[0] + K[6] * a[1] - K[6] * a[2] - K[2] * a[3],
        K[3] * b[0] - K[7] * b[1] - K[1] * b[2] - K[5] * b[3],
        K[4] * (a[0] - a[1] - a[2] + a[3]),
        K[5] * b[0] - K[1] * b[1] + K[7] * b[2] + K[3] * b[3],
        K[6] * a[0] - K[2] * a[1] + K[2] * a[2] - K[6] * a[3],
        K[7] * b[0] - K[5] * b[1] + K[3] * b[2] - K[1] * b[3],
    };
    Eight out;
    for (int k = 0; k < 8; k++) out[k] = sat16(((y[k] + 0x80000) >> 20).value());
    return out;
}

Eight inverseRow(const Eight& in, int row)
{
    const auto& K = rowTables[tableOfRow[row]];
    const Wrapping R = inverseRowBias[row];
    std::array<Wrapping, 8> x;
    for (int i = 0; i < 8; i++) x[i] = in[i];
    const Wrapping A[4] = {
        K[0] * x[0] + K[4] * x[4] + K[2] * x[2] + K[6] * x[6] + R,
        K[0] * x[0] - K[4] * x[4] + K[6] * x[2] - K[2] * x[6] + R,
        K[0] * x[0] - K[4] * x[4] - K[6] * x[2] + K[2] * x[6] + R,
        K[0] * x[0] + K[4] * x[4] - K[2] * x[2] - K[6] * x[6] + R,
    };
    const Wrapping B[4] = {
        K[1] * x[1] + K[3] * x[3] + K[5] * x[5] + K[7] * x[7],
        K[3] * x[1] - K[7] * x[3] - K[1] * x[5] - K[5] * x[7],
        K[5] * x[1] - K[1] * x[3] + K[7] * x[5] + K[3] * x[7],
        K[7] * x[1] - K[5] * x[3] + K[3] * x[5] - K[1] * x[7],
    };
    Eight out;
    for (int i = 0; i < 4; i++) {
        out[i] = sat16(((A[i] + B[i]) >> 12).value());
        out[7 - i] = sat16(((A[i] - B[i]) >> 12).value());
    }
    return out;
}

Eight inverseColumn(const Eight& r)
{
    const int16_t a = add(mulhi(r[5], tg3m1), r[5]), b = add(mulhi(r[3], tg3m1), r[3]);
    const int16_t c = add(a, r[3]), d = sub(r[5], b);
    const int16_t e = add(mulhi(r[7], tg1), r[1]), f = sub(mulhi(r[1], tg1), r[7]);
    const int16_t g = add(mulhi(r[6], tg2), r[2]), h = sub(mulhi(r[2], tg2), r[6]);
    const int16_t T7 = add(c, e), T3 = add(f, d), n = sub(e, c), o = sub(f, d);
    const int16_t p = add(n, o), q = sub(n, o);
    const int16_t P = add(mulhi(p, c4m1), p), Q = add(mulhi(q, c4m1), q);
    const int16_t s = add(r[0], r[4]), t = sub(r[0], r[4]);
    const int16_t u0 = add(s, g), u3 = sub(s, g), u1 = add(t, h), u2 = sub(t, h);
    const int16_t sums[8] = {add(u0, T7), add(u1, P), add(u2, Q), add(u3, T3),
                             sub(u3, T3), sub(u2, Q), sub(u1, P), sub(u0, T7)};
    Eight out;
    for (int i = 0; i < 8; i++) out[i] = static_cast<int16_t>(sums[i] >> 5);
    return out;
}

Block forward(Level level, const Block& samples)
{
    if (level == px) {
        const Block rows = eachRow(samples, [](const Eight& x, int) { return forwardPlain(x, false); });
        return eachColumn(rows, [](const Eight& x, int) { return forwardPlain(x, true); });
    }
    const Block columns = eachColumn(samples, [&](const Eight& x, int) { return forwardColumn(level, x); });
    return eachRow(columns, forwardRow);
}

Block inverse(Level level, const Block& coefficients)
{
    if (level == px) {
        const Block columns = eachColumn(coefficients, [](const Eight& x, int) { return inversePlain(x, false); });
        return eachRow(columns, [](const Eight& x, int) { return inversePlain(x, true); });
    }
    const Block rows = eachRow(coefficients, inverseRow);
    return eachColumn(rows, [](const Eight& x, int) { return inverseColumn(x); });
}

template <class T>
Block loadBlock(const T* src, int32_t step)
{
    Block block;
    for (int y = 0; y < 8; y++) {
        for (int x = 0; x < 8; x++) block[y][x] = load<T>(at(src, step, x, y));
    }
    return block;
}

template <class T, class Finish>
void storeBlock(const Block& block, T* dst, int32_t step, const Finish& finish)
{
    for (int y = 0; y < 8; y++) {
        for (int x = 0; x < 8; x++) store(at(dst, step, x, y), static_cast<T>(finish(block[y][x])));
    }
}

int16_t asItIs(int16_t value)
{
    return value;
}

template <class T>
ruxStatus forwardOperation(Level level, const T* src, int32_t srcStep, int16_t* dst)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (srcStep < 1) return ruxStatusStepError;
    storeBlock(forward(level, loadBlock(src, srcStep)), dst, 16, asItIs);
    return ruxStatusOk;
}

template <class T, class Finish>
ruxStatus inverseOperation(Level level, const int16_t* src, T* dst, int32_t dstStep, const Finish& finish)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (dstStep < 1) return ruxStatusStepError;
    storeBlock(inverse(level, loadBlock(src, 16)), dst, dstStep, finish);
    return ruxStatusOk;
}

}

ruxStatus ruxiDCT8x8Fwd_16s_C1R(Level level, const int16_t* src, int32_t srcStep, int16_t* dst)
{
    return forwardOperation(level, src, srcStep, dst);
}

ruxStatus ruxiDCT8x8Fwd_8u16s_C1R(Level level, const uint8_t* src, int32_t srcStep, int16_t* dst)
{
    return forwardOperation(level, src, srcStep, dst);
}

ruxStatus ruxiDCT8x8Inv_16s_C1R(Level level, const int16_t* src, int16_t* dst, int32_t dstStep)
{
    return inverseOperation(level, src, dst, dstStep, asItIs);
}

ruxStatus ruxiDCT8x8Inv_16s8u_C1R(Level level, const int16_t* src, uint8_t* dst, int32_t dstStep)
{
    return inverseOperation(level, src, dst, dstStep, [](int16_t value) { return std::clamp<int>(value, 0, 255); });
}

ruxStatus ruxiDCT8x8InvLSClip_16s8u_C1R(Level level, const int16_t* src, uint8_t* dst, int32_t dstStep,
                                        int16_t levelShift, uint8_t clipMin, uint8_t clipMax)
{
    return inverseOperation(level, src, dst, dstStep, [&](int16_t value) {
        if (level == px) {
            const int32_t v = value + levelShift;
            return v < clipMin ? int(clipMin) : v > clipMax ? int(clipMax) : v;
        }
        const int16_t v = Wrapping(value + levelShift).low16();
        const int byte = std::clamp<int>(v, 0, 255);
        return std::min(std::max(byte, int(clipMin)), int(clipMax));
    });
}

}
