// The Sobel filters as px and m6 have them: one pass down the image with all sums in the destination.
//
// What a source row gives along the row is formed once and goes into the result rows above it, its own and the one
// below. An image one column wide is handled as two columns.
#pragma once

#include "filter/sobel.h"

namespace rux::RUX_LEVEL {
namespace {

// The places of a pixel in the result rows above a source row, beside it and below it.
struct ResultRows {
    uint8_t* above;
    uint8_t* here;
    uint8_t* below;

    ResultRows at(ptrdiff_t x) const { return {above + 2 * x, here + 2 * x, below + 2 * x}; }
};

// What the first, a middle and the last source row do to the results. Words: one or more pixels' 16-bit words.
template <typename Kernel>
struct Accumulation;

template <>
struct Accumulation<DerivativeX> {
    struct First {
        template <typename Words>
        static void apply(Words d, ResultRows to)
        {
            (d + d).store(to.here);
            d.store(to.below);
        }
    };
    struct Middle {
        template <typename Words>
        static void apply(Words d, ResultRows to)
        {
            d.store(to.below);
            const Words sum = Words::load(to.here) + d;
            sum.store(to.here);
            (Words::load(to.above) + sum).store(to.above);
        }
    };
    struct Last {
        template <typename Words>
        static void apply(Words d, ResultRows to)
        {
            const Words sum = Words::load(to.here) + d;
            (Words::load(to.above) + sum).store(to.above);
            (sum + d + d).store(to.here);
        }
    };
};

template <RowOrder rowOrder>
struct Accumulation<DerivativeY<rowOrder>> {
    template <typename Words>
    static void finish(Words lower, uint8_t* to)
    {
        const Words upper = Words::load(to);
        DerivativeY<rowOrder>::across(upper, upper, lower).store(to);
    }

    struct First {
        template <typename Words>
        static void apply(Words h, ResultRows to)
        {
            h.store(to.here);
            h.store(to.below);
        }
    };
    struct Middle {
        template <typename Words>
        static void apply(Words h, ResultRows to)
        {
            h.store(to.below);
            finish(h, to.above);
        }
    };
    struct Last {
        template <typename Words>
        static void apply(Words h, ResultRows to)
        {
            finish(h, to.above);
            finish(h, to.here);
        }
    };
};

struct OneWord {
    int value;

    static OneWord load(const void* from) { return {rux::RUX_LEVEL::load<int16_t>(from)}; }
    void store(void* to) const { rux::RUX_LEVEL::store(to, static_cast<int16_t>(value)); }

    friend OneWord operator+(OneWord a, OneWord b) { return {a.value + b.value}; }
    friend OneWord operator-(OneWord a, OneWord b) { return {a.value - b.value}; }
};

template <typename Kernel, typename Step>
inline void accumulatePixel(const uint8_t* src, ResultRows to, int32_t x, int32_t width)
{
    const int32_t left = x > 0 ? x - 1 : 0;
    const int32_t right = x + 1 < width ? x + 1 : x;
    Step::apply(OneWord{Kernel::along(src, left, x, right)}, to.at(x));
}

// The level's: a source row's part of all its results.
template <typename Kernel, typename Step>
void accumulateRow(const uint8_t* src, ResultRows to, int32_t width);

template <typename Kernel>
void sobelImage(const SobelImages& images)
{
    using Steps = Accumulation<Kernel>;
    const int32_t width = images.width == 1 ? 2 : images.width;
    const uint8_t* src = images.src;
    uint8_t* dst = images.dst;

    accumulateRow<Kernel, typename Steps::First>(src, {dst, dst, dst + images.dstStep}, width);
    for (int32_t y = 1; y < images.height - 1; ++y, dst += images.dstStep) {
        src += images.srcStep;
        accumulateRow<Kernel, typename Steps::Middle>(
            src, {dst, dst + images.dstStep, dst + 2 * images.dstStep}, width);
    }
    uint8_t* const last = dst + images.dstStep;
    accumulateRow<Kernel, typename Steps::Last>(src + images.srcStep, {dst, last, last}, width);
}

}
}
