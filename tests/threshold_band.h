// Contents and bands for the threshold tests: values of which many are equal, so that every side of a threshold and
// the threshold itself come up, and bands of them that are mostly in order.
#pragma once

#include <type_traits>
#include <utility>

#include "float_bits.h"

namespace rux::test {

// Both zeros, numbers of both signs, infinities, NaN of both kinds and signs, and neighbours by their bits.
inline void fewFloats(Random& random, float* row, int count)
{
    static constexpr uint32_t values[] = {0x00000000, 0x80000000, 0x00000001, 0x80000001, 0x3F7FFFFF, 0x3F800000,
                                          0x3F800001, 0xBF7FFFFF, 0xBF800000, 0xBF800001, 0x40400000, 0xC0400000,
                                          0x7F7FFFFF, 0xFF7FFFFF, 0x7F800000, 0xFF800000, 0x7FC00000, 0xFFC00001,
                                          0x7FA00000, 0xFFA00000};
    for (int i = 0; i < count; i++) std::memcpy(row + i, &values[random.below(20)], sizeof *row);
}

template <class T>
void pixels(Random& random, T* row, int count)
{
    if (random.oneIn(2)) return mixture<T>(random, row, count);
    if constexpr (std::is_same_v<T, float>) return fewFloats(random, row, count);
    else return random.oneIn(2) ? extremes<T>(random, row, count) : uniform<T>(100, 104)(random, row, count);
}

// thresholdLT, valueLT, thresholdGT, valueGT of three channels: the operations' arrays.
template <class T>
struct Band {
    T parts[4][3];

    explicit Band(Random& random)
    {
        for (auto& part : parts) pixels(random, part, 3);
        for (int c = 0; c < 3; c++) {
            repeatUntilNumber(random, parts[0][c]);
            repeatUntilNumber(random, parts[2][c]);
            if (parts[2][c] < parts[0][c]) std::swap(parts[0][c], parts[2][c]);
        }
        if (random.oneIn(24)) std::swap(parts[0], parts[2]);
        if (random.oneIn(8)) {   // a value is the threshold
            std::memcpy(parts[random.below(2) * 2 + 1], parts[2], sizeof parts[2]);
        }
    }

    // The entry of channel 0 as a scalar argument.
    auto scalar(int part) const
    {
        if constexpr (std::is_same_v<T, float>) {
            FloatBits bits;
            std::memcpy(&bits.bits, &parts[part][0], sizeof bits.bits);
            return bits;
        } else {
            return parts[part][0];
        }
    }

    Fill<T> array(int part) const
    {
        return [values = *this, part](Random&, T* row, int count) {
            std::memcpy(row, values.parts[part], static_cast<size_t>(count) * sizeof(T));
        };
    }

private:
    // A NaN among the thresholds is refused by most forms: mostly another takes its place.
    static void repeatUntilNumber(Random& random, T& threshold)
    {
        for (int tries = 0; tries < 4 && threshold != threshold; tries++) pixels(random, &threshold, 1);
    }
};

}
