// A 64-bit digest of bytes, the same on every build, and the stored digests that every build must give.
#pragma once

#include <cstdint>
#include <string>

#include "support/image.h"
#include "support/levels.h"

namespace rux::test {

class Digest {
public:
    void add(const void* bytes, size_t count);
    void add(int32_t number) { add(&number, sizeof number); }
    void addRegion(const Plane&);   // the pixels of the region
    void addMemory(const Plane&);   // every byte that can be touched
    uint64_t value() const { return state ^ state >> 32; }

private:
    uint64_t state = 0xCBF29CE484222325u;
};

// Compares with the line "operation level digest" of golden/<family>.txt; fails where that line is missing. With
// UPDATE_GOLDEN=1 in the environment the line is written instead (look at what changed before you keep it).
void expectGolden(const std::string& family, const std::string& operation, Level level, const Digest& digest);

}
