// Greatest value in a rectangle: at every level the same.
#pragma once

#include "model/memory.h"

namespace rux::model {

ruxStatus ruxiFilterMax_8u_C1R(Level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                               ruxiSize roiSize, ruxiSize maskSize, ruxiPoint anchor);

}
