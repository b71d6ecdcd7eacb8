#include "support/allocation.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>

#include "support/note.h"
#include "support/per_thread.h"

namespace rux::test {
namespace {

RUX_PER_THREAD bool insideLibrary = false;
std::atomic<int> blocks{0}, asked{0};
std::atomic<int> untilRefusal{0};   // 1: the next allocation is refused; 0 and below: none
StandInAllocator* standIn = nullptr;

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
    void* const block = standIn ? standIn->allocate(bytes) : __real_malloc(bytes);
    if (block) blocks++;
    return block;
}

void __wrap_free(void* block)
{
    using namespace rux::test;
    if (!insideLibrary) return __real_free(block);
    const OutsideLibrary outside;
    if (block) blocks--;
    if (standIn) standIn->release(block);
    else __real_free(block);
}

}
