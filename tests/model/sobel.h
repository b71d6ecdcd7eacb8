// Sobel 3x3 derivatives with a replicated border; px and m6 take a region of one column for two.
#pragma once

#include "model/memory.h"

namespace rux::model {

ruxStatus ruxiSobel3x3_Dx_8u16s_C1R(Level, const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                    ruxiSize roiSize);
ruxStatus ruxiSobel3x3_Dy_8u16s_C1R(Level, const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                    int32_t rowOrder, ruxiSize roiSize);

}
