// Work memory of one call: taken from the level's own allocator, returned on every path.
#pragma once

#include <stddef.h>

#include "frame/level.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Element>
class WorkMemory {
public:
    explicit WorkMemory(int64_t count) : first(allocate(count)) {}
    WorkMemory(const WorkMemory&) = delete;
    WorkMemory& operator=(const WorkMemory&) = delete;
    ~WorkMemory() { ruxsFree(first); }

    explicit operator bool() const { return first != nullptr; }
    operator Element*() const { return first; }

    // The block outlives the call and nobody returns it.
    void leak() { first = nullptr; }

private:
    // More than the allocator can be asked for is memory that there is not.
    static Element* allocate(int64_t count)
    {
        const int64_t bytes = count * static_cast<int64_t>(sizeof(Element));
        return bytes > INT32_MAX ? nullptr : reinterpret_cast<Element*>(ruxsMalloc_8u(static_cast<int32_t>(bytes)));
    }

    Element* first;
};

}
}
