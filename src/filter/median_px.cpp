// Medians pixel by pixel; of three neighbours with a 5x5 cross the triple that they share is sorted once.
#include "filter/median.h"
#include "filter/median_networks.h"

namespace rux::px {
namespace {

struct Pixel {
    int value;

    Pixel(int value) : value(value) {}
};

// a - b where it is negative, otherwise 0. Noise leaves a branch nothing to predict.
inline int negativeDifference(Pixel a, Pixel b)
{
    const int difference = a.value - b.value;
    return difference & difference >> 31;
}

inline Pixel smaller8(Pixel a, Pixel b)
{
    return b.value + negativeDifference(a, b);
}

inline Pixel larger8(Pixel a, Pixel b)
{
    return a.value - negativeDifference(a, b);
}

using Triple = SortedTriple<Pixel>;

template <Window window>
inline Pixel medianAt(const uint8_t* at, ptrdiff_t step)
{
    if constexpr (window == Window::row3) return median3<Pixel>(at[-1], at[1], at[0]);
    if constexpr (window == Window::row5) return median5<Pixel>(at[-2], at[-1], at[1], at[2], at[0]);
    if constexpr (window == Window::cross3) return median5<Pixel>(at[-step], at[step], at[-1], at[1], at[0]);
    if constexpr (window == Window::cross5)
        return median9(Triple(at[-2 * step], at[-step], at[-2]), Triple(at[-1], at[0], at[1]),
                       Triple(at[2], at[step], at[2 * step]));
}

// The windows of all three pixels hold the three.
inline void medianOfThreeCrosses(const uint8_t* at, ptrdiff_t step, uint8_t* dst)
{
    const Triple shared(at[0], at[1], at[2]);
    const auto median = [&](int x, int oneBeside, int otherBeside) {
        const uint8_t* const pixel = at + x;
        const Triple above(pixel[-2 * step], pixel[-step], at[oneBeside]);
        const Triple below(at[otherBeside], pixel[step], pixel[2 * step]);
        return static_cast<uint8_t>(median9(above, shared, below).value);
    };
    dst[0] = median(0, -2, -1);
    dst[1] = median(1, -1, 3);
    dst[2] = median(2, 3, 4);
}

template <Window window>
void medianImage(const uint8_t* src, ptrdiff_t srcStep, uint8_t* dst, ptrdiff_t dstStep, ruxiSize roiSize)
{
    for (int32_t y = 0; y < roiSize.height; ++y, src += srcStep, dst += dstStep) {
        ptrdiff_t x = 0;
        if constexpr (window == Window::cross5)
            for (; roiSize.width - x >= 3; x += 3) medianOfThreeCrosses(src + x, srcStep, dst + x);
        for (; x < roiSize.width; ++x) dst[x] = static_cast<uint8_t>(medianAt<window>(src + x, srcStep).value);
    }
}

}
}
