// Bytes to floats and back: values, rounding whatever the host's modes, and which stores go past the caches.
#include "float_bits.h"
#include "model/convert.h"
#include "ruxlib.h"
#include "support/family.h"
#include "support/trace.h"

namespace rux::test {

RUX_FAMILY(Convert, "convert");

// Whole numbers and halves from -1.5 to 257, and the floats beside them.
static void nearHalves(Random& random, float* row, int count)
{
    for (int i = 0; i < count; i++) {
        const float value = static_cast<float>(random.between(-3, 514)) / 2;
        uint32_t bits;
        std::memcpy(&bits, &value, sizeof bits);
        bits += static_cast<uint32_t>(random.between(-1, 1));
        std::memcpy(row + i, &bits, sizeof bits);
    }
}

static void anyFloats(Random& random, float* row, int count)
{
    if (random.oneIn(2)) return nearHalves(random, row, count);
    if (random.oneIn(2)) return uniform<float>(-20, 300)(random, row, count);
    mixture(random, row, count);
}

static const std::vector<int32_t> roundModes = {1, 0, 2, -1, 257, INT32_MAX, INT32_MIN};

TEST_P(Convert, ruxiConvert_8u32f_C1R)
{
    sweep(RUX_OPERATION(ruxiConvert_8u32f_C1R), imageSweep(), [](Case& c, const auto& compare) {
        const auto dst = c.image<float>();
        const auto src = c.image<uint8_t>(1, anyBits<uint8_t>);
        compare(src, src.step(), dst, dst.step(), c.roi());
    });
}

TEST_P(Convert, ruxiConvert_32f8u_C1R)
{
    sweep(RUX_OPERATION(ruxiConvert_32f8u_C1R), imageSweep(), [](Case& c, const auto& compare) {
        const auto src = c.image<float>(1, anyFloats);
        const auto dst = c.image<uint8_t>();
        compare(src, src.step(), dst, dst.step(), c.roi(), 1);
        compare(src, src.step(), dst, dst.step(), c.roi(), 0);
    });
}

TEST_P(Convert, everyByteAsAFloat)
{
    const Image<uint8_t> src(Shape{256, 1});
    const Image<float> dst(Shape{256, 1});
    for (int x = 0; x < 256; x++) src.row(0)[x] = static_cast<uint8_t>(x);
    EXPECT_EQ(call(ruxiConvert_8u32f_C1R, src.data(), 256, dst.data(), 1024, src.roi()), 0);
    for (int x = 0; x < 256; x++) EXPECT_EQ(dst.get(x), static_cast<float>(x));
}

// Runs and rows on both sides of the sizes from which w7 stores past the caches.
TEST_P(Convert, largeImages)
{
    for (const ruxiSize size : {ruxiSize{52427, 1}, ruxiSize{52429, 1}, ruxiSize{256, 410}, ruxiSize{257, 409},
                                ruxiSize{1023, 103}}) {
        const Image<uint8_t> src(Shape{size.width, size.height}, 1, anyBits<uint8_t>);
        for (int gap : {0, 4, 5}) {
            const Image<float> dst(Shape{size.width, size.height}.withStep(4 * size.width + gap), 2);
            agree(RUX_OPERATION(ruxiConvert_8u32f_C1R), src, src.step(), dst, dst.step(), size);
        }
    }
}

class Rounding32f8u : public Convert {
protected:
    // The byte that a whole row of the value becomes.
    static int converted(uint32_t bits, int32_t roundMode)
    {
        const Image<float> src(Shape{41, 1}, 1, allOf(bits));
        const Image<uint8_t> dst(Shape{41, 1}, 2);
        EXPECT_EQ(call(ruxiConvert_32f8u_C1R, src.data(), src.step(), dst.data(), dst.step(), src.roi(), roundMode), 0);
        for (int x = 1; x < 41; x++) EXPECT_EQ(dst.get(x), dst.get(0)) << x;
        return dst.get(0);
    }
    static int converted(float value, int32_t roundMode)
    {
        uint32_t bits;
        std::memcpy(&bits, &value, sizeof bits);
        return converted(bits, roundMode);
    }
};
RUX_AT_EACH_LEVEL(Rounding32f8u);

TEST_P(Rounding32f8u, tiesGoToEven)
{
    EXPECT_EQ(converted(254.5f, 1), 254);
    EXPECT_EQ(converted(253.5f, 1), 254);
    EXPECT_EQ(converted(0.5f, 1), 0);
    EXPECT_EQ(converted(1.5f, 1), 2);
    EXPECT_EQ(converted(0.49999997f, 1), 0);
}

TEST_P(Rounding32f8u, anyModeButOneCutsOff)
{
    EXPECT_EQ(converted(254.9f, 1), 255);
    for (int32_t mode : roundModes) {
        if (mode != 1) {
            EXPECT_EQ(converted(254.9f, mode), 254) << mode;
        }
    }
}

TEST_P(Rounding32f8u, saturates)
{
    for (int32_t mode : {0, 1}) {
        EXPECT_EQ(converted(-0.4f, mode), 0);
        EXPECT_EQ(converted(-0.6f, mode), 0);
        EXPECT_EQ(converted(300.0f, mode), 255);
        EXPECT_EQ(converted(3e9f, mode), 255);
        EXPECT_EQ(converted(-3e9f, mode), 0);
        EXPECT_EQ(converted(infinity, mode), 255);
        EXPECT_EQ(converted(minusInfinity, mode), 0);
    }
}

TEST_P(Rounding32f8u, notANumber)
{
    const int expected = level() == px || level() == m6 ? 0 : 255;
    for (uint32_t nan : {0x7FC00000u, 0xFFC00001u, 0x7F800001u, 0xFFA00000u, 0x7FFFFFFFu}) {
        EXPECT_EQ(converted(nan, 0), expected);
        EXPECT_EQ(converted(nan, 1), expected);
    }
}

TEST_P(Rounding32f8u, everyHalfAndItsNeighbours)
{
    const Image<float> src(Shape{3, 519});
    for (int half = -3; half < 516; half++) {
        const float value = static_cast<float>(half) / 2;
        uint32_t bits;
        std::memcpy(&bits, &value, sizeof bits);
        for (int x = 0; x < 3; x++) setBits(src, x, half + 3, bits + static_cast<uint32_t>(x) - 1);
    }
    const Image<uint8_t> dst(Shape{3, 519});
    for (int32_t mode : roundModes) {
        agree(RUX_OPERATION(ruxiConvert_32f8u_C1R), src, src.step(), dst, dst.step(), src.roi(), mode);
    }
}

TEST_P(Rounding32f8u, owesNothingToTheHostsModes)
{
    const Image<float> src(Shape{150, 3, 1, 601}, 1, anyFloats);
    const Image<uint8_t> dst(Shape{150, 3}, 2), bytes(Shape{150, 3}, 3);
    const Image<float> floats(Shape{150, 3}, 4);
    float* const none = nullptr;
    for (const HostState& state : hostStates()) {
        for (int32_t mode : {0, 1, 2}) {
            agreeUnder(state, RUX_OPERATION(ruxiConvert_32f8u_C1R), src, src.step(), dst, dst.step(), src.roi(), mode);
            EXPECT_EQ(callUnder(state, ruxiConvert_32f8u_C1R, none, 600, dst.data(), 150, src.roi(), mode), -8);
            EXPECT_EQ(callUnder(state, ruxiConvert_32f8u_C1R, src.data(), 0, dst.data(), 150, src.roi(), mode), -14);
        }
        agreeUnder(state, RUX_OPERATION(ruxiConvert_8u32f_C1R), bytes, bytes.step(), floats, floats.step(), src.roi());
    }
}

TEST_P(Convert, refusesWrongArguments)
{
    const Image<uint8_t> bytes(Shape{23, 3}, 1);
    const Image<float> floats(Shape{23, 3}, 2);
    refuse(RUX_OPERATION(ruxiConvert_8u32f_C1R), bytes, bytes.step(), floats, floats.step(), bytes.roi());
    refuse(RUX_OPERATION(ruxiConvert_32f8u_C1R), floats, floats.step(), bytes, bytes.step(), bytes.roi(),
           wrongly<int32_t>(1, roundModes));
}

TEST_P(Convert, looksAtSizeBeforeStride)
{
    const Image<uint8_t> bytes(Shape{4, 1});
    const Image<float> floats(Shape{4, 1});
    EXPECT_EQ(call(ruxiConvert_8u32f_C1R, bytes.data(), 0, floats.data(), 16, ruxiSize{0, 1}), -6);
    EXPECT_EQ(call(ruxiConvert_32f8u_C1R, floats.data(), 0, bytes.data(), 4, ruxiSize{0, 1}, 1), -6);
    EXPECT_EQ(call(ruxiConvert_32f8u_C1R, floats.data(), 0, bytes.data(), 4, ruxiSize{4, 1}, 1), -14);
}

class ConvertStreaming : public Convert {
protected:
    // A large call's first steps show how its runs begin.
    static constexpr int firstSteps = 1500;

