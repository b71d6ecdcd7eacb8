#include "support/allocation.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <mutex>
#include <set>

#include "support/note.h"
#include "support/per_thread.h"

namespace rux::test {
namespace {

RUX_PER_THREAD bool insideLibrary = false;
std::atomic<int> blocks{0}, asked{0};
std::atomic<int> untilRefusal{0};   // 1: the next allocation is refused; 0 and below: none
StandInAllocator* standIn = nullptr;

// The blocks of the real allocator: those that a contract leaks are found here.
std::mutex liveMutex;
std::set<void*> live;

// The time in a stand-in is not the library's.
class OutsideLibrary {
public:
    OutsideLibrary() { insideLibrary = false; }
    ~OutsideLibrary() { insideLibrary = true; }
};

}

int outstandingBlocks()
{
    return blocks;
}

int allocationsAsked()
{
    return asked;
}

void forgetBlocks()
{
    const std::lock_guard lock(liveMutex);
    for (void* block : live) std::free(block);
    live.clear();
    blocks = 0;
    asked = 0;
}

RefusedAllocation::RefusedAllocation(int number)
{
    untilRefusal = number;
}

RefusedAllocation::~RefusedAllocation()
{
    untilRefusal = 0;
}

bool RefusedAllocation::happened() const
{
    return untilRefusal <= 0;
}

StandInAllocator::StandInAllocator()
{
    standIn = this;
}

StandInAllocator::~StandInAllocator()
{
    standIn = nullptr;
}

void forEachRefusal(int allocations, const std::function<void(bool refused)>& action)
{
    const int askedBefore = asked, blocksBefore = blocks;
    action(false);
    EXPECT_EQ(asked - askedBefore, allocations) << "allocations when none is refused";
    for (int number = 1; number <= allocations; number++) {
        Note note([=] { return "allocation " + std::to_string(number) + " refused"; });
        RefusedAllocation refused(number);
        action(true);
        EXPECT_TRUE(refused.happened()) << Note::all();
        EXPECT_EQ(blocks, blocksBefore) << Note::all();
    }
}

InsideLibrary::InsideLibrary()
{
    insideLibrary = true;
}

InsideLibrary::~InsideLibrary()
{
    insideLibrary = false;
}

}

extern "C" {

void* __real_malloc(size_t bytes);
void __real_free(void* block);

void* __wrap_malloc(size_t bytes)
{
    using namespace rux::test;
    if (!insideLibrary) return __real_malloc(bytes);
    asked++;
    if (untilRefusal-- == 1) return nullptr;
    const OutsideLibrary outside;
    if (standIn) {
        void* const block = standIn->allocate(bytes);
        if (block) blocks++;
        return block;
    }
    void* const block = __real_malloc(bytes);
    if (!block) return nullptr;
    blocks++;
    const std::lock_guard lock(liveMutex);
    live.insert(block);
    return block;
}

void __wrap_free(void* block)
{
    using namespace rux::test;
    if (!insideLibrary) return __real_free(block);
    const OutsideLibrary outside;
    if (block) blocks--;
    if (standIn) return standIn->release(block);
    {
        const std::lock_guard lock(liveMutex);
        live.erase(block);
    }
    __real_free(block);
}

}
