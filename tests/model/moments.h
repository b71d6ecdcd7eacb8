// Raw spatial moments.
#pragma once

#include <array>

#include "model/memory.h"
#include "ruxlib/geometry.h"

namespace rux::model {

using Moments = std::array<double, 16>;   // y order times 4, plus x order

Moments momentsOf(Level, const float* src, int32_t srcStep, ruxiSize roiSize, ruxAlgHint hint);

// A moment about another origin; orders whose sum is at most 3, none of them negative.
double momentAbout(const Moments&, int32_t xOrder, int32_t yOrder, ruxiPoint offset);

}
