// Allocations of the library, counted and refused.
#include <gtest/gtest-spi.h>

#include <cstdlib>

#include "ruxlib.h"
#include "support/call.h"
#include "support/levels.h"

#include "support/allocation.h"

namespace rux::test {
namespace {

// Takes two blocks and frees them; -9 when it cannot.
ruxStatus RUXCALL careful()
{
    void* volatile first = std::malloc(10);
    void* volatile second = first ? std::malloc(20) : nullptr;
    const bool both = first && second;
    std::free(second);
    std::free(first);
    return both ? 0 : -9;
}

// Forgets its first block when the second is refused.
ruxStatus RUXCALL careless()
{
    void* volatile first = std::malloc(10);
    if (!first) return -9;
    void* volatile second = std::malloc(20);
    if (!second) return -9;
    std::free(second);
    std::free(first);
    return 0;
}

class Allocation : public LevelTest {};
RUX_AT_EACH_LEVEL(Allocation);

TEST_P(Allocation, isRefusedInTurn)
{
    int runs = 0;
    forEachRefusal(2, [&](bool refused) {
        runs++;
        EXPECT_EQ(call(careful), refused ? -9 : 0);
    });
    EXPECT_EQ(runs, 3);
    EXPECT_EQ(outstandingBlocks(), 0);
}

TEST_P(Allocation, isMissedWhenForgotten)
{
    EXPECT_NONFATAL_FAILURE(forEachRefusal(2, [](bool) { call(careless); }), "allocation 2 refused");
    EXPECT_EQ(outstandingBlocks(), 1);
    EXPECT_NONFATAL_FAILURE(TearDown(), "not freed");
    forgetBlocks();
    EXPECT_EQ(outstandingBlocks(), 0);
}

TEST_P(Allocation, isCountedToTheLast)
{
    EXPECT_NONFATAL_FAILURE(forEachRefusal(1, [](bool) { call(careful); }), "allocations when none is refused");
}

TEST_P(Allocation, isTheLibrarysAlone)
{
    void* volatile own = std::malloc(10);
    EXPECT_EQ(outstandingBlocks(), 0);
    std::free(own);
    uint8_t* const block = call(ruxsMalloc_8u, 100);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(outstandingBlocks(), 1);
    call(ruxsFree, block);
    EXPECT_EQ(outstandingBlocks(), 0);
    EXPECT_EQ(allocationsAsked(), 1);
    const RefusedAllocation refused(1);
    EXPECT_EQ(call(ruxsMalloc_8u, 100), nullptr);
    EXPECT_TRUE(refused.happened());
}

}
}
