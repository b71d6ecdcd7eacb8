// The floating-point state in which a host calls: x87 precision and rounding, vector rounding and flushing, and MMX
// registers in use or not.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace rux::test {

enum class Rounding { nearest, down, up, zero };

struct HostState {
    uint16_t x87Control;
    uint32_t mxcsr;
    bool mmx = false;

    // The state in which the test runs: nearest, all exceptions masked.
    HostState();

    HostState& precision(int bits);   // x87: 24, 53 or 64
    HostState& x87Rounding(Rounding);
    HostState& vectorRounding(Rounding);
    HostState& flushDenormals();      // flush to zero; denormals are zero, where the processor knows that
    HostState& mmxInUse();            // against the convention: for operations that clear the MMX state anyway

    // Whether this processor takes the state as it is: an emulated one may keep less.
    bool isKept() const;

    std::string describe() const;
};

// The usual one, each x87 precision, each pair of rounding modes, flushing: what a call must bear and must keep.
std::vector<HostState> hostStates();

bool processorHasVectorState();

}
