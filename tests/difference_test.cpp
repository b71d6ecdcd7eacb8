// Difference blocks, against the models and the contract's numbers.
#include "half_pel_shapes.h"
#include "model/difference.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(Difference, "difference");

template <class Op>
static void sweepOneDirection(FamilyTest& test, const Op& operation, int size)
{
    test.sweep(operation, blockSweep(120), [&](Case& c, const auto& compare) {
        const int32_t mode = halfPelMode(c.random), roundControl = c.random.between(0, 1);
        const auto src = blockOf<uint8_t>(c, Shape{size, size});
        const auto ref = blockOf<uint8_t>(c, halfPelShape(size, size, mode));
        const auto dst = blockOf<int16_t>(c, Shape{size, size});
        if (c.random.oneIn(3)) {
            const auto step = static_cast<int32_t>(c.random.next());
            int16_t* const none = nullptr;
            return compare(src, src.step(), ref, ref.step(), dst, dst.step(), none, step, mode, roundControl);
        }
        const auto pred = blockOf<int16_t>(c, Shape{size, size});
        compare(src, src.step(), ref, ref.step(), dst, dst.step(), pred, pred.step(), mode, roundControl);
    });
}

template <class Op>
static void sweepTwoDirections(FamilyTest& test, const Op& operation, int size)
{
    test.sweep(operation, blockSweep(200), [&](Case& c, const auto& compare) {
        const int32_t modeForward = halfPelMode(c.random), modeBackward = halfPelMode(c.random);
        const int32_t roundControl = c.random.between(0, 1);
        const auto src = blockOf<uint8_t>(c, Shape{size, size});
        const auto forward = blockOf<uint8_t>(c, halfPelShape(size, size, modeForward));
        const auto backward = blockOf<uint8_t>(c, halfPelShape(size, size, modeBackward));
        const auto dst = blockOf<int16_t>(c, Shape{size, size});
        compare(src, src.step(), forward, forward.step(), modeForward, backward, backward.step(), modeBackward, dst,
                dst.step(), roundControl);
    });
}

TEST_P(Difference, ruxiGetDiff16x16_8u16s_C1)
{
    sweepOneDirection(*this, RUX_OPERATION(ruxiGetDiff16x16_8u16s_C1), 16);
}
TEST_P(Difference, ruxiGetDiff8x8_8u16s_C1)
{
    sweepOneDirection(*this, RUX_OPERATION(ruxiGetDiff8x8_8u16s_C1), 8);
}
TEST_P(Difference, ruxiGetDiff16x16B_8u16s_C1)
{
    sweepTwoDirections(*this, RUX_OPERATION(ruxiGetDiff16x16B_8u16s_C1), 16);
}
TEST_P(Difference, ruxiGetDiff8x8B_8u16s_C1)
{
    sweepTwoDirections(*this, RUX_OPERATION(ruxiGetDiff8x8B_8u16s_C1), 8);
}

// Calls an action with both operations of each size, and the size.
template <class Action>
static void eachSize(const Action& action)
{
    action(RUX_OPERATION(ruxiGetDiff16x16_8u16s_C1), RUX_OPERATION(ruxiGetDiff16x16B_8u16s_C1), 16);
    action(RUX_OPERATION(ruxiGetDiff8x8_8u16s_C1), RUX_OPERATION(ruxiGetDiff8x8B_8u16s_C1), 8);
}

TEST_P(Difference, refusesWrongArguments)
{
    eachSize([&](const auto& one, const auto& two, int size) {
        const Image<uint8_t> src(Shape{size, size}, 1), ref(Shape{size + 1, size + 1}, 2);
        const Image<uint8_t> other(Shape{size + 1, size + 1}, 3);
        const Image<int16_t> dst(Shape{size, size}, 4), pred(Shape{size, size}, 5);
        const int32_t srcStep = src.step(), refStep = ref.step(), otherStep = other.step(), dstStep = dst.step();
        const int32_t predStep = pred.step(), mode = mcHalfBoth;
        refuse(one, src, srcStep, ref, refStep, dst, dstStep, pred, predStep, mode, 0);
        refuse(two, src, srcStep, ref, refStep, mode, other, otherStep, mode, dst, dstStep, 0);
    });
}

// A block and its references, each of one value.
struct Setting {
    Setting(int sample, int ahead, int behind)
        : src(Shape{16, 16}, 1, constant(static_cast<uint8_t>(sample))),
          forward(Shape{17, 17}, 1, constant(static_cast<uint8_t>(ahead))),
          backward(Shape{17, 17}, 1, constant(static_cast<uint8_t>(behind)))
    {
    }
    template <class Operation>
    int one(const Operation& operation, int32_t mode, int32_t roundControl)
    {
        EXPECT_EQ(call(operation.function, src.data(), 16, forward.data(), 17, dst.data(), 32, pred.data(), 32, mode,
                       roundControl), 0);
        return dst.get(7, 7);
    }
    template <class Operation>
    int two(const Operation& operation)
    {
        EXPECT_EQ(call(operation.function, src.data(), 16, forward.data(), 17, mcFullPel, backward.data(), 17,
                       mcFullPel, dst.data(), 32, 0), 0);
        return dst.get(7, 7);
    }

