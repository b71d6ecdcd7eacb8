// Peak signal to noise ratio.
#pragma once

#include <cstdint>

#include "frame.h"

// The sum of squared differences to samples at a step of their own, over the plane's size.
uint64_t squaredDifference(const PlanarView::Plane& plane, const uint8_t* samples, int64_t step);

// In dB; infinity where there is no difference.
double psnr(uint64_t squares, uint64_t samples);
