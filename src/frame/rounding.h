// The rounding mode that a contract sets, in force while its guard lives, whatever mode the host has set.
//
// The floating-point stack and the vector unit have a mode each: an operation holds the guard of the unit on which it
// rounds. A control register that already holds the mode is not written.
#pragma once

#include <stdint.h>

#include "frame/level.h"

namespace rux::RUX_LEVEL {
namespace {

enum class Rounding { nearest, towardZero };

// The mode of roundOnStack; the precision field stays as it is.
class StackRounding {
public:
    explicit StackRounding(Rounding rounding)
    {
        asm volatile("fnstcw %0" : "=m"(saved));
        const uint16_t wanted =
            static_cast<uint16_t>((saved & ~0x0C00) | (rounding == Rounding::nearest ? 0 : 0x0C00));
        changed = wanted != saved;
        if (changed) asm volatile("fldcw %0" : : "m"(wanted) : "memory");
    }
    StackRounding(const StackRounding&) = delete;
    StackRounding& operator=(const StackRounding&) = delete;
    ~StackRounding()
    {
        if (changed) asm volatile("fldcw %0" : : "m"(saved) : "memory");
    }

private:
    uint16_t saved;
    bool changed;
};

// The mode of all vector arithmetic and of the conversions that do not truncate.
class VectorRounding {
public:
    explicit VectorRounding(Rounding rounding)
    {
        asm volatile("stmxcsr %0" : "=m"(saved));
        const uint32_t wanted = (saved & ~0x6000u) | (rounding == Rounding::nearest ? 0 : 0x6000);
        changed = wanted != saved;
        if (changed) asm volatile("ldmxcsr %0" : : "m"(wanted) : "memory");
    }
    VectorRounding(const VectorRounding&) = delete;
    VectorRounding& operator=(const VectorRounding&) = delete;
    ~VectorRounding()
    {
        if (changed) asm volatile("ldmxcsr %0" : : "m"(saved) : "memory");
    }

private:
    uint32_t saved;
    bool changed;
};

// The integer store of the floating-point stack, on every build: it rounds by the stack's mode.
inline int32_t roundOnStack(long double value)
{
    int32_t rounded;
    asm volatile("fistpl %0" : "=m"(rounded) : "t"(value) : "st");
    return rounded;
}

// The mode of the unit on which the build computes doubles, and that unit's conversion, which rounds by it.
#ifdef __SSE2__
using DoubleRounding = VectorRounding;

inline int32_t roundDouble(double value)
{
    int32_t rounded;
    asm volatile("cvtsd2si %1, %0" : "=r"(rounded) : "x"(value));
    return rounded;
}
#else
using DoubleRounding = StackRounding;

inline int32_t roundDouble(double value)
{
    return roundOnStack(value);
}
#endif

}
}
