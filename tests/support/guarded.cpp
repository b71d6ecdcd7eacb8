#include "support/guarded.h"

#include <cstdio>
#include <cstdlib>
#include <map>
#include <mutex>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#else
#include <sys/mman.h>
#endif

namespace rux::test {
namespace {

constexpr size_t pageBytes = 4096;

uint8_t* mapBetweenGuards(size_t size)
{
    const size_t whole = size + 2 * pageBytes;
#ifdef _WIN32
    DWORD before;
    void* const memory = VirtualAlloc(nullptr, whole, MEM_RESERVE | MEM_COMMIT, PAGE_NOACCESS);
    uint8_t* const pages = static_cast<uint8_t*>(memory) + pageBytes;
    const bool mapped = memory && VirtualProtect(pages, size, PAGE_READWRITE, &before);
#else
    void* const memory = mmap(nullptr, whole, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    uint8_t* const pages = static_cast<uint8_t*>(memory) + pageBytes;
    const bool mapped = memory != MAP_FAILED && mprotect(pages, size, PROT_READ | PROT_WRITE) == 0;
#endif
    if (!mapped) {
        std::fprintf(stderr, "no memory for a guarded buffer of %zu bytes\n", size);
        std::abort();
    }
    return pages;
}

// Mapping costs more than most tests: small mappings are kept and given out again.
class Pool {
public:
    uint8_t* take(size_t size)
    {
        {
            const std::lock_guard lock(mutex);
            auto& free = spare[size];
            if (!free.empty()) {
                uint8_t* const pages = free.back();
                free.pop_back();
                return pages;
            }
        }
        return mapBetweenGuards(size);
    }

    void give(uint8_t* pages, size_t size)
    {
        if (size <= largestKept) {
            const std::lock_guard lock(mutex);
            spare[size].push_back(pages);
            return;
        }
#ifdef _WIN32
        VirtualFree(pages - pageBytes, 0, MEM_RELEASE);
#else
        munmap(pages - pageBytes, size + 2 * pageBytes);
#endif
    }

private:
    static constexpr size_t largestKept = 16 * pageBytes;
    std::mutex mutex;
    std::map<size_t, std::vector<uint8_t*>> spare;
};

Pool& pool()
{
    static Pool* const shared = new Pool;   // outlives every buffer
    return *shared;
}

size_t slackBytes(const Place& place)
{
    return place.offset == Place::touching ? 0 : 64;
}

}

Guarded::Guarded(size_t bytes, Place place)
    : pages(nullptr), size((bytes + slackBytes(place) + pageBytes - 1) / pageBytes * pageBytes), first(nullptr)
{
    if (size == 0) size = pageBytes;
    pages = pool().take(size);
    if (place.edge == Edge::start) {
        first = pages + (place.offset == Place::touching ? 0 : place.offset);
    } else {
        first = end() - bytes;
        if (place.offset != Place::touching) {
            first -= (reinterpret_cast<uintptr_t>(first) - static_cast<unsigned>(place.offset)) & 63;
        }
    }
}

Guarded::~Guarded()
{
    if (pages) pool().give(pages, size);
}

Guarded::Guarded(Guarded&& other) noexcept : pages(other.pages), size(other.size), first(other.first)
{
    other.pages = nullptr;
}

}