    Image<uint8_t> src, forward, backward;
    Image<int16_t> dst{Shape{16, 16}, 1}, pred{Shape{16, 16}, 1};
};

TEST_P(Difference, averageOfTwoIsRoundedUp)
{
    eachSize([&](const auto&, const auto& two, int) {
        EXPECT_EQ(Setting(10, 9, 12).two(two), -1);
        EXPECT_EQ(Setting(10, 9, 10).two(two), 0);
        EXPECT_EQ(Setting(255, 0, 0).two(two), 255);
        EXPECT_EQ(Setting(0, 255, 255).two(two), -255);
    });
}

// The folded form equals src - ((pf + pb + 1) >> 1) for every input.
TEST_P(Difference, foldedFormIsThePlainOne)
{
    for (int sum = 0; sum <= 510; sum++) {
        const int ahead = sum / 2, behind = sum - ahead;
        for (const int sample : {0, 1, 127, 128, 254, 255}) {
            Setting s(sample, ahead, behind);
            ASSERT_EQ(s.two(RUX_OPERATION(ruxiGetDiff8x8B_8u16s_C1)), sample - ((sum + 1) >> 1)) << sum;
        }
    }
}

TEST_P(Difference, roundControlLowersTheRounding)
{
    eachSize([&](const auto& one, const auto&, int) {
        for (const int32_t roundControl : {0, 1}) {
            Setting s(0, 0, 0);
            s.forward.set(7, 7, 1);
            EXPECT_EQ(s.one(one, mcHalfHorz, roundControl), -(1 - roundControl));
            EXPECT_EQ(s.pred.get(7, 7), 1 - roundControl);
        }
    });
}

// A host should give nothing but 0 and 1; if it does, the levels still agree.
TEST_P(Difference, anyRoundControl)
{
    Random random(1);
    eachSize([&](const auto& one, const auto& two, int size) {
        for (const int32_t roundControl : {2, 3, -1, -2, 4, 255, 256, 511, 1024, -70000, 70001}) {
            for (const int32_t mode : halfPelModes) {
                const Image<uint8_t> src(Shape{size, size}, random.next());
                const Image<uint8_t> ref(halfPelShape(size, size, mode), random.next());
                const Image<int16_t> dst(Shape{size, size}, 1), pred(Shape{size, size}, 2);
                agree(one, src, src.step(), ref, ref.step(), dst, dst.step(), pred, pred.step(), mode, roundControl);
                for (const int32_t otherMode : halfPelModes) {
                    const Image<uint8_t> other(halfPelShape(size, size, otherMode), random.next());
                    agree(two, src, src.step(), ref, ref.step(), mode, other, other.step(), otherMode, dst, dst.step(),
                          roundControl);
                }
            }
        }
    });
}

TEST_P(Difference, predictionIsOptional)
{
    eachSize([&](const auto& one, const auto&, int size) {
        for (const int32_t mode : halfPelModes) {
            const Image<uint8_t> src(Shape{size, size}, 1), ref(halfPelShape(size, size, mode), 2);
            const Image<int16_t> with(Shape{size, size}, 3), without(Shape{size, size}, 3), pred(Shape{size, size}, 4);
            int16_t* const none = nullptr;
            call(one.function, src.data(), src.step(), ref.data(), ref.step(), with.data(), with.step(), pred.data(),
                 pred.step(), mode, 0);
            call(one.function, src.data(), src.step(), ref.data(), ref.step(), without.data(), without.step(), none,
                 -77, mode, 0);
            EXPECT_TRUE(with.equals(without));
        }
    });
}

// Residual and whole-sample prediction give the block back.
TEST_P(Difference, motionCompensationGivesTheBlockBack)
{
    const Image<uint8_t> src(Shape{16, 16}, 1), ref(Shape{16, 16}, 2);
    const Image<uint8_t> dst(Shape{16, 16}.at({Edge::start}), 3);
    const Image<int16_t> residual(Shape{16, 16}.at({Edge::start}), 4);
    int16_t* const none = nullptr;
    ASSERT_EQ(call(ruxiGetDiff16x16_8u16s_C1, src.data(), 16, ref.data(), 16, residual.data(), 32, none, 0, mcFullPel,
                   0), 0);
    ASSERT_EQ(call(ruxiMC16x16_8u_C1, ref.data(), 16, residual.data(), 32, dst.data(), 16, mcFullPel, 0), 0);
    for (int y = 0; y < 16; y++) {
        for (int x = 0; x < 16; x++) ASSERT_EQ(dst.get(x, y), src.get(x, y));
    }
}

}
