// The guard of the trials on Windows: exceptions of a host's threads go to the host's handler while trials run.
#include <gtest/gtest.h>

#include <windows.h>

#include <atomic>
#include <thread>

#include "frame/processor.h"

namespace rux::test {
namespace {

std::atomic<int> exceptionsServed;

LONG CALLBACK skipTwoByteInstruction(EXCEPTION_POINTERS* exception)
{
    exception->ContextRecord->Eip += 2;
    ++exceptionsServed;
    return EXCEPTION_CONTINUE_EXECUTION;
}

template <typename Fault>
void faultWhileProbing(Fault fault)
{
    constexpr int faults = 2000;
    void* const handler = AddVectoredExceptionHandler(0, skipTwoByteInstruction);
    exceptionsServed = 0;
    std::atomic<bool> done{false};
    std::thread host([&] {
        for (int turn = 1; turn <= faults; ++turn) {
            fault();
            if (exceptionsServed != turn) break;
        }
        done = true;
    });
    while (!done) {
        for (const uint32_t feature : {1u, 2u, 4u, 8u}) ruxProbeFeature(feature);
        ASSERT_EQ(ruxHasCpuid(), 1);
    }
    host.join();
    RemoveVectoredExceptionHandler(handler);
    EXPECT_EQ(exceptionsServed, faults);
}

TEST(HostsExceptions, unknownInstruction)
{
    faultWhileProbing([] { asm volatile("ud2" : : : "memory"); });
}

TEST(HostsExceptions, forbiddenAddress)
{
    faultWhileProbing([] {
        uintptr_t address = 16;
        asm volatile("movl (%0), %%eax" : "+a"(address) : : "memory");
    });
}

TEST(HostsExceptions, divisionByZero)
{
    faultWhileProbing([] {
        uint32_t low = 1, high = 0;
        asm volatile("divl %2" : "+a"(low), "+d"(high) : "c"(0) : "memory", "cc");
    });
}

}
}
