// Division by a constant against its model, and what the contract says of it in particular.
#include <cfenv>

#include "float_bits.h"
#include "model/arithmetic.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(Divide, "divide");

// Reciprocals of every kind: 0, 1, infinite, denormal, ordinary.
static uint32_t divisor(Random& random)
{
    static constexpr uint32_t values[] = {two,        0x40400000, 0x3DCCCCCD, 0xC0E9999A, one,        0xBF800000,
                                          infinity,   0xFF800000, 0x000116C2, 0x800116C2, largest,    0xFF7FFFFF,
                                          1,          0x80000001, 0x7E967699, 0x3F7FFFFF, 0x3F800001, 0x7F000000};
    return values[random.below(sizeof values / sizeof *values)];
}

TEST_P(Divide, ruxiDivC_32f_C1IR)
{
    sweep(RUX_OPERATION(ruxiDivC_32f_C1IR), imageSweep(), [](Case& c, const auto& compare) {
        const auto srcDst = c.image<float>();
        compare(FloatBits{divisor(c.random)}, srcDst, srcDst.step(), c.roi());
    });
}

TEST_P(Divide, refusesWrongArguments)
{
    const Image<float> srcDst(Shape{13, 3}, 2);
    const auto value =
        wrongly(FloatBits{two}, {{0}, {minusZero}, {0x7FC00000}, {0xFFC00000}, {0x7FA00000}, {signallingNaN}});
    refuse(RUX_OPERATION(ruxiDivC_32f_C1IR), value, srcDst, srcDst.step(), srcDst.roi());
}

// A row of `width` equal elements through DivC; the element that they all become.
static uint32_t divided(int width, uint32_t element, uint32_t value, ruxStatus status = ruxStatusOk)
{
    for (int alignment : {0, 4, 5}) {
        Image<float> image(Shape{width, 2}.at({Edge::end, alignment}), 1, allOf(element));
        EXPECT_EQ(call(ruxiDivC_32f_C1IR, FloatBits{value}, image.data(), image.step(), image.roi()), status);
        const uint32_t result = bitsOf(image, 0);
        for (int x = 1; x < width; x++) EXPECT_EQ(bitsOf(image, x, x % 2), result) << x << " of " << width;
        if (alignment == 5) return result;
    }
    return 0;
}

TEST_P(Divide, edges)
{
    constexpr uint32_t tiny = 0x000116C2;   // 1e-40
    for (int width : {1, 3, 10, 11, 12, 19, 40}) {
        for (uint32_t element : {0u, minusZero, signallingNaN, 0x7FC00000u, 1u, infinity}) {
            EXPECT_EQ(divided(width, element, one), element);
            EXPECT_EQ(divided(width, element, infinity), 0u);
            EXPECT_EQ(divided(width, element, minusInfinity), 0u);
            for (uint32_t zeroOrNaN : {0u, minusZero, 0x7FC00000u, 0xFFC00000u, 0x7FA00000u, signallingNaN}) {
                EXPECT_EQ(divided(width, element, zeroOrNaN, -10), element);
            }
        }
        EXPECT_EQ(divided(width, signallingNaN, two), quietedNaN);
        EXPECT_EQ(divided(width, 0x40400000, two), 0x3FC00000u);   // 3 by 2
        EXPECT_EQ(divided(width, 0, tiny), invalidNaN);
        EXPECT_EQ(divided(width, one, tiny), infinity);
        EXPECT_EQ(divided(width, one, tiny | minusZero), minusInfinity);
        EXPECT_EQ(divided(width, one, 0x7F000000), 0x00400000u);   // a reciprocal that is denormal
        // With the reciprocal: true division gives one unit less in the last place.
        EXPECT_EQ(divided(width, 0x40A00000, 0x40400000), 0x3FD55556u);   // 5 by 3
        EXPECT_EQ(divided(width, 0x40400000, 0x40E00000), 0x3EDB6DB8u);   // 3 by 7
    }
}

TEST_P(Divide, checksInOrder)
{
    float* const none = nullptr;
    Image<float> image(Shape{4, 1}, 3);
    const auto before = image.clone();
    EXPECT_EQ(call(ruxiDivC_32f_C1IR, 0.0f, none, 0, ruxiSize{0, 0}), -8);
    EXPECT_EQ(call(ruxiDivC_32f_C1IR, 0.0f, image.data(), 0, ruxiSize{0, 1}), -6);
    EXPECT_EQ(call(ruxiDivC_32f_C1IR, 0.0f, image.data(), 0, ruxiSize{4, 0}), -6);
    EXPECT_EQ(call(ruxiDivC_32f_C1IR, 0.0f, image.data(), 0, ruxiSize{4, 1}), -14);
    EXPECT_EQ(call(ruxiDivC_32f_C1IR, 0.0f, image.data(), 16, ruxiSize{4, 1}), -10);
    EXPECT_TRUE(image.equals(before));
}

TEST_P(Divide, overlappingRowsGoFromFirstToLast)
{
    for (int step : {4, 8, 12, 40, 100}) {
        for (float value : {3.0f, 1.0f, std::numeric_limits<float>::infinity()}) {
            const Image<float> srcDst(Shape{41, 4}.withStep(step), 10, ordinary<float>);
            agree(RUX_OPERATION(ruxiDivC_32f_C1IR), value, srcDst, srcDst.step(), srcDst.roi());
        }
    }
}

TEST_P(Divide, bearsEveryHostState)
{
    const Image<float> srcDst(Shape{119, 2}, 2, wholeNumbers(1, 2000));
    for (const HostState& state : hostStates()) {
        for (float value : {4.0f, 1.0f, std::numeric_limits<float>::infinity()}) {
            agreeUnder(state, RUX_OPERATION(ruxiDivC_32f_C1IR), value, srcDst.clone(), srcDst.step(), srcDst.roi());
        }
    }
}

TEST_P(Divide, x87PrecisionChangesNothing)
{
    Random random(5);
    for (int precision : {24, 53, 64}) {
        const HostState state = HostState().precision(precision);
        for (uint64_t seed = 1; seed <= 40; seed++) {
            const Image<float> srcDst(Shape{388, 2}, seed);
            agreeUnder(state, RUX_OPERATION(ruxiDivC_32f_C1IR), FloatBits{divisor(random)}, srcDst, srcDst.step(),
                       srcDst.roi());
        }
    }
}

// A host that sets both units to one mode gets results rounded in that mode, at every level.
TEST_P(Divide, roundsInTheHostsMode)
{
    for (int mode : {FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO}) {
        for (uint32_t value : {0x40E00000u, 0x7E967699u, 0x3F7FFFFFu, 0xBF7FFFFFu}) {
            const Image<float> srcDst(Shape{388, 2}, 22);
            ASSERT_EQ(std::fesetround(mode), 0);
            agree(RUX_OPERATION(ruxiDivC_32f_C1IR), FloatBits{value}, srcDst, srcDst.step(), srcDst.roi());
            std::fesetround(FE_TONEAREST);
        }
    }
}

}
