// Motion compensation, against the models and the contract's numbers.
#include <vector>

#include "half_pel_shapes.h"
#include "model/motion_compensation.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(MotionCompensation, "motion_compensation");

// 0 or 1, and what else a level takes: where roundControl is not read anything, where its lowest bit is looked at all
// that tells the same.
static int32_t roundOf(Random& random, Level level, int width, bool oneDirection)
{
    const int32_t usual = random.between(0, 1);
    if (level == px || level == m6 || random.oneIn(2)) return usual;
    const auto any = static_cast<int32_t>(random.next());
    if (level == w7 && width == 16) return any;
    if (!oneDirection) return any;
    return width == 8 && usual == 0 ? any & ~1 : usual;
}

static void residuals(Random& random, int16_t* row, int count)
{
    if (random.oneIn(4)) return mixture<int16_t>(random, row, count);
    const int size = random.oneIn(2) ? 300 : 8;
    for (int i = 0; i < count; i++) row[i] = static_cast<int16_t>(random.between(-size, size));
}

// An image at the case's stride or upside down; at 16-byte boundaries where w7 asks for them.
template <class T>
static Image<T> imageOf(Case& c, const Shape& shape, bool aligned, const Fill<T>& contents = mixture<T>)
{
    const int row = shape.width * static_cast<int>(sizeof(T));
    const int sign = c.random.oneIn(3) ? -1 : 1;
    const int apart = c.random.oneIn(3) ? 0 : c.random.between(1, 40);
    if (aligned) {
        const Edge edge = c.random.oneIn(2) ? Edge::start : Edge::end;
        return Image<T>(shape.withStep(sign * (row + 16 * apart)).at({edge}), c.random.next(), contents);
    }
    return sign < 0 ? c.image<T>(shape.withStep(-row - apart), contents) : c.image<T>(shape, contents);
}

static bool needsAlignment(Level level, int width)
{
    return level == w7 && width == 16;
}

template <class Op>
static void sweepOneDirection(FamilyTest& test, const Op& operation, int width, int height)
{
    const Level level = test.level();
    test.sweep(operation, blockSweep(80), [&](Case& c, const auto& compare) {
        const int32_t mode = halfPelMode(c.random), roundControl = roundOf(c.random, level, width, true);
        const auto src = imageOf<uint8_t>(c, halfPelShape(width, height, mode), false);
        const auto dst = imageOf<uint8_t>(c, Shape{width, height}, needsAlignment(level, width));
        const auto diff = imageOf<int16_t>(c, Shape{width, height}, needsAlignment(level, width), residuals);
        compare(src, src.step(), diff, diff.step(), dst, dst.step(), mode, roundControl);
    });
}

template <class Op>
static void sweepTwoDirections(FamilyTest& test, const Op& operation, int width, int height)
{
    const Level level = test.level();
    test.sweep(operation, blockSweep(120), [&](Case& c, const auto& compare) {
        const int32_t modeForward = halfPelMode(c.random), modeBackward = halfPelMode(c.random);
        const int32_t roundControl = roundOf(c.random, level, width, false);
        const auto forward = imageOf<uint8_t>(c, halfPelShape(width, height, modeForward), false);
        const auto dst = imageOf<uint8_t>(c, Shape{width, height}, needsAlignment(level, width));
        const auto backward = imageOf<uint8_t>(c, halfPelShape(width, height, modeBackward), false);
        const auto diff = imageOf<int16_t>(c, Shape{width, height}, needsAlignment(level, width), residuals);
        compare(forward, forward.step(), modeForward, backward, backward.step(), modeBackward, diff, diff.step(), dst,
                dst.step(), roundControl);
    });
}

#define EACH_SIZE(action) action(16, 16) action(16, 8) action(8, 16) action(8, 8) action(8, 4)

