// Forward DCT in 32-bit integers that wrap: rows into the destination, then columns there, with 16-bit values between.
#include "video/forward_dct.h"

namespace rux::px {
namespace {

// How each pass rounds. Three fractional bits stay after the rows; the columns take them and the transform's scale off.
struct RowRounding {
    static int32_t sum(int32_t value) { return value * 8; }
    static int32_t rotation(int32_t value) { return (value + 2048) >> 12; }
};

struct ColumnRounding {
    static int32_t sum(int32_t value) { return (value + 32) >> 6; }
    static int32_t rotation(int32_t value) { return (value + 0x100000) >> 21; }
};

// Eight values to eight, each `spacing` bytes apart.
template <typename Rounding, typename Sample>
inline void forwardPass(const uint8_t* in, int inSpacing, uint8_t* out, int outSpacing)
{
    const auto at = [=](int k) -> int32_t { return load<Sample>(in + k * inSpacing); };
    const auto put = [=](int k, int32_t value) { store(out + k * outSpacing, static_cast<int16_t>(value)); };
    const int32_t x[8] = {at(0), at(1), at(2), at(3), at(4), at(5), at(6), at(7)};

    const int32_t a = x[0] + x[7] + x[3] + x[4];
    const int32_t b = x[0] + x[7] - (x[3] + x[4]);
    const int32_t c = x[1] + x[6] + x[2] + x[5];
    const int32_t d = x[1] + x[6] - (x[2] + x[5]);
    put(0, Rounding::sum(a + c));
    put(4, Rounding::sum(a - c));

    const int32_t e = (b + d) * 17734;
    put(2, Rounding::rotation(25080 * b + e));
    put(6, Rounding::rotation(e - 60547 * d));

    // Odd part: sqrt(2) with 15 fractional bits leaves 3, which the other two differences get by a factor of 8.
    const int32_t p = ((x[3] - x[4]) * 46341 + 2048) >> 12;
    const int32_t q = ((x[0] - x[7]) * 46341 + 2048) >> 12;
    const int32_t m = 8 * ((x[2] - x[5]) + (x[1] - x[6]));
    const int32_t n = 8 * ((x[5] - x[2]) + (x[1] - x[6]));

    const int32_t f = (q + m + p + n) * 799;
    put(1, Rounding::rotation(f + 3218 * (q + m)));
    put(7, Rounding::rotation(f - 4816 * (p + n)));

    const int32_t g = (q - m + p - n) * 3406;
    put(3, Rounding::rotation(g - 5681 * (p - n)));
    put(5, Rounding::rotation(g - 1130 * (q - m)));
}

template <typename Sample>
void forwardTransform(const uint8_t* samples, ptrdiff_t stride, uint8_t* coefficients)
{
    for (int row = 0; row < 8; ++row, samples += stride)
        forwardPass<RowRounding, Sample>(samples, sizeof(Sample), coefficients + 16 * row, 2);
    for (int column = 0; column < 16; column += 2)
        forwardPass<ColumnRounding, int16_t>(coefficients + column, 16, coefficients + column, 16);
}

}
}
