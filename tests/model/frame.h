// Status texts, version records, aligned allocation: the same at every level but for the level's name.
#pragma once

#include <string>

#include "model/memory.h"

namespace rux::model {

const char* textOf(ruxStatus);

struct Version {
    int32_t majorVersion, minorVersion, majorBuild, build;
    std::string targetName, libraryName, versionText, buildDate;
};
Version imageVersion(Level);
Version signalVersion(Level);

// What an allocator asks of malloc, and what it stores through stepBytes.
struct Request {
    bool isMade = false;
    uint32_t bytes = 0;
    bool storesStep = false;
    int32_t step = 0;
};
Request vectorRequest(int elementBytes, int32_t length);
Request imageRequest(int elementBytes, int32_t width, int32_t height, bool hasStepPointer);

// The bytes asked for beside the block's own.
constexpr uint32_t overhead = 32 + sizeof(void*);

// What malloc's blocks must have at least: the caller's pointer lies up to 32 bytes in, for malloc's own alignment.
constexpr uint32_t smallest = 32;

// The caller's pointer in a raw block.
uintptr_t blockIn(uintptr_t raw);

}
