// Floats by their bits, for tests in which signalling NaN and the zeros' signs count.
#pragma once

#include "support/image.h"

namespace rux::test {

constexpr uint32_t minusZero = 0x80000000, one = 0x3F800000, two = 0x40000000;
constexpr uint32_t infinity = 0x7F800000, minusInfinity = 0xFF800000, largest = 0x7F7FFFFF;
constexpr uint32_t signallingNaN = 0xFFA12345, quietedNaN = 0xFFE12345, invalidNaN = 0xFFC00000;

inline uint32_t bitsOf(const Image<float>& image, int x, int y = 0)
{
    uint32_t bits;
    std::memcpy(&bits, image.row(y) + 4 * x, sizeof bits);
    return bits;
}

inline void setBits(const Image<float>& image, int x, int y, uint32_t bits)
{
    std::memcpy(image.row(y) + 4 * x, &bits, sizeof bits);
}

inline bool isNaN(uint32_t bits)
{
    return (bits & 0x7FFFFFFF) > infinity;
}

inline Fill<float> allOf(uint32_t bits)
{
    return [=](Random&, float* row, int count) {
        for (int i = 0; i < count; i++) std::memcpy(row + i, &bits, sizeof bits);
    };
}

// Whole numbers from low to high: where sums and products of them need no rounding, its mode is no matter.
inline Fill<float> wholeNumbers(int low, int high)
{
    return [=](Random& random, float* row, int count) {
        for (int i = 0; i < count; i++) row[i] = static_cast<float>(random.between(low, high));
    };
}

}
