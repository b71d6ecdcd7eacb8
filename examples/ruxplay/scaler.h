// Scales pictures plane by plane.
#pragma once

#include <vector>

#include "frame.h"

class Scaler {
public:
    explicit Scaler(ruxiSize size) : size_(size) {}

    // The scaled picture; it lasts until the next call.
    PlanarView scale(const PlanarView& picture);

private:
    ruxiSize size_;
    std::vector<uint8_t> planes_[3];
};
