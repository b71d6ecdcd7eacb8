// Vectors of samples: copy, conversion, channels, threshold, sums, zero crossings, median.
#pragma once

#include "model/memory.h"
#include "ruxlib/signal.h"

namespace rux::model {

ruxStatus ruxsCopy_8u(Level, const uint8_t* src, uint8_t* dst, int32_t len);
ruxStatus ruxsConvert_16s32f(Level, const int16_t* src, float* dst, int32_t len);
ruxStatus ruxsInterleave_16s(Level, const int16_t* const* src, int32_t channels, int32_t frameLen, int16_t* dst);
ruxStatus ruxsDeinterleave_16s(Level, const int16_t* src, int32_t channels, int32_t frameLen, int16_t* const* dst);
ruxStatus ruxsThreshold_32f_I(Level, float* srcDst, int32_t len, float level, int32_t relOp);
ruxStatus ruxsSum_32f(Level, const float* src, int32_t len, float* sum, int32_t hint);
ruxStatus ruxsMean_32f(Level, const float* src, int32_t len, float* mean, int32_t hint);
ruxStatus ruxsFilterMedian_16s(Level, const int16_t* src, int16_t* dst, int32_t len, int32_t maskSize);
ruxStatus ruxsSignChangeRate_16s(Level, const int16_t* src, int32_t len, int32_t* count);

// At w7 a NaN product must have its sign set: whether another counts depends on the place.
ruxStatus ruxsSignChangeRate_32f(Level, const float* src, int32_t len, float* count);

}
