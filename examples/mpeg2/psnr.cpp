#include "psnr.h"

#include <cmath>
#include <limits>

uint64_t squaredDifference(const PlanarView::Plane& plane, const uint8_t* samples, int64_t step)
{
    uint64_t squares = 0;
    for (int row = 0; row < plane.size.height; ++row) {
        const uint8_t* const ours = plane.samples + int64_t(row) * plane.step;
        const uint8_t* const theirs = samples + row * step;
        for (int column = 0; column < plane.size.width; ++column) {
            const int difference = ours[column] - theirs[column];
            squares += uint64_t(difference * difference);
        }
    }
    return squares;
}

double psnr(uint64_t squares, uint64_t samples)
{
    if (squares == 0) return std::numeric_limits<double>::infinity();
    return 10 * std::log10(255.0 * 255.0 * double(samples) / double(squares));
}
