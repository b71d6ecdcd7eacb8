// How near decoded pictures come to their sources.
#pragma once

#include <cstdint>

#include "frame.h"

class Quality {
public:
    void add(const PlanarView& source, const PlanarView& decoded);
    double psnr(int plane) const;   // over all pictures

private:
    uint64_t squares_[3] = {};
    uint64_t samples_[3] = {};
};
