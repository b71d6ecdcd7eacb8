// Comparison of floats in vectors of four, sixteen elements a turn.
//
// The level gives storeSixteen: four results as sixteen mask bytes.
#pragma once

#include "arith/compare.h"
#include "lanes/four_floats.h"
#include "lanes/spread.h"

namespace rux::RUX_LEVEL {
namespace {

void storeSixteen(uint8_t* dst, FourFloats a, FourFloats b, FourFloats c, FourFloats d);

// The mask bytes of each combination of four results.
constexpr uint32_t maskBytes[16] = {
    0x00000000, 0x000000FF, 0x0000FF00, 0x0000FFFF, 0x00FF0000, 0x00FF00FF, 0x00FFFF00, 0x00FFFFFF,
    0xFF000000, 0xFF0000FF, 0xFF00FF00, 0xFF00FFFF, 0xFFFF0000, 0xFFFF00FF, 0xFFFFFF00, 0xFFFFFFFF,
};

inline void storeFour(uint8_t* dst, FourFloats results)
{
    store<uint32_t>(dst, maskBytes[_mm_movemask_ps(results.value)]);
}

// Less, less or equal and equal do not hold for a NaN; greater or equal and greater, which a value alone has, do.
template <ruxCmpOp cmpOp>
inline FourFloats compareFour(FourFloats a, FourFloats b)
{
    switch (cmpOp) {
    case ruxCmpLess: return {_mm_cmplt_ps(a.value, b.value)};
    case ruxCmpLessEq: return {_mm_cmple_ps(a.value, b.value)};
    case ruxCmpEq: return {_mm_cmpeq_ps(a.value, b.value)};
    case ruxCmpGreaterEq: return {_mm_cmpnlt_ps(a.value, b.value)};
    default: return {_mm_cmpnle_ps(a.value, b.value)};
    }
}

struct SecondImage {
    const uint8_t* src;
    FourFloats four(size_t x) const { return FourFloats::load(src + x * 4); }
    FourFloats one(size_t x) const { return FourFloats::loadOne(src + x * 4); }
};

struct Value {
    FourFloats all;
    FourFloats four(size_t) const { return all; }
    FourFloats one(size_t) const { return all; }
};

template <ruxCmpOp cmpOp, typename Second>
inline void compareFloats(const uint8_t* src, Second second, uint8_t* dst, size_t width)
{
    const auto compareAt = [=](size_t x) {
        return compareFour<cmpOp>(FourFloats::load(src + x * 4), second.four(x));
    };
    size_t x = 0;
    for (; width - x >= 16; x += 16)
        storeSixteen(dst + x, compareAt(x), compareAt(x + 4), compareAt(x + 8), compareAt(x + 12));
    for (; width - x >= 4; x += 4) storeFour(dst + x, compareAt(x));
    for (; x < width; ++x) {
        const FourFloats result = compareFour<cmpOp>(FourFloats::loadOne(src + x * 4), second.one(x));
        dst[x] = static_cast<uint8_t>(maskBytes[_mm_movemask_ps(result.value) & 1]);
    }
}

template <ruxCmpOp cmpOp>
void compareRow(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, size_t width)
{
    compareFloats<cmpOp>(src1, SecondImage{src2}, dst, width);
}

template <ruxCmpOp cmpOp>
void compareValueRow(const uint8_t* src, uint32_t value, uint8_t* dst, size_t width)
{
    compareFloats<cmpOp>(src, Value{spread<FourFloats>(value)}, dst, width);
}

}
}
