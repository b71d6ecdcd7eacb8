// Counts element by element; those of bytes by way of a histogram.
#include "arith/count_in_range_scalar.h"

namespace rux::px {
namespace {

int32_t countBytes(const CountedImage& image, uint8_t lowerBound, uint8_t upperBound)
{
    uint32_t histogram[256];
    for (uint32_t& bin : histogram) bin = 0;
    image.forEachRow([&](const uint8_t* row) {
        for (int32_t x = 0; x < image.roiSize.width; ++x) ++histogram[row[x]];
    });
    uint32_t count = 0;
    for (int value = lowerBound; value <= upperBound; ++value) count += histogram[value];
    return static_cast<int32_t>(count);
}

}
}
