// Processors to hand to the identification: each answers from a table and keeps count of what it was asked.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "frame/processor.h"

namespace rux::test {

struct FakeProcessor {
    bool hasCpuid = true;
    std::string vendor = "TestedVendor";
    uint32_t signature = 0;
    uint32_t features = 0;              // leaf 1, EDX
    uint32_t highestExtended = 0;
    uint32_t extendedFeatures = 0;      // leaf 0x80000001, EDX
    uint32_t faultingTrials = 0;        // feature bits whose trial faults

    std::vector<uint32_t> leavesRead;
    std::vector<uint32_t> trialsRun;
};

inline constexpr uint32_t reportsMmx = 1u << 23;
inline constexpr uint32_t reportsSse = 1u << 25;
inline constexpr uint32_t reportsSse2 = 1u << 26;
inline constexpr uint32_t reportsExtended = 1u << 31;

// The functions of a processor that answers as the fake does, which must outlive them. One at a time.
Processor processorOf(FakeProcessor&);

// A processor that reports all that its level needs, and nothing above it.
FakeProcessor processorOfLevel(int32_t level);

}
