// Accumulation element by element, in double with one rounding on the store.
#pragma once

#include "arith/accumulate.h"
#include "arith/byte_floats.h"

namespace rux::RUX_LEVEL {
namespace {

inline float accumulateElement(Plain, float value, float sum)
{
    return static_cast<float>(static_cast<double>(sum) + value);
}

inline float accumulateElement(Weighted weight, float value, float sum)
{
    const double difference = static_cast<double>(value) - sum;
    return static_cast<float>(sum + difference * weight.alpha);
}

template <typename Weight>
void accumulateRow(Weight weight, const uint8_t* src, uint8_t* srcDst, size_t elements)
{
    for (size_t i = 0; i < elements; ++i)
        store<float>(srcDst + i * 4, accumulateElement(weight, byteFloats[src[i]], load<float>(srcDst + i * 4)));
}

}
}
