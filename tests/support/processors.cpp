#include "support/processors.h"

#include <cstring>

namespace rux::test {
namespace {

FakeProcessor* asked;

int32_t hasCpuid()
{
    return asked->hasCpuid;
}

uint32_t wordOfVendor(size_t index)
{
    uint32_t word;
    std::memcpy(&word, asked->vendor.data() + 4 * index, sizeof word);
    return word;
}

CpuidLeaf cpuid(uint32_t leaf)
{
    asked->leavesRead.push_back(leaf);
    switch (leaf) {
    case 0: return {1, wordOfVendor(0), wordOfVendor(2), wordOfVendor(1)};
    case 1: return {asked->signature, ~0u, ~0u, asked->features};
    case 0x80000000: return {asked->highestExtended, ~0u, ~0u, ~0u};
    case 0x80000001: return {~0u, ~0u, ~0u, asked->extendedFeatures};
    default: return {};
    }
}

int32_t probeFeature(uint32_t feature)
{
    asked->trialsRun.push_back(feature);
    return (asked->faultingTrials & feature) == 0;
}

}

Processor processorOf(FakeProcessor& processor)
{
    asked = &processor;
    return {hasCpuid, cpuid, probeFeature};
}

FakeProcessor processorOfLevel(int32_t level)
{
    FakeProcessor processor;
    if (level >= 1) processor.features |= reportsMmx;
    if (level >= 2) processor.features |= reportsSse;
    if (level >= 3) processor.features |= reportsSse2;
    return processor;
}

}