    static Trace wayToFloats(ruxiSize size, int gap)
    {
        const Image<uint8_t> src(Shape{size.width, size.height}, 1, anyBits<uint8_t>);
        const Shape rows = Shape{size.width, size.height}.withStep(4 * size.width + gap);
        const Image<float> dst(rows.at({Edge::start, 16}), 2, anyBits<float>);
        Trace trace(firstSteps);
        EXPECT_EQ(call(ruxiConvert_8u32f_C1R, src.data(), src.step(), dst.data(), dst.step(), size), 0);
        return trace;
    }
    static int streamed(const Trace& trace) { return trace.streaming8 + trace.streaming16; }
};
RUX_AT_EACH_LEVEL(ConvertStreaming);

TEST_P(ConvertStreaming, floatsPastTheCaches)
{
    if (!wayToFloats({1, 1}, 0).works()) GTEST_SKIP() << "no single steps here";
    // At a6 at any size, at w7 above 52428 elements in one run, above 104858 in rows of more than 256.
    const struct { ruxiSize size; int gap; bool large; } cases[] = {
        {{64, 2}, 0, false},    {{64, 2}, 16, false},    {{52428, 1}, 0, false},  {{52429, 1}, 0, true},
        {{52432, 2}, 16, true}, {{52429, 2}, 16, false}, {{256, 410}, 16, false}, {{264, 400}, 16, true},
    };
    for (const auto& [size, gap, large] : cases) {
        SCOPED_TRACE(std::to_string(size.width) + "x" + std::to_string(size.height) + " gap " + std::to_string(gap));
        const Trace way = wayToFloats(size, gap);
        EXPECT_EQ(streamed(way) > 0, level() == a6 || (level() == w7 && large));
    }
}

// An image of one run ends with one fence at a6, whatever its size.
TEST_P(ConvertStreaming, aFenceEndsTheRunAtA6)
{
    const Trace way = wayToFloats({40, 3}, 0);
    if (!way.works()) GTEST_SKIP() << "no single steps here";
    EXPECT_EQ(way.fences, level() == a6 ? 1 : 0);
}

TEST_P(ConvertStreaming, bytesPastTheCachesAtA6)
{
    const Image<float> src(Shape{64, 2}.at({Edge::start, 16}), 1);
    const Image<uint8_t> dst(Shape{64, 2}.at({Edge::start, 16}), 2);
    Trace trace;
    EXPECT_EQ(call(ruxiConvert_32f8u_C1R, src.data(), src.step(), dst.data(), dst.step(), src.roi(), 1), 0);
    if (!trace.works()) GTEST_SKIP() << "no single steps here";
    EXPECT_EQ(streamed(trace) > 0, level() == a6);
}

}
