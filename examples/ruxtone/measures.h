// Measures of a channel over time, one for each window.
#pragma once

#include "sound.h"

struct Measures {
    double windowSeconds;
    FloatChannel level;         // mean magnitude
    FloatChannel mean;
    FloatChannel crossings;     // of zero, a second
};

// Windows follow each other without gaps; the last may be shorter.
Measures measure(const FloatChannel& values, int rate, int32_t window);

// Zero crossings a second of the whole channel.
double crossingRate(const Channel& channel, int rate);
