// The blocks that the library asks for, in bytes as the operation counts them: without what the library's allocator
// adds for the boundary and its own pointer.
#pragma once

#include <cstdlib>
#include <vector>

#include "support/allocation.h"

namespace rux::test {

class BlockRequests : public StandInAllocator {
public:
    void* allocate(size_t bytes) override
    {
        sizes.push_back(bytes - 32 - sizeof(void*));
        return std::malloc(bytes);
    }
    void release(void* block) override { std::free(block); }

    std::vector<size_t> sizes;
};

using BlockSizes = std::vector<size_t>;

}
