// Thresholds to a band, and the lower threshold.
#pragma once

#include "model/memory.h"

namespace rux::model {

#define RUX_THRESHOLD(type, Element)                                                                              \
    ruxStatus ruxiThreshold_LTValGTVal_##type##_C1R(Level, const Element* src, int32_t srcStep, Element* dst,     \
                                                    int32_t dstStep, ruxiSize roiSize, Element thresholdLT,       \
                                                    Element valueLT, Element thresholdGT, Element valueGT);       \
    ruxStatus ruxiThreshold_LTValGTVal_##type##_C3R(Level, const Element* src, int32_t srcStep, Element* dst,     \
                                                    int32_t dstStep, ruxiSize roiSize, const Element* thresholdLT, \
                                                    const Element* valueLT, const Element* thresholdGT,           \
                                                    const Element* valueGT);                                      \
    ruxStatus ruxiThreshold_LTValGTVal_##type##_AC4R(Level, const Element* src, int32_t srcStep, Element* dst,    \
                                                     int32_t dstStep, ruxiSize roiSize,                           \
                                                     const Element* thresholdLT, const Element* valueLT,          \
                                                     const Element* thresholdGT, const Element* valueGT);         \
    ruxStatus ruxiThreshold_LTValGTVal_##type##_C1IR(Level, Element* srcDst, int32_t srcDstStep, ruxiSize roiSize, \
                                                     Element thresholdLT, Element valueLT, Element thresholdGT,   \
                                                     Element valueGT);                                            \
    ruxStatus ruxiThreshold_LTValGTVal_##type##_C3IR(Level, Element* srcDst, int32_t srcDstStep, ruxiSize roiSize, \
                                                     const Element* thresholdLT, const Element* valueLT,          \
                                                     const Element* thresholdGT, const Element* valueGT);         \
    ruxStatus ruxiThreshold_LTValGTVal_##type##_AC4IR(Level, Element* srcDst, int32_t srcDstStep,                 \
                                                      ruxiSize roiSize, const Element* thresholdLT,               \
                                                      const Element* valueLT, const Element* thresholdGT,         \
                                                      const Element* valueGT);
RUX_THRESHOLD(8u, uint8_t)
RUX_THRESHOLD(16s, int16_t)
RUX_THRESHOLD(32f, float)
#undef RUX_THRESHOLD

ruxStatus ruxiThreshold_LTVal_32f_C1IR(Level, float* srcDst, int32_t srcDstStep, ruxiSize roiSize, float threshold,
                                       float value);

}
