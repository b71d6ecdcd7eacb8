// The sum in MMX registers.
#pragma once

#include "arith/sum_lanes.h"
#include "frame/mmx_state.h"

namespace rux::RUX_LEVEL {
namespace {

// Not inlined: no floating-point instruction may move in among the MMX instructions.
[[gnu::noinline]] int64_t sumWithMmx(const uint8_t* src, int32_t srcStep, ruxiSize roiSize)
{
    const MmxState state;
    return static_cast<int64_t>(sumRows<EightBytes>(src, srcStep, roiSize));
}

double sumImage(const uint8_t* src, int32_t srcStep, ruxiSize roiSize)
{
    return static_cast<double>(sumWithMmx(src, srcStep, roiSize));
}

}
}
