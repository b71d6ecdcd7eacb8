// The floating-point stack computes in IEEE double (or extended, where asked for), whatever the host has set.
//
// Only 32-bit px, m6 and a6 bodies compute in double on that stack; elsewhere their guard is empty and costs nothing.
#pragma once

#include <stdint.h>

#include "frame/level.h"

namespace rux::RUX_LEVEL {
namespace {

// The bits of a float argument. In 32-bit builds they are read where the caller has put them, in an instruction of
// their own: a compiler may lead any other read over the floating-point stack, where a signalling NaN becomes quiet.
inline uint32_t bitsOf(const float& argument)
{
    uint32_t bits;
#ifdef __i386__
    asm("movl %1, %0" : "=r"(bits) : "m"(argument));
#else
    __builtin_memcpy(&bits, &argument, sizeof bits);
#endif
    return bits;
}

// The float of bits that are also moved: the compiler must not take the one for the other and move the float.
inline float floatOf(uint32_t bits)
{
#ifdef __i386__
    asm("" : "+r"(bits));
#endif
    float value;
    __builtin_memcpy(&value, &bits, sizeof value);
    return value;
}

// The value rounded to single precision: on the floating-point stack a conversion alone does not round.
inline float roundedToSingle(double value)
{
    float rounded = static_cast<float>(value);
#ifndef __SSE2__
    asm("" : "+m"(rounded));
#endif
    return rounded;
}

// The precision of the stack, whatever the host has set, while its guard lives.
class StackPrecision {
public:
    explicit StackPrecision(uint16_t precisionField)
    {
        asm volatile("fnstcw %0" : "=m"(saved));
        uint16_t wanted = static_cast<uint16_t>((saved & ~0x0300) | precisionField);
        asm volatile("fldcw %0" : : "m"(wanted) : "memory");
    }
    StackPrecision(const StackPrecision&) = delete;
    StackPrecision& operator=(const StackPrecision&) = delete;
    ~StackPrecision() { asm volatile("fldcw %0" : : "m"(saved) : "memory"); }

private:
    uint16_t saved;
};

// For arithmetic in long double, which is the stack's on every build.
struct ExtendedPrecision : StackPrecision {
    ExtendedPrecision() : StackPrecision(0x0300) {}
};

#ifndef __SSE2__   // not FLT_EVAL_METHOD: Clang reports 0 with SSE alone, where doubles are still on the stack
struct DoublePrecision : StackPrecision {
    DoublePrecision() : StackPrecision(0x0200) {}
};
#else
struct DoublePrecision {
    DoublePrecision() {}
    ~DoublePrecision() {}
};
#endif

}
}
