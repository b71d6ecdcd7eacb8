// What a call executes, instruction by instruction: for what a contract says of the way and no byte shows, such as
// stores past the caches.
//
//     Trace trace;
//     call(ruxiCopy_8u_C1R, ...);
//     if (!trace.works()) GTEST_SKIP();
//     EXPECT_EQ(trace.fences, 1);
//
// While a Trace lives, call() runs its function one instruction at a time (Linux on a real processor), up to a limit;
// beyond it the function runs on unwatched. A step costs some microseconds: keep calls small, or the limit.
#pragma once

#include <cstdint>

namespace rux::test {

class Trace {
public:
    explicit Trace(int limit = 1 << 20);
    ~Trace();

    int steps = 0;
    int streaming8 = 0;    // movntq, and movnti, which compilers put in its place in 64-bit builds
    int streaming16 = 0;   // movntdq, movntps, movntpd
    int fences = 0;        // sfence
    int mmx = 0;           // instructions on MMX registers, other than movntq and emms
    int clearedMmx = 0;    // emms

    bool works() const { return steps > 0; }

    static constexpr uintptr_t trapFlag = 0x100;
    static bool isOn();
    bool goesOn() const { return steps < limit; }

private:
    int limit;
};

}
