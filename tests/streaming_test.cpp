// Which runs of Copy and Set are stored past the caches, and with which registers: no byte shows it, so the executed
// instructions are counted. From px to m6 no run is; at a6 every run of 8 bytes or more is; at w7 the image's size
// decides, and in a copy the distance between source and destination.
#include "ruxlib.h"
#include "support/call.h"
#include "support/image.h"
#include "support/levels.h"
#include "support/trace.h"

namespace rux::test {

class Streaming : public LevelTest {
protected:
    void SetUp() override
    {
        LevelTest::SetUp();
        const Image<uint8_t> one(Shape{1, 1}, 1);
        Trace trace;
        call(ruxiSet_8u_C1R, 0, one.data(), 1, one.roi());
        if (!trace.works()) GTEST_SKIP() << "no single steps here";
    }

    // The call's way, as far as so many steps show it.
    template <class... Arguments>
    static Trace wayOf(int steps, const Arguments&... arguments)
    {
        Trace trace(steps);
        EXPECT_EQ(call(arguments...), ruxStatusOk);
        return trace;
    }

    // A large call's first steps show how its runs begin.
    static constexpr int firstSteps = 1500, allSteps = 1 << 17;

    void expectStores(const Trace& way, bool large)
    {
        EXPECT_EQ(way.streaming8 > 0, level() == a6);
        EXPECT_EQ(way.streaming16 > 0, level() == w7 && large);
        // In 64-bit builds compilers may put vector registers in the place of MMX registers.
        const bool mayUseMmx = level() == m6 || level() == a6;
        if (sizeof(void*) == 4 || !mayUseMmx) {
            EXPECT_EQ(way.mmx > 0, mayUseMmx);
        }
    }

    template <class T, class Function>
    void expectCopyThreshold(Function function, int channels)
    {
        const int pixel = static_cast<int>(sizeof(T)) * channels, width = 0x20000 / pixel;
        for (int more : {0, 1}) {
            const Shape shape{width + more, 1, channels};
            const Image<T> src(shape, 1), dst(shape.at(atStart), 2);
            SCOPED_TRACE(dst.describe());
            expectStores(wayOf(firstSteps, function, src.data(), src.step(), dst.data(), dst.step(), dst.roi()), more);
        }
    }

    template <class T, class Function, class Value>
    void expectFillThreshold(Function function, Value value, int bytes)
    {
        const int width = bytes / static_cast<int>(sizeof(T));
        for (int more : {0, 1}) {
            const Image<T> dst(Shape{width + more, 1, 1, 0, atStart}, 1);
            SCOPED_TRACE(dst.describe());
            expectStores(wayOf(firstSteps, function, value, dst.data(), dst.step(), dst.roi()), more);
        }
    }

    int fences(const Shape& shape, int steps = allSteps)
    {
        const Image<uint8_t> src(shape, 1), dst(shape, 2);
        return wayOf(steps, ruxiCopy_8u_C1R, src.data(), src.step(), dst.data(), dst.step(), dst.roi()).fences;
    }

