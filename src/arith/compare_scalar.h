// Comparison of floats element by element.
//
// Where a comparison is written as the negation of its opposite, it holds for a NaN.
#pragma once

#include "arith/compare.h"

namespace rux::RUX_LEVEL {
namespace {

inline uint8_t maskByte(bool holds)
{
    return holds ? 255 : 0;
}

inline bool isNotUnequal(float a, float b)
{
    return !(a < b) && !(a > b);
}

template <typename Test>
inline void compareElements(const uint8_t* src, uint8_t* dst, size_t width, Test test)
{
    for (size_t x = 0; x < width; ++x) dst[x] = maskByte(test(load<float>(src + x * 4)));
}

// With a value, less, less or equal and equal hold for a NaN, greater or equal and greater do not.
template <ruxCmpOp cmpOp>
void compareValueRow(const uint8_t* src, uint32_t value, uint8_t* dst, size_t width)
{
    const float v = floatOf(value);
    compareElements(src, dst, width, [v](float x) {
        switch (cmpOp) {
        case ruxCmpLess: return !(x >= v);
        case ruxCmpLessEq: return !(x > v);
        case ruxCmpEq: return isNotUnequal(x, v);
        case ruxCmpGreaterEq: return x >= v;
        default: return x > v;
        }
    });
}

// The level gives holds: the comparison of two images' elements.
template <ruxCmpOp cmpOp>
bool holds(float a, float b);

template <ruxCmpOp cmpOp>
void compareRow(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, size_t width)
{
    for (size_t x = 0; x < width; ++x)
        dst[x] = maskByte(holds<cmpOp>(load<float>(src1 + x * 4), load<float>(src2 + x * 4)));
}

}
}
