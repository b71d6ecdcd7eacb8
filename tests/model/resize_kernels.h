// What the frame of the scaling settles and its kernels run on.
#pragma once

#include <vector>

#include "model/memory.h"
#include "model/wrapping.h"

namespace rux::model {

inline constexpr double resizeEpsilon = 1e-07;

struct Scaling {
    Level level;
    const uint8_t* origin;   // the rectangle's first pixel
    int32_t srcStep;
    ruxiSize srcSize;        // of the whole image
    ruxiRect rectangle;      // trimmed to the image
    uint8_t* dst;
    int32_t dstStep;
    ruxiSize dstSize;        // what is produced
};

// An axis of the scaling: where its pixels lie in the rectangle.
struct Axis {
    double start, step;
    int32_t count;         // pixels produced
    int32_t srcLength;     // of the image
    int32_t srcBegin;      // of the rectangle in the image
};

// Toward zero; 0x80000000 for what 32 bits do not hold.
int32_t truncated(double value);

// One position for each pixel, from repeated additions.
std::vector<double> positionsOf(const Axis&);

int32_t indexOf(double position);

inline int32_t rowOffset(int32_t index, int32_t step)
{
    return (Wrapping(index) * Wrapping(step)).value();
}

void resizeNearest(const Scaling&, const Axis& x, const Axis& y);
void resizeLinear(const Scaling&, const Axis& x, const Axis& y);
void resizeCubic(const Scaling&, const Axis& x, const Axis& y);
void resizeSuperSample(const Scaling&, double xFactor, double yFactor);

}
