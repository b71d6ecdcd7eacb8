// What a call executes, counted.
#include <gtest/gtest.h>

#include "support/call.h"
#include "support/offenders.h"
#include "support/trace.h"

namespace rux::test {
namespace {

int32_t run(int32_t(RUXCALL* function)(int32_t, int32_t, const void*, ruxiSize))
{
    return call(function, 40, 2, nullptr, ruxiSize{3, 4});
}

TEST(Trace, countsEachKind)
{
    Trace trace;
    EXPECT_EQ(run(storesPastTheCaches), 42);
    if (!trace.works()) GTEST_SKIP() << "no single steps here";
    EXPECT_EQ(trace.streaming8, 2);
    EXPECT_EQ(trace.streaming16, 2);
    EXPECT_EQ(trace.fences, 1);
    EXPECT_EQ(trace.mmx, 2);
    EXPECT_EQ(trace.clearedMmx, 1);
    EXPECT_LT(trace.steps, 40);
}

TEST(Trace, isQuietOtherwise)
{
    {
        Trace trace;
        EXPECT_EQ(run(innocent), 42);
        EXPECT_EQ(trace.streaming8 + trace.streaming16 + trace.fences + trace.mmx + trace.clearedMmx, 0);
    }
    Trace limited(3);
    EXPECT_EQ(run(storesPastTheCaches), 42);
    EXPECT_LE(limited.steps, 3);
    EXPECT_EQ(limited.fences, 0);
}

}
}