    static constexpr Place atStart = {Edge::start, 16};
};

RUX_AT_EACH_LEVEL(Streaming);

TEST_P(Streaming, beginsAboveTheCopysThreshold)
{
    expectCopyThreshold<uint8_t>(ruxiCopy_8u_C1R, 1);
    expectCopyThreshold<uint8_t>(ruxiCopy_8u_C3R, 3);
    expectCopyThreshold<uint8_t>(ruxiCopy_8u_C4R, 4);
    expectCopyThreshold<int16_t>(ruxiCopy_16s_C1R, 1);
    expectCopyThreshold<float>(ruxiCopy_32f_C1R, 1);
}

TEST_P(Streaming, beginsAboveTheFillsThreshold)
{
    expectFillThreshold<uint8_t>(ruxiSet_8u_C1R, 5, 0x40000);
    expectFillThreshold<int16_t>(ruxiSet_16s_C1R, 5, 180000);
    expectFillThreshold<float>(ruxiSet_32f_C1R, FloatBits{5}, 0x40000);
}

// At w7, with D = (source - destination) modulo 64 KiB: not from 0xFEC0 to 0xFFF0.
TEST_P(Streaming, leavesTheBandOut)
{
    if (level() != w7) GTEST_SKIP() << "the distance decides at w7 alone";
    constexpr int bytes = 0x20000 + 4096, apart = 3 * 65536;
    const Image<uint8_t> both(Shape{apart + 65536 + bytes, 1, 1, 0, {Edge::start, 0}}, 1);
    for (int distance : {0, 1, 0x8000, 0xFEBF, 0xFEC0, 0xFEC1, 0xFF40, 0xFFEF, 0xFFF0, 0xFFF1, 0xFFFF}) {
        for (int offset : {0, 9}) {
            const uint8_t* const src = both.data() + apart + distance + offset;
            const Trace way = wayOf(firstSteps, ruxiCopy_8u_C1R, src, bytes, both.data() + offset, bytes,
                                    ruxiSize{bytes, 1});
            SCOPED_TRACE(distance);
            expectStores(way, distance < 0xFEC0 || distance > 0xFFF0);
        }
    }
}

// The size is that of the whole image, its runs are the rows: each ends with a fence of its own.
TEST_P(Streaming, fencesEachRun)
{
    EXPECT_EQ(fences(Shape{100, 7}), level() == a6 ? 1 : 0);                  // contiguous: one run
    EXPECT_EQ(fences(Shape{100, 7, 1, 101}), level() == a6 ? 7 : 0);
    EXPECT_EQ(fences(Shape{7, 7, 1, 8}), 0);                                  // runs too short for it
    if (level() != w7) return;
    EXPECT_EQ(fences(Shape{2000, 70, 1, 2001}), 70);
    EXPECT_EQ(fences(Shape{60, 2200, 1, 61}, 10 * firstSteps), 0);   // a large image, but its runs are too short
}

TEST_P(Streaming, fencesEachFilledRun)
{
    const auto fencesOf = [](auto function, auto value, const auto& dst) {
        return wayOf(allSteps, function, value, dst.data(), dst.step(), dst.roi()).fences;
    };
    EXPECT_EQ(fencesOf(ruxiSet_8u_C1R, 5, Image<uint8_t>(Shape{100, 7}, 1)), level() == a6 ? 1 : 0);
    EXPECT_EQ(fencesOf(ruxiSet_8u_C1R, 5, Image<uint8_t>(Shape{100, 7, 1, 101}, 1)), level() == a6 ? 7 : 0);
    EXPECT_EQ(fencesOf(ruxiSet_16s_C1R, 5, Image<int16_t>(Shape{100, 7}, 1)), level() == a6 ? 7 : 0);   // never merged
    EXPECT_EQ(fencesOf(ruxiSet_32f_C1R, FloatBits{5}, Image<float>(Shape{100, 7}, 1)), level() == a6 ? 7 : 0);
    if (level() != w7) return;
    EXPECT_EQ(fencesOf(ruxiSet_8u_C1R, 5, Image<uint8_t>(Shape{4000, 70, 1, 4001}, 1)), 70);
}

TEST_P(Streaming, isNotForMasksAndSingleChannels)
{
    const Image<uint8_t> src(Shape{60000, 1, 3}, 1), dst(Shape{60000, 1, 4}, 2);
    const ruxiSize roi = dst.roi();
    for (const Trace& way : {
             wayOf(firstSteps, ruxiCopy_8u_C1MR, src.data(), src.step(), dst.data(), dst.step(), roi, src.data(), 1),
             wayOf(firstSteps, ruxiCopy_8u_C3AC4R, src.data(), src.step(), dst.data(), dst.step(), roi),
             wayOf(firstSteps, ruxiSet_8u_C4CR, 5, dst.data(), dst.step(), roi)}) {
        EXPECT_EQ(way.streaming8 + way.streaming16 + way.fences + way.mmx, 0);
    }
}

// The size is a product of 32 bits: where it wraps to a negative number, the image counts as small.
TEST_P(Streaming, takesWrappedSizeAsItIs)
{
    if (level() != w7) GTEST_SKIP() << "the size decides at w7 alone";
    const ruxiSize size = {512, 1 << 22};   // its rows lie one byte apart
    const Shape bytes = vectorOf(size.width + size.height);
    const Image<uint8_t> src(bytes, 1), dst(bytes, 2);
    EXPECT_EQ(wayOf(firstSteps, ruxiCopy_8u_C1R, src.data(), 1, dst.data(), 1, size).streaming16, 0);
    EXPECT_EQ(wayOf(firstSteps, ruxiSet_8u_C1R, 5, dst.data(), 1, size).streaming16, 0);
}

}
