#include "frame/processor.h"

#include <cpuid.h>
#include <string.h>

#include "frame/trial.h"

namespace rux {
namespace {

struct FeatureBit {
    uint32_t feature;
    uint32_t bit;
    bool extendedWord;   // in the feature word of leaf 0x80000001, not of leaf 1
};

constexpr FeatureBit featureBits[] = {   // in the order of the trials
    {featureMmx, 1u << 23, false},
    {featureExtended, 1u << 31, true},
    {featureSse, 1u << 25, false},
    {featureSse2, 1u << 26, false},
};
constexpr int32_t allFeatures = featureMmx | featureSse | featureSse2 | featureExtended;

CpuidLeaf readCpuid(uint32_t leaf)
{
    CpuidLeaf answer;
    __cpuid(leaf, answer.eax, answer.ebx, answer.ecx, answer.edx);
    return answer;
}

// Not the sum of the two fields: the extended family stands above the four bits of the family.
int32_t familyOf(uint32_t signature)
{
    const uint32_t family = signature >> 8 & 15;
    return static_cast<int32_t>(family == 15 ? ((signature & 0x0FF00000) | 0x000F0000) >> 16 : family);
}

}

const Processor thisProcessor = {ruxHasCpuid, readCpuid, ruxProbeFeature};

uint32_t getProcessorInfo(const Processor& processor, ProcessorInfo* info)
{
    if (!processor.hasCpuid()) return 0;
    const CpuidLeaf vendor = processor.cpuid(0);
    const CpuidLeaf version = processor.cpuid(1);
    const uint32_t extendedWord =
        processor.cpuid(0x80000000).eax >= 0x80000000 ? processor.cpuid(0x80000001).edx : 0;

    uint32_t featureMask = 0;
    uint32_t confirmedMask = 0;
    for (const FeatureBit& candidate : featureBits) {
        if (!((candidate.extendedWord ? extendedWord : version.edx) & candidate.bit)) continue;
        featureMask |= candidate.feature;
        if (processor.probeFeature(candidate.feature) == 1) confirmedMask |= candidate.feature;
    }
    if (!info) return featureMask;

    memset(info, 0, sizeof *info);
    info->featureMask = featureMask;
    info->confirmedMask = confirmedMask;
    info->family = familyOf(version.eax);
    info->model = version.eax >> 4 & 15;
    info->stepping = version.eax & 15;
    const uint32_t vendorWords[] = {vendor.ebx, vendor.edx, vendor.ecx};
    memcpy(info->vendor, vendorWords, sizeof vendorWords);
    ruxComposeProcessorName(info->family, info->model, info->vendor, info->name);
    info->knownFeatures = allFeatures;
    return featureMask;
}

int32_t levelOf(uint32_t featureMask)
{
    if (featureMask & featureSse2) return 3;
    if (featureMask & featureSse) return 2;
    return featureMask & featureMmx;
}

}

int32_t ruxHasCpuid()
{
    return rux::runTrial(rux::Trial::cpuid);
}

int32_t ruxProbeFeature(uint32_t feature)
{
    switch (feature) {
    case rux::featureMmx: return rux::runTrial(rux::Trial::mmx);
    case rux::featureSse: return rux::runTrial(rux::Trial::sse);
    case rux::featureSse2: return rux::runTrial(rux::Trial::sse2);
    case rux::featureExtended: return rux::runTrial(rux::Trial::extended);
    default: return 1;
    }
}

uint32_t ruxGetProcessorInfo(rux::ProcessorInfo* info)
{
    return rux::getProcessorInfo(rux::thisProcessor, info);
}
