// Conversions in vectors: blocks between single elements.
//
// The level gives its blocks: how wide they are, on which boundary they start, and their instructions.
#pragma once

#include <xmmintrin.h>

#include "arith/byte_floats.h"
#include "arith/convert.h"
#include "arith/float_lanes.h"

namespace rux::RUX_LEVEL {
namespace {

// From a table: where MMX registers are in use, no compiler may turn to the floating-point stack for a single integer.
inline void floatsFromBytesSingly(const uint8_t* src, uint8_t* dst, size_t from, size_t to)
{
    for (size_t i = from; i < to; ++i) storeOne(dst + i * 4, _mm_load_ss(byteFloats + src[i]));
}

// x, a number or NaN, between 0 and 255. The minimum returns its second operand when one is a NaN: a NaN becomes 255.
inline __m128 clampToBytes(__m128 x)
{
    return _mm_max_ps(_mm_min_ps(x, _mm_set1_ps(255.0f)), _mm_setzero_ps());
}

// Rounded in the vector unit's mode, as clampToBytes leaves the range of a byte.
inline void bytesFromFloatsSingly(const uint8_t* src, uint8_t* dst, size_t from, size_t to)
{
    for (size_t i = from; i < to; ++i)
        dst[i] = static_cast<uint8_t>(_mm_cvtss_si32(clampToBytes(loadOne(src + i * 4))));
}

// How many floats stand before the next 16-byte boundary; none if their address never meets one.
inline size_t floatsToBoundary(const uint8_t* floats, size_t elements)
{
    const size_t count = isAligned(floats, 4) ? bytesToBoundary(floats, 16) / 4 : 0;
    return count < elements ? count : elements;
}

}
}
