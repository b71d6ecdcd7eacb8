// Bit-depth reduction and dithering.
#pragma once

#include <vector>

#include "model/memory.h"
#include "ruxlib/colour.h"

namespace rux::model {

ruxStatus ruxiReduceBits_8u_C3R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                ruxiSize roiSize, int32_t noise, ruxDitherType ditherType, int32_t levels);

// The noise value of a place: a fraction of the step, around a half for error diffusion and around 0 for ordered dither.
class Noise {
public:
    Noise(double low, double high);
    float at(int x, int offset) const;

private:
    std::vector<int> indices;
    std::vector<float> values;
};

// Where the order of the sums is the level's own: follows a result sample by sample, taking its decisions for the
// errors that are diffused, and tells whether each is right but for sums that lie at the threshold itself.
bool followsDiffusion(const uint8_t* src, int32_t srcStep, const uint8_t* dst, int32_t dstStep, ruxiSize roiSize,
                      int32_t noise, ruxDitherType ditherType, int32_t levels);

}
