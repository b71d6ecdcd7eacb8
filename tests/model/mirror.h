// Mirroring in place: at every level the same.
#pragma once

#include "model/memory.h"
#include "ruxlib/movement.h"

namespace rux::model {

ruxStatus ruxiMirror_8u_C3IR(Level, uint8_t* srcDst, int32_t srcDstStep, ruxiSize roiSize, ruxAxis flip);
ruxStatus ruxiMirror_8u_AC4IR(Level, uint8_t* srcDst, int32_t srcDstStep, ruxiSize roiSize, ruxAxis flip);
ruxStatus ruxiMirror_16u_C1IR(Level, uint16_t* srcDst, int32_t srcDstStep, ruxiSize roiSize, ruxAxis flip);

}
