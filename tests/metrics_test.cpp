// Block metrics, against the models and the contract's numbers.
#include "half_pel_shapes.h"
#include "model/metrics.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(Metrics, "metrics");

// One of the four, or at times something else.
static int32_t anyMode(Random& random)
{
    if (!random.oneIn(4)) return halfPelModes[random.below(4)];
    return random.oneIn(2) ? random.between(-1, 16) : static_cast<int32_t>(random.next());
}

// A reference whose row below is taken (stride AND 255) bytes on: where that is not the stride, the block's 16 rows and
// the bytes behind them.
static Image<uint8_t> narrowReference(Case& c, int32_t mode)
{
    if (c.random.oneIn(2)) {
        const int step = c.random.between(17, 255);
        return c.image<uint8_t>(halfPelShape(16, 16, mode).withStep(step));
    }
    const int32_t steps[] = {256, 257, 272, 300, 511, 720, 1024, 2000, -17, -32, -40, -256, -300, 0x10010};
    const int32_t step = steps[c.random.below(14)];
    const int below = mode & mcHalfVert ? step & 255 : 0;
    return c.image<uint8_t>(Shape{16, 16}.margins(0, 0, below + (mode & mcHalfHorz ? 1 : 0), 0).withStep(step));
}

TEST_P(Metrics, ruxiSAD16x16_8u32s)
{
    sweep(RUX_OPERATION(ruxiSAD16x16_8u32s), blockSweep(200), [&](Case& c, const auto& compare) {
        const int32_t mode = anyMode(c.random);
        const auto src = blockOf<uint8_t>(c, Shape{16, 16});
        const auto ref = level() == px ? narrowReference(c, mode) : blockOf<uint8_t>(c, halfPelShape(16, 16, mode));
        const auto result = c.vector<int32_t>(1);
        compare(src, src.step(), ref, ref.step(), result, mode);
    });
}

TEST_P(Metrics, ruxiSqrDiff16x16_8u32s)
{
    sweep(RUX_OPERATION(ruxiSqrDiff16x16_8u32s), blockSweep(200), [&](Case& c, const auto& compare) {
        const int32_t mode = anyMode(c.random);
        const bool known = mode == mcFullPel || mode == mcHalfVert || mode == mcHalfHorz;
        const auto src = blockOf<uint8_t>(c, Shape{16, 16});
        const auto ref = blockOf<uint8_t>(c, halfPelShape(16, 16, known ? mode : mcHalfBoth));
        const auto result = c.vector<int32_t>(1);
        compare(src, src.step(), ref, ref.step(), mode, result);
    });
}

TEST_P(Metrics, ruxiSqrDiff16x16B_8u32s)
{
    sweep(RUX_OPERATION(ruxiSqrDiff16x16B_8u32s), blockSweep(300), [&](Case& c, const auto& compare) {
        const int32_t modeForward = halfPelMode(c.random), modeBackward = halfPelMode(c.random);
        const auto src = blockOf<uint8_t>(c, Shape{16, 16});
        const auto forward = narrowReference(c, modeForward);
        const auto backward = narrowReference(c, modeBackward);
        const auto result = c.vector<int32_t>(1);
        compare(src, src.step(), forward, forward.step(), modeForward, backward, backward.step(), modeBackward, result);
    });
}

TEST_P(Metrics, ruxiVariance16x16_8u32s)
{
    sweep(RUX_OPERATION(ruxiVariance16x16_8u32s), blockSweep(200), [&](Case& c, const auto& compare) {
        const int low = c.random.oneIn(3) ? 0 : c.random.between(0, 255);
        const auto src = blockOf<uint8_t>(c, Shape{16, 16}, uniform<uint8_t>(low, 255));
        const auto result = c.vector<int32_t>(1);
        compare(src, src.step(), result);
    });
}

TEST_P(Metrics, refusesWrongArguments)
{
    const Image<uint8_t> src(Shape{16, 16}, 1), ref(Shape{17, 17}, 2), other(Shape{17, 17}, 3);
    const Image<int32_t> result(vectorOf(1), 4);
    for (const int32_t mode : {int32_t(mcHalfBoth), 1}) {   // the pointers come before the mode
        refuse(RUX_OPERATION(ruxiSAD16x16_8u32s), src, 16, ref, 17, result, mode);
        refuse(RUX_OPERATION(ruxiSqrDiff16x16_8u32s), src, 16, ref, 17, mode, result);
        refuse(RUX_OPERATION(ruxiSqrDiff16x16B_8u32s), src, 16, ref, 17, mode, other, 17, mode, result);
    }
    refuse(RUX_OPERATION(ruxiVariance16x16_8u32s), src, 16, result);
}

