// Inverse DCT in 32-bit integers that wrap: columns, then rows, with 16-bit values between.
#include "video/inverse_dct.h"

namespace rux::px {
namespace {

// One pass over eight values, `spacing` apart; the passes differ in how they round to 16 bits.
template <int spacing, int32_t rounding, int shift>
inline void inversePass(const int16_t* in, int16_t* out)
{
    const auto x = [in](int k) { return static_cast<int32_t>(in[k * spacing]); };
    const auto put = [out](int k, int32_t value) {
        out[k * spacing] = static_cast<int16_t>((value + rounding) >> shift);
    };

    // Odd part: two rotations of three multiplications each, 15 fractional bits, then sqrt(2) with 12.
    const int32_t t = (x(5) + x(3)) * 27246;
    const int32_t w = t - 9041 * x(5);
    const int32_t s = t - 45451 * x(3);
    const int32_t h = (x(1) + x(7)) * 6393;
    const int32_t y = h + 25746 * x(1);
    const int32_t z = h - 38531 * x(7);
    const int32_t p = ((w + y + 2048) >> 12) * 5793;
    const int32_t q = ((s + z + 2048) >> 12) * 5793;
    const int32_t a = y - w;
    const int32_t b = z - s;

    // Even part, 15 fractional bits.
    const int32_t e = (x(0) + x(4)) * 32768;
    const int32_t f = (x(0) - x(4)) * 32768;
    const int32_t g = (x(2) + x(6)) * 17734;
    const int32_t evenHigh = 25080 * x(2) + g;
    const int32_t evenLow = g - 60547 * x(6);

    put(0, e + evenHigh + p);
    put(7, e + evenHigh - p);
    put(1, f + evenLow + (a + b));
    put(6, f + evenLow - (a + b));
    put(2, f - evenLow + (a - b));
    put(5, f - evenLow - (a - b));
    put(3, e - evenHigh + q);
    put(4, e - evenHigh - q);
}

// The transform into a block of 64; three fractional bits stay between the passes.
void inverseTransform(const uint8_t* coefficients, int16_t* block)
{
    for (int k = 0; k < 64; ++k) block[k] = load<int16_t>(coefficients + 2 * k);
    for (int column = 0; column < 8; ++column) inversePass<8, 2048, 12>(block + column, block + column);
    for (int row = 0; row < 8; ++row) inversePass<1, 0x100000, 21>(block + 8 * row, block + 8 * row);
}

inline uint8_t clamped(int32_t value, int32_t low, int32_t high)
{
    return static_cast<uint8_t>(value < low ? low : value > high ? high : value);
}

void inverseToWords(const int16_t* coefficients, uint8_t* dst, ptrdiff_t stride)
{
    int16_t block[64];
    inverseTransform(bytesOf(coefficients), block);
    for (int y = 0; y < 8; ++y, dst += stride)
        for (int x = 0; x < 8; ++x) store(dst + 2 * x, block[8 * y + x]);
}

// A transform's value has wrapped to 16 bits before it is clamped.
void inverseToBytes(const int16_t* coefficients, uint8_t* dst, ptrdiff_t stride)
{
    inverseToShiftedBytes(coefficients, dst, stride, {0, 0, 255});
}

void inverseToShiftedBytes(const int16_t* coefficients, uint8_t* dst, ptrdiff_t stride, LevelShift level)
{
    int16_t block[64];
    inverseTransform(bytesOf(coefficients), block);
    for (int y = 0; y < 8; ++y, dst += stride)
        for (int x = 0; x < 8; ++x) dst[x] = clamped(block[8 * y + x] + level.shift, level.clipMin, level.clipMax);
}

}
}
