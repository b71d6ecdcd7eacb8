// Calls under watch: each check is seen to fail on an offender, and to pass beside it.
#include <gtest/gtest-spi.h>

#include "support/call.h"
#include "support/offenders.h"

namespace rux::test {
namespace {

const int anything = 0;

int32_t run(int32_t(RUXCALL* function)(int32_t, int32_t, const void*, ruxiSize))
{
    return call(function, 40, 2, &anything, ruxiSize{3, 4});
}

TEST(Call, findsNothingOnTheInnocent)
{
    EXPECT_EQ(run(innocent), 42);
    EXPECT_EQ(run(raisesExceptionFlags), 42);
}

TEST(Call, findsClobberedRegisters)
{
    EXPECT_NONFATAL_FAILURE(run(clobbersFirstRegister), "bx was");
    EXPECT_NONFATAL_FAILURE(run(clobbersFramePointer), "bp was");
    EXPECT_NONFATAL_FAILURE(run(clobbersThirdRegister), sizeof(void*) == 8 ? "r12 was" : "esi was");
    EXPECT_NONFATAL_FAILURE(run(clobbersLastRegister), sizeof(void*) == 8 ? "r15 was" : "edi was");
}

TEST(Call, findsMovedStackPointer)
{
    EXPECT_NONFATAL_FAILURE(run(popsTooMuch), "stack pointer moved");
}

TEST(Call, findsWriteAboveArguments)
{
    EXPECT_NONFATAL_FAILURE(run(writesAboveArguments), "word 0 above the arguments");
}

TEST(Call, findsChangedControlRegisters)
{
    EXPECT_NONFATAL_FAILURE(run(changesX87Rounding), "x87 control word");
    EXPECT_NONFATAL_FAILURE(run(changesVectorRounding), "MXCSR");
}

// Valgrind keeps neither.
TEST(Call, findsChangedPrecisionAndFlushing)
{
    if (!HostState().precision(24).flushDenormals().isKept()) GTEST_SKIP() << "this processor keeps less";
    EXPECT_NONFATAL_FAILURE(run(changesX87Precision), "x87 control word");
    EXPECT_NONFATAL_FAILURE(run(setsFlushToZero), "MXCSR");
}

TEST(Call, findsFloatStackInUse)
{
    EXPECT_NONFATAL_FAILURE(run(leavesMmxState), "x87 stack is not empty");
    EXPECT_NONFATAL_FAILURE(run(leavesValueOnX87Stack), "x87 stack is not empty");
}

TEST(Call, entersWithMmxInUse)
{
    EXPECT_NONFATAL_FAILURE(callUnder(HostState().mmxInUse(), innocent, 40, 2, &anything, ruxiSize{3, 4}),
                            "MMX in use:\nthe x87 stack is not empty");
    EXPECT_EQ(run(innocent), 42);
}

TEST(Call, findsDirectionFlag)
{
    EXPECT_NONFATAL_FAILURE(run(leavesDirectionFlag), "direction flag");
}

TEST(Call, putsGarbageAboveNarrowArguments)
{
    if (sizeof(void*) == 4) GTEST_SKIP() << "no argument is wider than 32 bits here";
    EXPECT_NE(call(upperHalfOfFirst, 1), 0);
}

TEST(Call, changesTheStacksBoundary)
{
    int seen = 0;
    for (int i = 0; i < 8; i++) seen |= 1 << call(stackModulo16);
    EXPECT_EQ(seen, sizeof(void*) == 4 ? 1 << 0 | 1 << 4 | 1 << 8 | 1 << 12 : 1 << 0);
}

// All kinds of arguments, more than registers hold, arrive as they were given.
struct Arrived {
    int32_t numbers[9];
    ruxiSize size;
    ruxiRect rect;
    uint32_t bits[2];
    double real;
    const void* pointer;
    uint8_t byte;
} arrived;

ruxStatus RUXCALL receive(const void* pointer, int32_t a, ruxiSize size, int32_t b, ruxiRect rect, int32_t c,
                          uint8_t byte, float f, double real, int16_t d, ruxiRect, const float* g, int32_t e)
{
    arrived = {{a, b, c, d, e}, size, rect, {0, 0}, real, pointer, byte};
    std::memcpy(arrived.bits, &f, sizeof f);
    std::memcpy(arrived.bits + 1, g, sizeof *g);
    return -5;
}

TEST(Call, handsOverAllArguments)
{
    const uint32_t signalling = 0x7FA00001;
    const auto* const real = reinterpret_cast<const float*>(&signalling);
    EXPECT_EQ(call(receive, &arrived, -1, ruxiSize{2, -3}, 4, ruxiRect{5, -6, 7, 8}, 9, 200, FloatBits{signalling},
                   -0.5, -10, ruxiRect{0, 0, 0, 0}, real, 11), -5);
    EXPECT_EQ(arrived.pointer, &arrived);
    const int32_t numbers[] = {-1, 4, 9, -10, 11};
    for (int i = 0; i < 5; i++) EXPECT_EQ(arrived.numbers[i], numbers[i]) << i;
    EXPECT_EQ(arrived.size.width, 2);
    EXPECT_EQ(arrived.size.height, -3);
    EXPECT_EQ(arrived.rect.x, 5);
    EXPECT_EQ(arrived.rect.y, -6);
    EXPECT_EQ(arrived.rect.width, 7);
    EXPECT_EQ(arrived.rect.height, 8);
    EXPECT_EQ(arrived.byte, 200);
    EXPECT_EQ(arrived.bits[0], signalling);
    EXPECT_EQ(arrived.bits[1], signalling);
    EXPECT_EQ(arrived.real, -0.5);
}

// The state in force in a call.
HostState found;
ruxStatus RUXCALL look()
{
    found = HostState();
    return 0;
}

TEST(HostState, holdsDuringTheCallAlone)
{
    const HostState before;
    for (const HostState& state : hostStates()) {
        callUnder(state, look);
        if (state.isKept()) {
            EXPECT_EQ(found.describe(), state.describe());
        }
        EXPECT_EQ(HostState().describe(), before.describe());
    }
}

}
}
