#include "support/host_state.h"

#include <cstdio>
#include <cstring>

namespace rux::test {
namespace {

uint32_t mxcsrNow()
{
    uint32_t value = 0x1F80;
    if (processorHasVectorState()) __asm__ volatile("stmxcsr %0" : "=m"(value));
    return value;
}

// Bits of MXCSR that may be set here: setting another faults. An old processor reports no mask and lacks bit 6.
uint32_t mxcsrMask()
{
    static const uint32_t mask = [] {
        alignas(16) uint8_t area[512] = {};
        __asm__ volatile("fxsave %0" : "=m"(area));
        uint32_t reported;
        std::memcpy(&reported, area + 28, sizeof reported);
        return reported ? reported : 0xFFBFu;
    }();
    return mask;
}

}

bool processorHasVectorState()
{
    __builtin_cpu_init();
    return __builtin_cpu_supports("sse");
}

HostState::HostState() : mxcsr(mxcsrNow() & ~0x3Fu)
{
    __asm__ volatile("fnstcw %0" : "=m"(x87Control));
}

HostState& HostState::precision(int bits)
{
    const int field = bits == 24 ? 0 : bits == 53 ? 2 : 3;
    x87Control = static_cast<uint16_t>((x87Control & ~0x300) | field << 8);
    return *this;
}

HostState& HostState::x87Rounding(Rounding rounding)
{
    x87Control = static_cast<uint16_t>((x87Control & ~0xC00) | static_cast<int>(rounding) << 10);
    return *this;
}

HostState& HostState::vectorRounding(Rounding rounding)
{
    mxcsr = (mxcsr & ~0x6000u) | static_cast<uint32_t>(rounding) << 13;
    return *this;
}

HostState& HostState::flushDenormals()
{
    if (processorHasVectorState()) mxcsr |= 0x8040u & mxcsrMask();
    return *this;
}

HostState& HostState::mmxInUse()
{
    mmx = true;
    return *this;
}

bool HostState::isKept() const
{
    const HostState before;
    uint16_t control;
    __asm__ volatile("fldcw %1\n\tfnstcw %0\n\tfldcw %2" : "=m"(control) : "m"(x87Control), "m"(before.x87Control));
    uint32_t taken = mxcsr;
    if (processorHasVectorState()) {
        __asm__ volatile("ldmxcsr %1\n\tstmxcsr %0\n\tldmxcsr %2" : "=m"(taken) : "m"(mxcsr), "m"(before.mxcsr));
    }
    return control == x87Control && taken == mxcsr;
}

std::string HostState::describe() const
{
    char text[64];
    std::snprintf(text, sizeof text, "x87 control word %04X, MXCSR %04X%s", x87Control, mxcsr,
                  mmx ? ", MMX in use" : "");
    return text;
}

std::vector<HostState> hostStates()
{
    std::vector<HostState> states = {HostState()};
    for (int bits : {24, 53, 64}) states.push_back(HostState().precision(bits));
    const Rounding modes[] = {Rounding::nearest, Rounding::down, Rounding::up, Rounding::zero};
    for (Rounding x87 : modes) {
        for (Rounding vector : modes) states.push_back(HostState().x87Rounding(x87).vectorRounding(vector));
    }
    states.push_back(HostState().flushDenormals());
    return states;
}

}