// Two blocks of 17x17 samples, and a result that no measure gives.
struct Setting {
    Setting(uint8_t sample, uint8_t reference)
        : src(Shape{17, 17}, 1, constant(sample)), ref(Shape{17, 17}, 1, constant(reference))
    {
    }
    int32_t sad(int32_t mode)
    {
        EXPECT_EQ(call(ruxiSAD16x16_8u32s, src.data(), 17, ref.data(), 17, &result, mode), 0);
        return result;
    }
    int32_t squares(int32_t mode)
    {
        EXPECT_EQ(call(ruxiSqrDiff16x16_8u32s, src.data(), 17, ref.data(), 17, mode, &result), 0);
        return result;
    }
    int32_t variance()
    {
        EXPECT_EQ(call(ruxiVariance16x16_8u32s, src.data(), 17, &result), 0);
        return result;
    }

    Image<uint8_t> src, ref;
    int32_t result = -77;
};

TEST_P(Metrics, identicalBlocksDifferByNothing)
{
    Setting s(0, 0);
    s.src.fill(3, mixture<uint8_t>);
    s.ref.fill(3, mixture<uint8_t>);
    EXPECT_EQ(s.sad(mcFullPel), 0);
    EXPECT_EQ(s.squares(mcFullPel), 0);
    int32_t both = -77;
    EXPECT_EQ(call(ruxiSqrDiff16x16B_8u32s, s.src.data(), 17, s.ref.data(), 17, mcFullPel, s.src.data(), 17, mcFullPel,
                   &both), 0);
    EXPECT_EQ(both, 0);
}

TEST_P(Metrics, greatestDifference)
{
    for (const int32_t mode : halfPelModes) {
        EXPECT_EQ(Setting(0, 255).sad(mode), 256 * 255);
        EXPECT_EQ(Setting(255, 0).sad(mode), 256 * 255);
        EXPECT_EQ(Setting(0, 255).squares(mode), 256 * 255 * 255);
    }
}

TEST_P(Metrics, varianceOfFlatBlocks)
{
    EXPECT_EQ(Setting(100, 0).variance(), 0);
    EXPECT_EQ(Setting(181, 0).variance(), 0);   // a sum of 46336: the last whose square fits
    EXPECT_EQ(Setting(255, 0).variance(), level() == w7 ? 0 : 16777216);
}

TEST_P(Metrics, modeOutsideTheFour)
{
    Setting s(9, 10);
    EXPECT_EQ(s.sad(1), level() == px ? 256 : -77);
    s.result = -77;
    EXPECT_EQ(s.squares(1), level() == px ? 256 : -77);
}

// Modes 1 and 16 at px: every sample by the mean of one, and by the mean of four.
TEST_P(Metrics, oddModesOfThePlainLevel)
{
    if (level() != px) return;
    Setting s(0, 0);
    s.ref.set(0, 0, 7);
    EXPECT_EQ(s.sad(1), 7);
    EXPECT_EQ(s.sad(16), 7);
    EXPECT_EQ(s.squares(1), 4);    // (7 + 0 + 0 + 0 + 2) >> 2 is 2
    EXPECT_EQ(s.squares(16), 4);
}

// The row below is taken (256 AND 255) bytes on: the same row.
TEST_P(Metrics, wideReference)
{
    Image<uint8_t> src(Shape{16, 16}, 1, constant<uint8_t>(0));
    Image<uint8_t> ref(Shape{256, 17}, 1, constant<uint8_t>(0));
    for (int x = 0; x < 256; x++) ref.set(x, 16, 200);
    int32_t sum = -77, squares = -77, both = -77;
    call(ruxiSAD16x16_8u32s, src.data(), 16, ref.data(), 256, &sum, mcHalfVert);
    EXPECT_EQ(sum, level() == px ? 0 : 16 * 100);
    call(ruxiSqrDiff16x16_8u32s, src.data(), 16, ref.data(), 256, mcHalfVert, &squares);
    EXPECT_EQ(squares, 16 * 100 * 100);
    call(ruxiSqrDiff16x16B_8u32s, src.data(), 16, ref.data(), 256, mcHalfVert, ref.data(), 256, mcHalfVert, &both);
    EXPECT_EQ(both, 0);
}

}
