// The wavelet transform, forward and inverse, one level.
#pragma once

#include <vector>

#include "model/memory.h"
#include "ruxlib/geometry.h"

namespace rux::model {

struct WaveletFilter {
    std::vector<float> taps;
    int anchor;

    int length() const { return static_cast<int>(taps.size()); }
};

struct FilterPair {
    WaveletFilter low, high;
};

// What is read around a region: columns to the left and right of it (right may be -1), for a forward transform.
struct Borders {
    int left, right;
};
Borders analysisBorders(const WaveletFilter&);
Borders analysisBorders(const FilterPair&);
Borders synthesisBorders(const WaveletFilter&);

// A sample of a result, and how far a body may be from it: 0 but where the order of a sum is its own.
struct Sample {
    float value;
    float freedom;
};

using Plane = std::vector<std::vector<Sample>>;

// A subband of a forward transform, vertical filter and horizontal filter. The place of the destination in memory
// decides how its columns are summed.
Plane forwardBand(Level, const FilterPair&, bool highVertical, bool highHorizontal, const float* src, int32_t srcStep,
                  const float* dst, int32_t dstStep, ruxiSize dstRoiSize);

// A plane of an inverse transform.
struct Band {
    const float* samples;
    int32_t step;
};

struct Bands {
    Band lowLow, highLow, lowHigh, highHigh;
};

Plane inverseImage(Level, const FilterPair&, const Bands&, ruxiSize srcRoiSize, const float* dst, int32_t dstStep);

}
