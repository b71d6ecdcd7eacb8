// Which filters store past the caches, and which end with a store fence: no byte shows it, so the executed instructions
// are counted.
#include "ruxlib.h"
#include "support/allocation.h"
#include "support/call.h"
#include "support/image.h"
#include "support/levels.h"
#include "support/trace.h"

namespace rux::test {

class FilterStreaming : public LevelTest {
protected:
    void SetUp() override
    {
        LevelTest::SetUp();
        const Image<uint8_t> one(Shape{1, 1}, 1);
        Trace trace;
        call(ruxiSet_8u_C1R, 0, one.data(), 1, one.roi());
        if (!trace.works()) GTEST_SKIP() << "no single steps here";
    }

    static Trace wayOfBox(ruxiSize mask, ruxStatus expected = ruxStatusOk)
    {
        const Image<uint8_t> src(Shape{50, 3}.margins(1, 1, mask.width, mask.height), 1), dst(Shape{50, 3}, 2);
        Trace trace;
        EXPECT_EQ(call(ruxiFilterBox_8u_C1R, src.data(), src.step(), dst.data(), 50, dst.roi(), mask, ruxiPoint{1, 1}),
                  expected);
        return trace;
    }

    template <class Function>
    static Trace wayOfMedian(Function function, int32_t maskCode, int width, int offset)
    {
        const Image<uint8_t> src(Shape{width, 1}.margins(2, 2, 2, 2), 1);
        const Image<uint8_t> dst(Shape{width, 1}.at({Edge::start, offset}), 2);
        Trace trace;
        EXPECT_EQ(call(function, src.data(), src.step(), dst.data(), dst.step(), dst.roi(), maskCode), ruxStatusOk);
        return trace;
    }
};

RUX_AT_EACH_LEVEL(FilterStreaming);

TEST_P(FilterStreaming, boxEndsWithOneFence)
{
    const int fences = level() == a6 || level() == w7 ? 1 : 0;
    for (const ruxiSize mask : {ruxiSize{3, 3}, ruxiSize{2, 2}, ruxiSize{9, 4}}) {
        EXPECT_EQ(wayOfBox(mask).fences, fences) << mask.width << "x" << mask.height;
    }
}

TEST_P(FilterStreaming, boxWithoutMemoryFencesAtTheTopLevel)
{
    if (level() != w7) GTEST_SKIP() << "told of w7 alone";
    const RefusedAllocation refused(1);
    EXPECT_EQ(wayOfBox({9, 4}, ruxStatusMemoryAllocated).fences, 1);
}

// From the destination's first boundary on, blocks of 8 pixels at a6; at w7 of 32 in the rows, of 16 in the crosses,
// each stored 16 bytes at once. The call ends with one fence.
TEST_P(FilterStreaming, mediansStoreWholeBlocks)
{
    const auto expectStores = [&](const Trace& way, int width, int offset, int block) {
        const auto blocks = [&](int boundary, int size) {
            const int lead = (boundary - offset % boundary) % boundary;
            return width < lead ? 0 : (width - lead) / size;
        };
        EXPECT_EQ(way.streaming8, level() == a6 ? blocks(8, 8) : 0) << width << " at " << offset;
        EXPECT_EQ(way.streaming16, level() == w7 ? blocks(16, block) * (block / 16) : 0) << width << " at " << offset;
        EXPECT_EQ(way.fences, level() == a6 || level() == w7 ? 1 : 0);
    };
    for (const int offset : {0, 1, 8, 15}) {
        for (const int width : {7, 8, 31, 32, 75}) {
            if (offset != 0 && (level() == px || level() == m6)) continue;   // nothing to tell apart
            for (const int32_t maskCode : {31, 51}) {
                expectStores(wayOfMedian(ruxiFilterMedianHoriz_8u_C1R, maskCode, width, offset), width, offset, 32);
            }
            for (const int32_t maskCode : {33, 55}) {
                expectStores(wayOfMedian(ruxiFilterMedianCross_8u_C1R, maskCode, width, offset), width, offset, 16);
            }
        }
    }
}

}
