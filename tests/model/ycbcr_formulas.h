// What the models of luma/chroma to RGB share: components, the vector forms' high product, and the scalar formulas
// that the 8-bit and the 16-bit outputs have in common. Chroma comes as the sample, 0 to 255.
#pragma once

#include <algorithm>
#include <cstdint>

namespace rux::model {

struct Rgb {
    uint8_t r, g, b;
};

inline uint8_t saturated(int32_t value)
{
    return static_cast<uint8_t>(std::clamp(value, 0, 255));
}

// The high half of a signed 16-bit product.
inline int32_t hi(int32_t a, int32_t k)
{
    return (a * k) >> 16;
}

inline Rgb shifted(int32_t r, int32_t g, int32_t b, int shift)
{
    return {saturated(r >> shift), saturated(g >> shift), saturated(b >> shift)};
}

// YCbCr with the chroma offsets folded into the constants.
inline Rgb foldedYCbCr(int32_t y, int32_t cb, int32_t cr)
{
    return shifted(y * 76284 + cr * 104595 - 14608761, y * 76284 - cb * 25690 - cr * 53281 + 8887730,
                   y * 76284 + cb * 132186 - 18140365, 16);
}

// YCbCr with centred chroma.
inline Rgb centredYCbCr(int32_t y, int32_t cb, int32_t cr)
{
    const int32_t luma = y * 76284 - 1220544;
    return shifted(luma + (cr - 128) * 104595, luma - (cb - 128) * 25690 - (cr - 128) * 53281,
                   luma + (cb - 128) * 132186, 16);
}

// YUV in 16 fractional bits.
inline Rgb scalarYuv(int32_t y, int32_t u, int32_t v)
{
    const int32_t luma = y << 16;
    return shifted(luma + (v - 128) * 74711, luma - (u - 128) * 25821 - (v - 128) * 38076, luma + (u - 128) * 133169,
                   16);
}

}
