// An 8-bit image into a float image, plain and weighted, against the models, and what the contract says in particular.
#include <cfenv>

#include "float_bits.h"
#include "model/arithmetic.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(Accumulate, "accumulate");

static uint32_t weight(Random& random)
{
    static constexpr uint32_t values[] = {0,   minusZero, one,      0xBF800000, 0x3F000000, 0x006CE3EE,
                                          two, largest,   infinity, 0x3DCCCCCD, 0x3E99999A, 0x00000001};
    if (random.oneIn(2)) return 0x3E000000 | (random.below(1u << 24) & 0xFFFFFF);   // from 0.125 to 0.5
    return values[random.below(sizeof values / sizeof *values)];
}

static Image<uint8_t> sourceOf(Case& c)
{
    const int step = c.random.oneIn(2) ? c.width + c.random.between(0, 70) : 0;
    return c.image<uint8_t>(Shape{c.width, c.height, 1, step});
}

TEST_P(Accumulate, ruxiAdd_8u32f_C1IR)
{
    sweep(RUX_OPERATION(ruxiAdd_8u32f_C1IR), imageSweep().strides(4), [](Case& c, const auto& compare) {
        const auto src = sourceOf(c);
        const auto srcDst = c.image<float>();
        compare(src, src.step(), srcDst, srcDst.step(), c.roi());
    });
}

TEST_P(Accumulate, ruxiAddWeighted_8u32f_C1IR)
{
    sweep(RUX_OPERATION(ruxiAddWeighted_8u32f_C1IR), imageSweep().strides(4), [](Case& c, const auto& compare) {
        const auto src = sourceOf(c);
        const auto srcDst = c.image<float>();
        compare(src, src.step(), srcDst, srcDst.step(), c.roi(), FloatBits{weight(c.random)});
    });
}

TEST_P(Accumulate, refusesWrongArguments)
{
    const Image<uint8_t> src(Shape{13, 3});
    const Image<float> srcDst(Shape{13, 3}.withStep(56));
    const auto srcStep = wrongly<int32_t>(13, {12, 0, -1, INT_MIN});
    const auto srcDstStep = wrongly<int32_t>(56, {53, 54, 55, 51, 48, 6, 2, 0, -4, INT_MIN});
    refuse(RUX_OPERATION(ruxiAdd_8u32f_C1IR), src, srcStep, srcDst, srcDstStep, src.roi());
    refuse(RUX_OPERATION(ruxiAddWeighted_8u32f_C1IR), src, srcStep, srcDst, srcDstStep, src.roi(), 0.25f);
}

TEST_P(Accumulate, takesEmptyImages)
{
    const Image<uint8_t> src(Shape{8, 2});
    const Image<float> srcDst(Shape{8, 2}, 2);
    const Image<float> before = srcDst.clone();
    struct Sizes {
        int32_t srcStep, srcDstStep, width, height;
        ruxStatus status;
    };
    const Sizes cases[] = {
        {8, 32, 0, 0, 0},   {8, 32, 0, 2, 0},   {8, 32, 8, 0, 0},   {0, 0, 0, 0, 0},    {0, 0, 0, 2, 0},
        {8, 6, 0, 0, -6},   {8, 33, 8, 0, -6},  {7, 32, 8, 0, -6},  {8, 28, 8, 0, -6},  {-1, 32, 0, 0, -6},
        {8, -4, 0, 0, -6},  {8, 32, -1, 0, -6}, {8, 32, 0, -1, -6}, {8, 6, 8, 1, -6},   {8, 34, 8, 1, -6},
        {7, 32, 8, 1, -6}};
    for (const auto& c : cases) {
        const Note note([&] { return std::to_string(c.srcStep) + " " + std::to_string(c.srcDstStep); });
        const ruxiSize size{c.width, c.height};
        EXPECT_EQ(call(ruxiAdd_8u32f_C1IR, src.data(), c.srcStep, srcDst.data(), c.srcDstStep, size), c.status)
            << toText(size) << "\n" << Note::all();
        EXPECT_EQ(call(ruxiAddWeighted_8u32f_C1IR, src.data(), c.srcStep, srcDst.data(), c.srcDstStep, size, 0.5f),
                  c.status) << toText(size) << "\n" << Note::all();
    }
    const uint8_t* const none = nullptr;
    EXPECT_EQ(call(ruxiAdd_8u32f_C1IR, none, -1, srcDst.data(), 6, ruxiSize{-1, -1}), -8);
    EXPECT_TRUE(srcDst.equals(before));
}

