// One level of the wavelet transform with the pair of 5 and 3 taps, whose results are exact in float for bytes.
#pragma once

#include "image.h"

// Four bands of half the picture's size, each with a border that the way back reads.
struct Bands {
    FloatImage lowLow, highLow, lowHigh, highHigh;   // the first word is the filter down the columns

    explicit Bands(ruxiSize size);
    ruxiSize size() const;   // of a band without its border
    ruxiSize sizeWithBorder() const { return lowLow.size(); }
    static constexpr int border = 1;
};

// The plane's sides must be even. Both give the seconds of the fastest of a few calls.
double transform(const Plane& plane, Bands& bands);
double transformBack(const Bands& bands, FloatImage& result);
