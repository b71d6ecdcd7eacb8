// The sum 16 bytes at a time, by sums of absolute differences.
#include "lanes/sixteen_byte_elements.h"

#include "arith/sum_lanes.h"

namespace rux::w7 {
namespace {

double sumImage(const uint8_t* src, int32_t srcStep, ruxiSize roiSize)
{
    return static_cast<double>(static_cast<int64_t>(sumRows<SixteenBytes>(src, srcStep, roiSize)));
}

}
}
