// What the processor reports of itself, which of its features run, and the level that follows.
#pragma once

#include <stdint.h>

namespace rux {

enum Feature : uint32_t {
    featureMmx = 1,
    featureSse = 2,
    featureSse2 = 4,
    featureExtended = 8,   // 3DNow!; no level uses it
};

struct ProcessorInfo {
    char vendor[13];
    char name[31];
    int32_t family;
    int32_t model;
    int32_t stepping;
    uint32_t featureMask;     // reported, whether or not the trial ran
    uint32_t confirmedMask;   // reported, and the trial ran
    int32_t knownFeatures;
};

struct CpuidLeaf {
    uint32_t eax, ebx, ecx, edx;
};

// A processor as identification asks it.
struct Processor {
    int32_t (*hasCpuid)();
    CpuidLeaf (*cpuid)(uint32_t leaf);
    int32_t (*probeFeature)(uint32_t feature);
};

extern const Processor thisProcessor;

// Fills the record, which may be null, and returns the feature mask; 0 and an untouched record without CPUID.
uint32_t getProcessorInfo(const Processor&, ProcessorInfo*);

// The level follows what the processor reports, trials or no trials; each feature decides by itself.
int32_t levelOf(uint32_t featureMask);

}

extern "C" {

int32_t ruxHasCpuid();

// 1: the feature's trial instruction ran, or the value names no feature; 0: an exception stopped it.
int32_t ruxProbeFeature(uint32_t feature);

uint32_t ruxGetProcessorInfo(rux::ProcessorInfo* info);

// Writes a printable name; "Unknown" for a processor that is not in the list.
void ruxComposeProcessorName(int32_t family, int32_t model, const char* vendor, char* name);

}