// A row of `width` equal elements through AddWeighted; the element that they all become.
static uint32_t weighted(int width, uint8_t src, uint32_t srcDst, uint32_t alpha)
{
    const Image<uint8_t> bytes(Shape{width, 1}, 1, constant<uint8_t>(src));
    Image<float> floats(Shape{width, 1}, 2, allOf(srcDst));
    EXPECT_EQ(call(ruxiAddWeighted_8u32f_C1IR, bytes.data(), bytes.step(), floats.data(), floats.step(), floats.roi(),
                   FloatBits{alpha}), 0);
    for (int x = 1; x < width; x++) EXPECT_EQ(bitsOf(floats, x), bitsOf(floats, 0)) << x << " of " << width;
    return bitsOf(floats, 0);
}

TEST_P(Accumulate, weightedSumRoundsByLevel)
{
    const bool single = level() >= a6;
    for (int width = 1; width <= 35; width++) {
        EXPECT_EQ(weighted(width, 240, 0x418F3333, 0x3E99999A), single ? 0x42A90F5D : 0x42A90F5C);
        EXPECT_EQ(weighted(width, 193, 0x42A43333, 0x3E99999A), single ? 0x42E6BD70 : 0x42E6BD71);
        EXPECT_EQ(weighted(width, 87, 0x437F3333, 0x3DCCCCCD), single ? 0x436E6148 : 0x436E6147);
        // The product overflows in single precision alone.
        EXPECT_EQ(weighted(width, 0, 0xFF7FFFFF, 0x3FC00000), single ? infinity : 0x7EFFFFFF);
    }
}

TEST_P(Accumulate, weightZeroLeavesFiniteValues)
{
    for (int width : {1, 2, 7, 8, 9, 16, 33}) {
        for (uint32_t value : {0u, one, 0xC37F0000u, 0x43960000u, 1u, 0x80000001u, largest, 0xFF7FFFFFu}) {
            EXPECT_EQ(weighted(width, 0, value, 0), value);
            EXPECT_EQ(weighted(width, 200, value, 0), value);
        }
        EXPECT_EQ(weighted(width, 0, minusZero, 0), 0u);
        EXPECT_EQ(weighted(width, 200, minusZero, 0), 0u);
        EXPECT_EQ(weighted(width, 200, infinity, 0), invalidNaN);
        EXPECT_EQ(weighted(width, 200, signallingNaN, 0), quietedNaN);
        EXPECT_EQ(weighted(width, 200, one, signallingNaN), quietedNaN);
    }
}

TEST_P(Accumulate, bearsEveryHostState)
{
    const Image<uint8_t> src(Shape{119, 2});
    const Image<float> srcDst(Shape{119, 2}, 2, wholeNumbers(1000, 2000));
    for (const HostState& state : hostStates()) {
        agreeUnder(state, RUX_OPERATION(ruxiAdd_8u32f_C1IR), src, src.step(), srcDst.clone(), srcDst.step(), src.roi());
        agreeUnder(state, RUX_OPERATION(ruxiAddWeighted_8u32f_C1IR), src, src.step(), srcDst.clone(), srcDst.step(),
                   src.roi(), 0.5f);
    }
}

TEST_P(Accumulate, x87PrecisionChangesNothing)
{
    for (int precision : {24, 53, 64}) {
        const HostState state = HostState().precision(precision);
        for (uint64_t seed = 1; seed <= 8; seed++) {
            const Image<uint8_t> src(Shape{388, 2}, seed);
            const Image<float> srcDst(Shape{388, 2}, seed + 100);
            agreeUnder(state, RUX_OPERATION(ruxiAdd_8u32f_C1IR), src, src.step(), srcDst.clone(), srcDst.step(),
                       src.roi());
            for (float alpha : {0.3f, 1e-30f, 3e38f}) {
                agreeUnder(state, RUX_OPERATION(ruxiAddWeighted_8u32f_C1IR), src, src.step(), srcDst.clone(),
                           srcDst.step(), src.roi(), alpha);
            }
        }
    }
}

// A host that sets both units to one mode gets results rounded in that mode, at every level.
TEST_P(Accumulate, roundsInTheHostsMode)
{
    for (int mode : {FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO}) {
        const Image<uint8_t> src(Shape{388, 2}, 23);
        const Image<float> srcDst(Shape{388, 2}, 22);
        ASSERT_EQ(std::fesetround(mode), 0);
        agree(RUX_OPERATION(ruxiAdd_8u32f_C1IR), src, src.step(), srcDst.clone(), srcDst.step(), src.roi());
        agree(RUX_OPERATION(ruxiAddWeighted_8u32f_C1IR), src, src.step(), srcDst.clone(), srcDst.step(), src.roi(),
              0.3f);
        std::fesetround(FE_TONEAREST);
    }
}

}
