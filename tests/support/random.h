// Numbers from a seed, the same on every build (the standard library's distributions are not), and what buffers are
// filled with.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <type_traits>

namespace rux::test {

class Random {
public:
    explicit Random(uint64_t seed) : state(seed) {}

    uint64_t next()
    {
        uint64_t z = state += 0x9E3779B97F4A7C15u;
        z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9u;
        z = (z ^ z >> 27) * 0x94D049BB133111EBu;
        return z ^ z >> 31;
    }
    uint32_t below(uint32_t count) { return static_cast<uint32_t>((next() >> 32) * count >> 32); }
    int between(int low, int high) { return low + static_cast<int>(below(static_cast<uint32_t>(high - low) + 1)); }
    bool oneIn(uint32_t count) { return below(count) == 0; }

private:
    uint64_t state;
};

void fillBytes(Random&, void* to, size_t bytes);

// How a row of elements is filled. A float is written through its bits where they matter.
template <class T>
using Fill = std::function<void(Random&, T* row, int count)>;

// Any bits: for floats NaN, infinities and denormals too.
template <class T>
void anyBits(Random& random, T* row, int count)
{
    fillBytes(random, row, static_cast<size_t>(count) * sizeof(T));
}

// Integers from low to high; floats between them, in steps of 1/256.
template <class T>
Fill<T> uniform(int low, int high)
{
    return [=](Random& random, T* row, int count) {
        for (int i = 0; i < count; i++) {
            const int whole = random.between(low, high);
            if constexpr (std::is_floating_point_v<T>) {
                row[i] = static_cast<T>(whole) + (whole < high ? static_cast<T>(random.below(256)) / 256 : 0);
            } else {
                row[i] = static_cast<T>(whole);
            }
        }
    };
}

template <class T>
Fill<T> constant(T value)
{
    return [=](Random&, T* row, int count) {
        for (int i = 0; i < count; i++) std::memcpy(row + i, &value, sizeof value);
    };
}

// The ends of the type's range and the values beside them; for floats also NaN of both kinds, infinities, zeros of
// both signs, denormals.
template <class T>
void extremes(Random& random, T* row, int count)
{
    if constexpr (std::is_same_v<T, float>) {
        static constexpr uint32_t bits[] = {0, 0x80000000, 0x3F800000, 0xBF800000, 0x7F800000, 0xFF800000, 0x7FC00001,
                                            0xFFC00000, 0x7FA00000, 0xFF800001, 1, 0x807FFFFF, 0x00800000, 0x7F7FFFFF,
                                            0xFF7FFFFF, 0x437F0000, 0xC7000000, 0x4F000000, 0xCF000000, 0x3F000000};
        for (int i = 0; i < count; i++) {
            std::memcpy(row + i, &bits[random.below(sizeof bits / sizeof *bits)], sizeof *row);
        }
    } else {
        using limits = std::numeric_limits<T>;
        const T values[] = {limits::min(), static_cast<T>(limits::min() + 1), static_cast<T>(limits::max() - 1),
                            limits::max(), static_cast<T>(limits::max() / 2), static_cast<T>(limits::max() / 2 + 1),
                            T(0), T(1), static_cast<T>(-1)};
        for (int i = 0; i < count; i++) row[i] = values[random.below(sizeof values / sizeof *values)];
    }
}

// Ordinary numbers: floats without NaN, infinities and denormals; all values of an integer.
template <class T>
void ordinary(Random& random, T* row, int count)
{
    if constexpr (std::is_floating_point_v<T>) uniform<T>(-1000, 1000)(random, row, count);
    else anyBits(random, row, count);
}

// The usual contents: a row is of any bits, of extremes, of ordinary values, of one value, or a bit of each.
template <class T>
void mixture(Random& random, T* row, int count)
{
    const auto fill = [&](T* part, int length) {
        switch (random.below(4)) {
        case 0: return anyBits(random, part, length);
        case 1: return extremes(random, part, length);
        default: return ordinary(random, part, length);
        }
    };
    if (random.oneIn(8)) {
        fill(row, 1);
        for (int i = 1; i < count; i++) std::memcpy(row + i, row, sizeof *row);
    } else if (random.oneIn(3)) {
        for (int i = 0; i < count;) {
            const int length = std::min(count - i, random.between(1, 24));
            fill(row + i, length);
            i += length;
        }
    } else {
        fill(row, count);
    }
}

}
