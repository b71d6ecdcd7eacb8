// The row filter in groups of four pixels, then one at a time; sums wrap in 32 bits.
//
// A finish makes a pixel of a sum.
#pragma once

#include "filter/row.h"

namespace rux::RUX_LEVEL {
namespace {

inline uint8_t saturated(int32_t value)
{
    return static_cast<uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value);
}

struct Undivided {
    uint8_t operator()(int32_t sum) const { return saturated(sum); }
};

// (sum + 1) >> shift, and 0 for a sum below 1: the sum that is added to is not negative, and 2^31 is no overflow.
struct ShiftedFromOne {
    int32_t shift;

    uint8_t operator()(int32_t sum) const
    {
        return sum < 1 ? 0 : saturated(static_cast<int32_t>((static_cast<uint32_t>(sum) + 1) >> shift));
    }
};

inline int32_t sumOfTaps(const uint8_t* src, const Kernel& kernel)
{
    int32_t sum = 0;
    for (int32_t t = 0; t < kernel.size; ++t) sum += wrappingProduct(kernel.tap(t), src[t]);
    return sum;
}

template <typename Finish>
inline void filterSingly(Finish finish, const uint8_t* src, uint8_t* dst, int32_t from, int32_t width,
                         const Kernel& kernel)
{
    for (int32_t x = from; x < width; ++x) dst[x] = finish(sumOfTaps(src + x, kernel));
}

template <typename Finish>
inline void filterInFours(Finish finish, const uint8_t* src, uint8_t* dst, int32_t width, const Kernel& kernel)
{
    int32_t x = 0;
    for (; width - x >= 4; x += 4) {
        int32_t a = 0, b = 0, c = 0, d = 0;
        for (int32_t t = 0; t < kernel.size; ++t) {
            const int32_t tap = kernel.tap(t);
            const uint8_t* const pixels = src + x + t;
            a += wrappingProduct(tap, pixels[0]);
            b += wrappingProduct(tap, pixels[1]);
            c += wrappingProduct(tap, pixels[2]);
            d += wrappingProduct(tap, pixels[3]);
        }
        dst[x] = finish(a);
        dst[x + 1] = finish(b);
        dst[x + 2] = finish(c);
        dst[x + 3] = finish(d);
    }
    filterSingly(finish, src, dst, x, width, kernel);
}

// Factored is the level's own division by a factor.
template <typename Factored>
[[gnu::noinline]] void filterInFours(const RowImages& images, const Kernel& kernel, const Divisor& divisor)
{
    const auto filterWith = [&](auto finish) {
        forEachRow(images, [&](const uint8_t* src, uint8_t* dst) {
            filterInFours(finish, src, dst, images.roiSize.width, kernel);
        });
    };
    switch (divisor.division) {
    case Division::none: return filterWith(Undivided());
    case Division::shift: return filterWith(ShiftedFromOne{divisor.shift});
    case Division::factor: return filterWith(Factored{divisor.factor});
    }
}

}
}