#define SWEEPS(width, height)                                                                          \
    TEST_P(MotionCompensation, ruxiMC##width##x##height##_8u_C1)                                       \
    {                                                                                                  \
        sweepOneDirection(*this, RUX_OPERATION(ruxiMC##width##x##height##_8u_C1), width, height);      \
    }                                                                                                  \
    TEST_P(MotionCompensation, ruxiMC##width##x##height##B_8u_C1)                                      \
    {                                                                                                  \
        sweepTwoDirections(*this, RUX_OPERATION(ruxiMC##width##x##height##B_8u_C1), width, height);    \
    }
EACH_SIZE(SWEEPS)

// Calls an action with both operations of each size, the width and the height.
template <class Action>
static void eachSize(const Action& action)
{
#define CALL(width, height) \
    action(RUX_OPERATION(ruxiMC##width##x##height##_8u_C1), RUX_OPERATION(ruxiMC##width##x##height##B_8u_C1), width, \
           height);
    EACH_SIZE(CALL)
}

// A stride of 0 repeats a row.
TEST_P(MotionCompensation, strideOfZero)
{
    eachSize([&](const auto& one, const auto& two, int width, int height) {
        for (const int32_t mode : halfPelModes) {
            const Image<uint8_t> row(Shape{width + 1, 1}, 1), src(Shape{width + 1, height + 1}, 2);
            const Image<uint8_t> dst(Shape{width, height}, 3);
            const Image<int16_t> residual(Shape{width, 1}, 4, residuals), diff(Shape{width, height}, 5, residuals);
            agree(one, row, 0, diff, diff.step(), dst, dst.step(), mode, 0);
            agree(one, src, src.step(), residual, 0, dst, dst.step(), mode, 0);
            agree(two, row, 0, mode, src, src.step(), mode, diff, diff.step(), dst, dst.step(), 1);
            agree(two, src, src.step(), mode, row, 0, mode, residual, 0, dst, dst.step(), 1);
        }
    });
}

// dst may stand where a source stands: its rows have then been read.
TEST_P(MotionCompensation, inThePlaceOfASource)
{
    eachSize([&](const auto& one, const auto& two, int width, int height) {
        for (const int32_t mode : halfPelModes) {
            for (const int32_t otherMode : halfPelModes) {
                const Shape shape = Shape{width + 1, height + 1}.withStep(48).at({Edge::start});
                const Image<uint8_t> picture(shape, 1), other(shape, 2);
                const Image<int16_t> diff(Shape{width, height}, 3, residuals);
                agree(one, picture, picture.step(), diff, diff.step(), picture, picture.step(), mode, 0);
                agree(two, picture, picture.step(), mode, other, other.step(), otherMode, diff, diff.step(), picture,
                      picture.step(), 0);
                agree(two, other, other.step(), mode, picture, picture.step(), otherMode, diff, diff.step(), picture,
                      picture.step(), 0);
            }
        }
    });
}

TEST_P(MotionCompensation, refusesWrongArguments)
{
    eachSize([&](const auto& one, const auto& two, int width, int height) {
        const Image<uint8_t> src(Shape{width + 1, height + 1}, 1), other(Shape{width + 1, height + 1}, 2);
        const Image<uint8_t> dst(Shape{width, height}, 3);
        const Image<int16_t> diff(Shape{width, height}, 4, residuals);
        const int32_t srcStep = src.step(), otherStep = other.step(), dstStep = dst.step(), diffStep = diff.step();
        const int32_t mode = mcHalfBoth;
        refuse(one, src, srcStep, diff, diffStep, dst, dstStep, mode, 0);
        refuse(two, src, srcStep, mode, other, otherStep, mode, diff, diffStep, dst, dstStep, 0);
    });
}

// A block, its two references and its residual, all 0 at first.
struct Setting {
    template <class Operation>
    void run(const Operation& operation, int32_t mode, int32_t roundControl)
    {
        ASSERT_EQ(call(operation.function, forward.data(), 32, diff.data(), 32, dst.data(), 16, mode, roundControl), 0);
    }
    template <class Operation>
    void runTwo(const Operation& operation, int32_t modeForward, int32_t modeBackward, int32_t roundControl)
    {
        ASSERT_EQ(call(operation.function, forward.data(), 32, modeForward, backward.data(), 32, modeBackward,
                       diff.data(), 32, dst.data(), 16, roundControl), 0);
    }
    void expectEverywhere(int value, int width, int height) const
    {
        for (int y = 0; y < height; y++) {
            for (int x = 0; x < width; x++) ASSERT_EQ(dst.get(x, y), value) << width << "x" << height << ": " << x;
        }
    }

    Image<uint8_t> forward{Shape{32, 17}, 1, constant<uint8_t>(0)};
    Image<uint8_t> backward{Shape{32, 17}, 1, constant<uint8_t>(0)};
    Image<int16_t> diff{Shape{16, 16}, 1, constant<int16_t>(0)};
    Image<uint8_t> dst{Shape{16, 16}, 1, constant<uint8_t>(77)};
};

TEST_P(MotionCompensation, otherBitsOfTheModeAreNotRead)
{
    eachSize([&](const auto& one, const auto& two, int width, int height) {
        for (const int32_t mode : halfPelModes) {
            Setting plain, other;
            for (Setting* s : {&plain, &other}) {
                s->forward.fill(5, mixture<uint8_t>);
                s->backward.fill(6, mixture<uint8_t>);
            }
            plain.run(one, mode, 0), other.run(one, mode | ~12, 0);
            EXPECT_TRUE(plain.dst.equals(other.dst)) << width << "x" << height;
            plain.runTwo(two, mode, 8, 0), other.runTwo(two, mode | 0x7ffffff3, 8 | 3, 0);
            EXPECT_TRUE(plain.dst.equals(other.dst)) << width << "x" << height;
        }
    });
}

// A negative intermediate is rounded toward zero, not down, should a roundControl of 2 make one.
TEST_P(MotionCompensation, blackWithRoundControl)
{
    eachSize([&](const auto& one, const auto&, int width, int height) {
        Setting s;
        s.diff.fill(1, constant<int16_t>(5));
        for (const int32_t mode : {mcHalfHorz, mcHalfVert, mcHalfBoth}) {
            s.run(one, mode, 1);
            s.expectEverywhere(5, width, height);
        }
        if (level() != px && level() != m6) return;
        s.run(one, mcHalfHorz, 2);
        s.expectEverywhere(5, width, height);
    });
}

TEST_P(MotionCompensation, blackDiagonal)
{
    eachSize([&](const auto& one, const auto&, int width, int height) {
        Setting s;
        s.run(one, mcHalfBoth, 0);
        const bool decremented = width == 8 && (level() == a6 || (level() == w7 && height == 16));
        s.expectEverywhere(decremented ? 128 : 0, width, height);
    });
}

// Samples 1, 0, 0, 0.
TEST_P(MotionCompensation, diagonalOfOneSample)
{
    eachSize([&](const auto& one, const auto&, int width, int) {
        if (width == 8 && level() >= a6) return;
        Setting s;
        s.forward.set(0, 0, 1);
        s.run(one, mcHalfBoth, 0);
        EXPECT_EQ(s.dst.get(0), 0);
    });
}

// Samples 1, 1, 0, 0, in any row of the block.
TEST_P(MotionCompensation, diagonalOfTwoSamples)
{
    eachSize([&](const auto& one, const auto&, int width, int height) {
        if (width == 8 && level() >= a6) return;
        for (int y = 0; y < height; y++) {
            Setting s;
            for (int x = 0; x < 32; x++) s.forward.set(x, y, 1);
            s.run(one, mcHalfBoth, 0);
            const bool decremented = level() == w7 && y < height - 1;
            for (int x = 0; x < width; x++) EXPECT_EQ(s.dst.get(x, y), decremented ? 0 : 1) << "row " << y;
        }
    });
}

// 128 is not decremented.
TEST_P(MotionCompensation, diagonalOf128)
{
    eachSize([&](const auto& one, const auto& two, int width, int height) {
        Setting s;
        s.forward.fill(1, constant<uint8_t>(128));
        s.run(one, mcHalfBoth, 0);
        s.expectEverywhere(128, width, height);
        s.backward.fill(1, constant<uint8_t>(128));
        s.runTwo(two, mcHalfBoth, mcHalfBoth, 0);
        s.expectEverywhere(128, width, height);
    });
}

TEST_P(MotionCompensation, saturates)
{
    eachSize([&](const auto& one, const auto& two, int width, int height) {
        for (const int residual : {-300, 300, -32768, 32767}) {
            for (const int sample : {0, 40, 255}) {
                Setting s;
                s.forward.fill(1, constant(static_cast<uint8_t>(sample)));
                s.backward.fill(1, constant<uint8_t>(200));
                s.diff.fill(1, constant(static_cast<int16_t>(residual)));
                for (const int32_t mode : halfPelModes) {
                    s.run(one, mode, 0);
                    s.expectEverywhere(residual < 0 ? 0 : 255, width, height);
                    s.runTwo(two, mode, mode, 0);
                    s.expectEverywhere(residual < 0 ? 0 : 255, width, height);
                }
            }
        }
    });
}

TEST_P(MotionCompensation, averageOfTwoWithResidual)
{
    eachSize([&](const auto&, const auto& two, int width, int height) {
        Setting s;
        s.forward.fill(1, constant<uint8_t>(10));
        s.backward.fill(1, constant<uint8_t>(13));
        s.diff.fill(1, constant<int16_t>(1));
        for (const int32_t roundControl : {0, 1}) {
            s.runTwo(two, mcFullPel, mcFullPel, roundControl);
            s.expectEverywhere(13, width, height);
        }
    });
}

}
