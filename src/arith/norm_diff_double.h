// Norms of floats in double precision, element by element.
//
// A difference of two floats, rounded to double, is taken without its sign and added to a double.
#pragma once

#include "arith/norm_diff.h"

namespace rux::RUX_LEVEL {
namespace {

inline double floatDifference(const uint8_t* a, const uint8_t* b)
{
    return __builtin_fabs(static_cast<double>(load<float>(a)) - static_cast<double>(load<float>(b)));
}

// One channel has two sums, for the even and the odd columns of all rows, added at the end.
inline void sumColumnsInDouble(const ImagePair& images, double* norm)
{
    double even = 0.0;
    double odd = 0.0;
    images.forEachRow([&](const uint8_t* a, const uint8_t* b) {
        int32_t pairs = images.roiSize.width / 2;
        for (; pairs > 0; --pairs, a += 8, b += 8) {
            even += floatDifference(a, b);
            odd += floatDifference(a + 4, b + 4);
        }
        if (images.roiSize.width % 2 != 0) even += floatDifference(a, b);
    });
    store<double>(norm, odd + even);
}

// Several channels have one sum each.
template <Layout layout>
void sumChannelsInDouble(const ImagePair& images, double* norm)
{
    constexpr int pixelSize = channelsOf(layout) * 4;
    double sums[4] = {};
    images.forEachRow([&](const uint8_t* a, const uint8_t* b) {
        for (int32_t x = 0; x < images.roiSize.width; ++x, a += pixelSize, b += pixelSize) {
            sums[0] += floatDifference(a, b);
            sums[1] += floatDifference(a + 4, b + 4);
            sums[2] += floatDifference(a + 8, b + 8);
            if (layout == Layout::C4) sums[3] += floatDifference(a + 12, b + 12);
        }
    });
    for (int c = 0; c < summedChannelsOf(layout); ++c) store<double>(norm + c, sums[c]);
}

template <Layout layout>
void sumInDouble(const ImagePair& images, double* norm)
{
    if (layout == Layout::C1)
        sumColumnsInDouble(images, norm);
    else
        sumChannelsInDouble<layout>(images, norm);
}

}
}
