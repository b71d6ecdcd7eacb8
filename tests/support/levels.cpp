#include "support/levels.h"

#include <ostream>

#include "frame/dispatch.h"
#include "support/allocation.h"

namespace rux::test {

const char* nameOf(Level level)
{
    static const char* const names[] = {"px", "m6", "a6", "w7"};
    return names[level];
}

std::ostream& operator<<(std::ostream& stream, Level level)
{
    return stream << nameOf(level);
}

bool processorHas(Level level)
{
    __builtin_cpu_init();
    switch (level) {
    case px: return true;
    case m6: return __builtin_cpu_supports("mmx");
    case a6: return __builtin_cpu_supports("sse");
    default: return __builtin_cpu_supports("sse2");
    }
}

bool bindLevel(Level level)
{
    return processorHas(level) && ruxFillSlots(level) == 1;
}

void LevelTest::SetUp()
{
    if (!processorHas(level())) GTEST_SKIP() << "this processor has no " << level();
    ASSERT_TRUE(bindLevel(level())) << level();
    forgetBlocks();
}

void LevelTest::TearDown()
{
    EXPECT_EQ(outstandingBlocks(), 0) << "blocks of the library that were not freed";
}

}
