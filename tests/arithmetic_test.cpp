// Float images into float images against their models, and what the contract says of them in particular.
#include "model/arithmetic.h"

#include <cfenv>

#include "float_bits.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(Arithmetic, "arithmetic");

// Which of two NaNs survives is not promised: where both operands of a channel are one, src becomes 1.0.
static void keepOneNaN(const Image<float>& src, const Image<float>& srcDst, int channelsComputed)
{
    const int channels = src.shape().channels;
    for (int y = 0; y < src.height(); y++) {
        for (int x = 0; x < src.width() * channels; x++) {
            if (x % channels >= channelsComputed) continue;
            if (isNaN(bitsOf(src, x, y)) && isNaN(bitsOf(srcDst, x, y))) setBits(src, x, y, one);
        }
    }
}

// Every form of every binary operation: do(name, channels, channels that are computed)
#define EACH_BINARY_FORM(DO, operation) \
    DO(operation##_C1IR, 1, 1)          \
    DO(operation##_C3IR, 3, 3)          \
    DO(operation##_C4IR, 4, 4)          \
    DO(operation##_AC4IR, 4, 3)
#define EACH_BINARY(DO)                 \
    EACH_BINARY_FORM(DO, ruxiAdd_32f)   \
    EACH_BINARY_FORM(DO, ruxiSub_32f)   \
    EACH_BINARY_FORM(DO, ruxiMul_32f)

#define SWEEP(name, channels, computed)                                               \
    TEST_P(Arithmetic, name)                                                          \
    {                                                                                 \
        sweep(RUX_OPERATION(name), imageSweep(), [](Case& c, const auto& compare) {   \
            const auto src = c.image<float>(channels);                                      \
            const auto srcDst = c.image<float>(channels);                             \
            keepOneNaN(src, srcDst, computed);                                        \
            compare(src, src.step(), srcDst, srcDst.step(), c.roi());                 \
        });                                                                           \
    }
EACH_BINARY(SWEEP)
#undef SWEEP

TEST_P(Arithmetic, refusesWrongArguments)
{
    const Image<float> src(Shape{13, 3, 4}, 1), srcDst(Shape{13, 3, 4}, 2, ordinary<float>);
#define REFUSE(name, channels, computed) \
    refuse(RUX_OPERATION(name), src, src.step(), srcDst, srcDst.step(), src.roi());
    EACH_BINARY(REFUSE)
#undef REFUSE
}

TEST_P(Arithmetic, zeroWidthWinsOverNullPointersInC3AndC4Alone)
{
    const float* const none = nullptr;
    float* const noneEither = nullptr;
#define EXPECT_STATUS(status, name, width, height) \
    EXPECT_EQ(call(name, none, 4, noneEither, 4, ruxiSize{width, height}), status) << #name
#define NULLS(name, zeroWidth)                  \
    EXPECT_STATUS(zeroWidth, name, 0, 1);       \
    EXPECT_STATUS(zeroWidth, name, -1, 0);      \
    EXPECT_STATUS(-8, name, 1, 0);              \
    EXPECT_STATUS(-8, name, 1, 1);
#define FORMS(operation) \
    NULLS(operation##_C1IR, -8) NULLS(operation##_C3IR, -6) NULLS(operation##_C4IR, -6) NULLS(operation##_AC4IR, -8)
    FORMS(ruxiAdd_32f)
    FORMS(ruxiSub_32f)
    FORMS(ruxiMul_32f)
#undef FORMS
#undef NULLS
#undef EXPECT_STATUS
}

TEST_P(Arithmetic, channelsTimesWidthWraps)
{
    struct Wrapping {
        int32_t width, elements;
    };
    const auto widthsOf = [](int channels) -> std::vector<Wrapping> {
        if (channels == 3) return {{0x55555556, 2}, {0x5555555A, 14}, {0x2AAAAAAB, -0x7FFFFFFF}, {0x55555555, -1}};
        return {{0x40000001, 4}, {0x40000000, 0}, {0x20000000, INT_MIN}, {0x7FFFFFFF, -4}};
    };
#define WRAP(name, channels)                                                                             \
    for (const auto& [width, elements] : widthsOf(channels)) {                                           \
        Image<float> src(Shape{20, 2}, 5, ordinary<float>), srcDst(Shape{20, 2}, 6, ordinary<float>);    \
        const ruxiSize size{width, 2};                                                                   \
        const int32_t expected = elements < 1 ? ruxStatusSizeError : ruxStatusOk;                        \
        EXPECT_EQ(agree(RUX_OPERATION(name), src, src.step(), srcDst, srcDst.step(), size), expected);   \
        const float* const none = nullptr;                                                               \
        EXPECT_EQ(call(name, none, 4, srcDst.data(), 4, size), ruxStatusNullPointer);                    \
    }
    WRAP(ruxiAdd_32f_C3IR, 3)
    WRAP(ruxiSub_32f_C3IR, 3)
    WRAP(ruxiMul_32f_C3IR, 3)
    WRAP(ruxiAdd_32f_C4IR, 4)
    WRAP(ruxiSub_32f_C4IR, 4)
    WRAP(ruxiMul_32f_C4IR, 4)
#undef WRAP
}

// The fourth float of a pixel on rows of every length and alignment: also under 11 elements, where no vector is used.
TEST_P(Arithmetic, fourthFloatIsStoredAgainAtSseLevelsOnly)
{
    const bool again = level() >= a6;
    for (int width = 1; width <= 20; width++) {
        for (int alignment = 0; alignment < 16; alignment++) {
            const Shape shape = Shape{width, 2, 4}.at({Edge::end, alignment});
            const auto after = [&](auto operation, uint32_t before) {
                const Image<float> src(shape, 7);
                Image<float> srcDst(shape, 8, ordinary<float>);
                for (int x = 3; x < 4 * width; x += 4) setBits(srcDst, x, 0, before), setBits(srcDst, x, 1, before);
                EXPECT_EQ(call(operation, src.data(), src.step(), srcDst.data(), srcDst.step(), src.roi()), 0);
                const uint32_t value = bitsOf(srcDst, 3);
                for (int x = 3; x < 4 * width; x += 4) {
                    EXPECT_EQ(bitsOf(srcDst, x, 0), value) << x;
                    EXPECT_EQ(bitsOf(srcDst, x, 1), value) << x;
                }
                return value;
            };
            EXPECT_EQ(after(ruxiAdd_32f_AC4IR, minusZero), again ? 0 : minusZero);
            EXPECT_EQ(after(ruxiSub_32f_AC4IR, minusZero), minusZero);
            EXPECT_EQ(after(ruxiMul_32f_AC4IR, minusZero), minusZero);
            EXPECT_EQ(after(ruxiAdd_32f_AC4IR, signallingNaN), again ? quietedNaN : signallingNaN);
            EXPECT_EQ(after(ruxiSub_32f_AC4IR, signallingNaN), again ? quietedNaN : signallingNaN);
            EXPECT_EQ(after(ruxiMul_32f_AC4IR, signallingNaN), again ? quietedNaN : signallingNaN);
            EXPECT_EQ(after(ruxiMul_32f_AC4IR, 1), 1u);
            EXPECT_EQ(after(ruxiSub_32f_AC4IR, infinity), infinity);
            if (HasFailure()) FAIL() << "width " << width << ", alignment " << alignment;
        }
    }
}

// A stride may be shorter than a row; then each row takes up what the one before has left.
TEST_P(Arithmetic, overlappingRowsGoFromFirstToLast)
{
    for (int step : {4, 8, 12, 40, 100}) {
        const Image<float> src(Shape{41, 4}.withStep(step), 9, uniform<float>(-3, 3));
        const Image<float> srcDst(Shape{41, 4}.withStep(step), 10, uniform<float>(-3, 3));
        agree(RUX_OPERATION(ruxiAdd_32f_C1IR), src, src.step(), srcDst, srcDst.step(), src.roi());
        agree(RUX_OPERATION(ruxiSub_32f_C1IR), src, src.step(), srcDst, srcDst.step(), src.roi());
        agree(RUX_OPERATION(ruxiMul_32f_C1IR), src, src.step(), srcDst, srcDst.step(), src.roi());
    }
}

TEST_P(Arithmetic, takesOneImageTwice)
{
    const Image<float> image(Shape{43, 3}, 4, ordinary<float>);
    agree(RUX_OPERATION(ruxiAdd_32f_C1IR), image, image.step(), image, image.step(), image.roi());
    agree(RUX_OPERATION(ruxiMul_32f_C1IR), image, image.step(), image, image.step(), image.roi());
    agree(RUX_OPERATION(ruxiSub_32f_C1IR), image, image.step(), image, image.step(), image.roi());
}

// What needs no rounding is the same in every state that a host may have set, and the state is kept.
TEST_P(Arithmetic, bearsEveryHostState)
{
    const Image<float> src(Shape{29, 2, 4}, 1, wholeNumbers(1, 999));
    const Image<float> srcDst(Shape{29, 2, 4}, 2, wholeNumbers(1000, 2000));
    for (const HostState& state : hostStates()) {
#define UNDER(name, channels, computed) \
    agreeUnder(state, RUX_OPERATION(name), src, src.step(), srcDst.clone(), srcDst.step(), src.roi());
        EACH_BINARY(UNDER)
#undef UNDER
    }
}

// Any contents, also those whose results are denormal or overflow.
TEST_P(Arithmetic, x87PrecisionChangesNothing)
{
    for (int precision : {24, 53, 64}) {
        const HostState state = HostState().precision(precision);
        for (uint64_t seed = 1; seed <= 8; seed++) {
            const Image<float> src(Shape{97, 2, 4}, seed), srcDst(Shape{97, 2, 4}, seed + 100);
            keepOneNaN(src, srcDst, 4);
#define UNDER(name, channels, computed) \
    agreeUnder(state, RUX_OPERATION(name), src, src.step(), srcDst.clone(), srcDst.step(), src.roi());
            EACH_BINARY(UNDER)
#undef UNDER
        }
    }
}

// A host that sets both units to one mode gets results rounded in that mode, at every level.
TEST_P(Arithmetic, roundsInTheHostsMode)
{
    for (int mode : {FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO}) {
        const Image<float> src(Shape{97, 2, 4}, 21), srcDst(Shape{97, 2, 4}, 22);
        keepOneNaN(src, srcDst, 4);
        ASSERT_EQ(std::fesetround(mode), 0);
#define AGREE(name, channels, computed) \
    agree(RUX_OPERATION(name), src, src.step(), srcDst.clone(), srcDst.step(), src.roi());
        EACH_BINARY(AGREE)
#undef AGREE
        std::fesetround(FE_TONEAREST);
    }
}

}
