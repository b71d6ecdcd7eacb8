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
        const uint32_t before = controlAndFlags();
        saved = before & modeBits;
        const uint32_t wanted = rounding == Rounding::nearest ? 0 : modeBits;
        changed = wanted != saved;
        if (changed) set((before & ~modeBits) | wanted);
    }
    VectorRounding(const VectorRounding&) = delete;
    VectorRounding& operator=(const VectorRounding&) = delete;
    ~VectorRounding()
    {
        if (changed) set((controlAndFlags() & ~modeBits) | saved);   // flags raised meanwhile stay
    }

private:
    static constexpr uint32_t modeBits = 0x6000;

    static uint32_t controlAndFlags()
    {
        uint32_t value;
        asm volatile("stmxcsr %0" : "=m"(value) : : "memory");
        return value;
    }

    static void set(uint32_t value) { asm volatile("ldmxcsr %0" : : "m"(value) : "memory"); }

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
