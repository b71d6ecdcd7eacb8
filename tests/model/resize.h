// Scaling of a rectangle of an image.
#pragma once

#include "model/memory.h"
#include "ruxlib/geometry.h"

namespace rux::model {

// Supersampling with factors above 0 only; others are not defined.
ruxStatus ruxiResize_8u_C1R(Level, const uint8_t* src, ruxiSize srcSize, int32_t srcStep, ruxiRect srcRoi, uint8_t* dst,
                            int32_t dstStep, ruxiSize dstRoiSize, double xFactor, double yFactor,
                            ruxInterpolation interpolation);

}
