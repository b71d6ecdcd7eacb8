// The library's allocations, counted and refused. The library reaches malloc and free through the linker's
// --wrap=malloc and --wrap=free; only what happens inside call() is counted, so tests may allocate as they like.
//
//     forEachRefusal([&] { status = call(operation, ...); EXPECT_EQ(status, -9); });
//
// LevelTest fails a test that leaves blocks of the library unfreed.
#pragma once

#include <cstddef>
#include <functional>

namespace rux::test {

// Blocks that the library has allocated and not freed since the last forgetBlocks(); that frees them, since nobody else
// would.
int outstandingBlocks();
void forgetBlocks();

// Allocations that the library has asked for since forgetBlocks(), also those refused.
int allocationsAsked();

// While it lives, the library's allocation number `number`, from 1, is refused.
class RefusedAllocation {
public:
    explicit RefusedAllocation(int number);
    ~RefusedAllocation();
    bool happened() const;
};

// While it lives, the library's malloc and free come here instead.
class StandInAllocator {
public:
    StandInAllocator();
    virtual ~StandInAllocator();
    virtual void* allocate(size_t bytes) = 0;
    virtual void release(void* block) = 0;
};

// Runs an action that makes `allocations` allocations when none is refused, once for each of them refused. Fails where
// the count differs, where a refusal never comes, and where a run leaves other blocks than it found.
void forEachRefusal(int allocations, const std::function<void(bool refused)>& action);

// Marks the time inside a call of the library.
class InsideLibrary {
public:
    InsideLibrary();
    ~InsideLibrary();
};

}
