// Float arithmetic against its models, and what the contract says of it in particular.
#include "model/arithmetic.h"

#include <cfenv>

#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {
namespace {

constexpr uint32_t minusZero = 0x80000000, one = 0x3F800000, two = 0x40000000, infinity = 0x7F800000;
constexpr uint32_t signallingNaN = 0xFFA12345, quietedNaN = 0xFFE12345, invalidNaN = 0xFFC00000;
constexpr uint32_t largest = 0x7F7FFFFF;

uint32_t bitsOf(const Image<float>& image, int x, int y = 0)
{
    uint32_t bits;
    std::memcpy(&bits, image.row(y) + 4 * x, sizeof bits);
    return bits;
}

void setBits(Image<float>& image, int x, int y, uint32_t bits)
{
    std::memcpy(image.row(y) + 4 * x, &bits, sizeof bits);
}

bool isNaN(uint32_t bits)
{
    return (bits & 0x7FFFFFFF) > infinity;
}

// Which of two NaNs survives is not promised: where both operands of a channel are one, src becomes 1.0.
void keepOneNaN(Image<float>& src, const Image<float>& srcDst, int channelsComputed)
{
    const int channels = src.shape().channels;
    for (int y = 0; y < src.height(); y++) {
        for (int x = 0; x < src.width() * channels; x++) {
            if (x % channels >= channelsComputed) continue;
            if (isNaN(bitsOf(src, x, y)) && isNaN(bitsOf(srcDst, x, y))) setBits(src, x, y, one);
        }
    }
}

Fill<float> bits(uint32_t value)
{
    return [=](Random&, float* row, int count) {
        for (int i = 0; i < count; i++) std::memcpy(row + i, &value, sizeof value);
    };
}

// Whole numbers, so that no sum, difference or product of two rounds or is zero: those do not depend on the mode.
const Fill<float> small = uniform<float>(1, 999), large = uniform<float>(1000, 2000);
Fill<float> whole(const Fill<float>& fill)
{
    return [=](Random& random, float* row, int count) {
        fill(random, row, count);
        for (int i = 0; i < count; i++) row[i] = static_cast<float>(static_cast<int>(row[i]));
    };
}

// Reciprocals of every kind: 0, 1, infinite, denormal, ordinary.
uint32_t divisor(Random& random)
{
    static constexpr uint32_t values[] = {two,        0x40400000, 0x3DCCCCCD, 0xC0E9999A, one,        0xBF800000,
                                          infinity,   0xFF800000, 0x000116C2, 0x800116C2, largest,    0xFF7FFFFF,
                                          1,          0x80000001, 0x7E967699, 0x3F7FFFFF, 0x3F800001, 0x7F000000};
    return values[random.below(sizeof values / sizeof *values)];
}

uint32_t weight(Random& random)
{
    static constexpr uint32_t values[] = {0,   minusZero, one,      0xBF800000, 0x3F000000, 0x006CE3EE,
                                          two, largest,   infinity, 0x3DCCCCCD, 0x3E99999A, 0x00000001};
    if (random.oneIn(2)) return 0x3E000000 | (random.below(1u << 24) & 0xFFFFFF);   // from 0.125 to 0.5
    return values[random.below(sizeof values / sizeof *values)];
}

}

RUX_FAMILY(Arithmetic, "arithmetic");

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
            auto src = c.image<float>(channels);                                      \
            const auto srcDst = c.image<float>(channels);                             \
            keepOneNaN(src, srcDst, computed);                                        \
            compare(src, src.step(), srcDst, srcDst.step(), c.roi());                 \
        });                                                                           \
    }
EACH_BINARY(SWEEP)
#undef SWEEP

TEST_P(Arithmetic, ruxiAdd_8u32f_C1IR)
{
    sweep(RUX_OPERATION(ruxiAdd_8u32f_C1IR), imageSweep().strides(4), [](Case& c, const auto& compare) {
        const int srcStep = c.random.oneIn(2) ? c.width + c.random.between(0, 70) : 0;
        const auto src = c.image<uint8_t>(Shape{c.width, c.height, 1, srcStep});
        const auto srcDst = c.image<float>();
        compare(src, src.step(), srcDst, srcDst.step(), c.roi());
    });
}

TEST_P(Arithmetic, ruxiAddWeighted_8u32f_C1IR)
{
    sweep(RUX_OPERATION(ruxiAddWeighted_8u32f_C1IR), imageSweep().strides(4), [](Case& c, const auto& compare) {
        const int srcStep = c.random.oneIn(2) ? c.width + c.random.between(0, 70) : 0;
        const auto src = c.image<uint8_t>(Shape{c.width, c.height, 1, srcStep});
        const auto srcDst = c.image<float>();
        compare(src, src.step(), srcDst, srcDst.step(), c.roi(), FloatBits{weight(c.random)});
    });
}

TEST_P(Arithmetic, ruxiDivC_32f_C1IR)
{
    sweep(RUX_OPERATION(ruxiDivC_32f_C1IR), imageSweep(), [](Case& c, const auto& compare) {
        const auto srcDst = c.image<float>();
        compare(FloatBits{divisor(c.random)}, srcDst, srcDst.step(), c.roi());
    });
}

TEST_P(Arithmetic, refusesWrongArguments)
{
    const Image<float> src(Shape{13, 3, 4}, 1), srcDst(Shape{13, 3, 4}, 2, ordinary<float>);
#define REFUSE(name, channels, computed) \
    refuse(RUX_OPERATION(name), src, src.step(), srcDst, srcDst.step(), src.roi());
    EACH_BINARY(REFUSE)
#undef REFUSE
    refuse(RUX_OPERATION(ruxiDivC_32f_C1IR),
           wrongly(FloatBits{two}, {{0}, {minusZero}, {0x7FC00000}, {0xFFC00000}, {0x7FA00000}, {signallingNaN}}), srcDst,
           srcDst.step(), srcDst.roi());
}

TEST_P(Arithmetic, refusesWrongArgumentsOfAccumulation)
{
    const Image<uint8_t> src(Shape{13, 3});
    const Image<float> srcDst(Shape{13, 3}.withStep(56));
    const auto srcStep = wrongly<int32_t>(13, {12, 0, -1, INT_MIN});
    const auto srcDstStep = wrongly<int32_t>(56, {53, 54, 55, 51, 48, 6, 2, 0, -4, INT_MIN});
    refuse(RUX_OPERATION(ruxiAdd_8u32f_C1IR), src, srcStep, srcDst, srcDstStep, src.roi());
    refuse(RUX_OPERATION(ruxiAddWeighted_8u32f_C1IR), src, srcStep, srcDst, srcDstStep, src.roi(), 0.25f);
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

TEST_P(Arithmetic, accumulationTakesEmptyImages)
{
    const Image<uint8_t> src(Shape{8, 2});
    const Image<float> srcDst(Shape{8, 2}, 2);
    const Image<float> before = srcDst.clone();
    struct Sizes {
        int32_t srcStep, srcDstStep, width, height;
        ruxStatus status;
    };
    const Sizes cases[] = {{8, 32, 0, 0, 0},    {8, 32, 0, 2, 0},  {8, 32, 8, 0, 0},   {0, 0, 0, 0, 0},   {0, 0, 0, 2, 0},
                           {8, 6, 0, 0, -6},    {8, 33, 8, 0, -6}, {7, 32, 8, 0, -6},  {8, 28, 8, 0, -6}, {-1, 32, 0, 0, -6},
                           {8, -4, 0, 0, -6},   {8, 32, -1, 0, -6}, {8, 32, 0, -1, -6}, {8, 6, 8, 1, -6}, {8, 34, 8, 1, -6},
                           {7, 32, 8, 1, -6}};
    for (const auto& c : cases) {
        const ruxiSize size{c.width, c.height};
        EXPECT_EQ(call(ruxiAdd_8u32f_C1IR, src.data(), c.srcStep, srcDst.data(), c.srcDstStep, size), c.status)
            << c.srcStep << " " << c.srcDstStep << " " << c.width << "x" << c.height;
        EXPECT_EQ(call(ruxiAddWeighted_8u32f_C1IR, src.data(), c.srcStep, srcDst.data(), c.srcDstStep, size, 0.5f), c.status)
            << c.srcStep << " " << c.srcDstStep << " " << c.width << "x" << c.height;
    }
    const uint8_t* const none = nullptr;
    EXPECT_EQ(call(ruxiAdd_8u32f_C1IR, none, -1, srcDst.data(), 6, ruxiSize{-1, -1}), -8);
    EXPECT_TRUE(srcDst.equals(before));
}

// A row of `width` equal elements through AddWeighted; the element that they all become.
static uint32_t weighted(int width, uint8_t src, uint32_t srcDst, uint32_t alpha)
{
    const Image<uint8_t> bytes(Shape{width, 1}, 1, constant<uint8_t>(src));
    Image<float> floats(Shape{width, 1}, 2, bits(srcDst));
    EXPECT_EQ(call(ruxiAddWeighted_8u32f_C1IR, bytes.data(), bytes.step(), floats.data(), floats.step(), floats.roi(),
                   FloatBits{alpha}), 0);
    for (int x = 1; x < width; x++) EXPECT_EQ(bitsOf(floats, x), bitsOf(floats, 0)) << x << " of " << width;
    return bitsOf(floats, 0);
}

TEST_P(Arithmetic, weightedSumRoundsByLevel)
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

TEST_P(Arithmetic, weightZeroLeavesFiniteValues)
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

// A row of `width` equal elements through DivC; the element that they all become.
static uint32_t divided(int width, uint32_t element, uint32_t value, ruxStatus status = ruxStatusOk)
{
    for (int alignment : {0, 4, 5}) {
        Image<float> image(Shape{width, 2}.at({Edge::end, alignment}), 1, bits(element));
        EXPECT_EQ(call(ruxiDivC_32f_C1IR, FloatBits{value}, image.data(), image.step(), image.roi()), status);
        const uint32_t result = bitsOf(image, 0);
        for (int x = 1; x < width; x++) EXPECT_EQ(bitsOf(image, x, x % 2), result) << x << " of " << width;
        if (alignment == 5) return result;
    }
    return 0;
}

TEST_P(Arithmetic, divisionByConstantAtItsEdges)
{
    constexpr uint32_t minusInfinity = 0xFF800000, tiny = 0x000116C2;   // 1e-40
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

TEST_P(Arithmetic, divisionChecksInOrder)
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

// A stride may be shorter than a row, then each row takes up what the one before has left.
TEST_P(Arithmetic, overlappingRowsGoFromFirstToLast)
{
    for (int step : {4, 8, 12, 40, 100}) {
        const Image<float> src(Shape{41, 4}.withStep(step), 9, uniform<float>(-3, 3));
        const Image<float> srcDst(Shape{41, 4}.withStep(step), 10, uniform<float>(-3, 3));
        agree(RUX_OPERATION(ruxiAdd_32f_C1IR), src, src.step(), srcDst, srcDst.step(), src.roi());
        agree(RUX_OPERATION(ruxiMul_32f_C1IR), srcDst, srcDst.step(), srcDst, srcDst.step(), src.roi());
        agree(RUX_OPERATION(ruxiDivC_32f_C1IR), 3.0f, srcDst, srcDst.step(), src.roi());
    }
}

// What does not depend on rounding is the same under every state that a host may have set, and the state is kept.
TEST_P(Arithmetic, hostStatesAreKept)
{
    const Image<float> src(Shape{29, 2, 4}, 1, whole(small)), srcDst(Shape{29, 2, 4}, 2, whole(large));
    const Image<uint8_t> bytes(Shape{116, 2});
    for (const HostState& state : hostStates()) {
#define UNDER(name, channels, computed) \
    agreeUnder(state, RUX_OPERATION(name), src, src.step(), srcDst, srcDst.step(), src.roi());
        EACH_BINARY(UNDER)
#undef UNDER
        agreeUnder(state, RUX_OPERATION(ruxiAdd_8u32f_C1IR), bytes, bytes.step(), srcDst, srcDst.step(), bytes.roi());
        agreeUnder(state, RUX_OPERATION(ruxiAddWeighted_8u32f_C1IR), bytes, bytes.step(), srcDst, srcDst.step(), bytes.roi(),
                   0.5f);
        agreeUnder(state, RUX_OPERATION(ruxiDivC_32f_C1IR), 4.0f, srcDst, srcDst.step(), bytes.roi());
    }
}

// Any contents, also those whose results are denormal or overflow.
TEST_P(Arithmetic, x87PrecisionChangesNothing)
{
    for (int precision : {24, 53, 64}) {
        const HostState state = HostState().precision(precision);
        for (uint64_t seed = 1; seed <= 8; seed++) {
            Image<float> src(Shape{97, 2, 4}, seed);
            const Image<float> srcDst(Shape{97, 2, 4}, seed + 100);
            const Image<uint8_t> bytes(Shape{388, 2}, seed);
            keepOneNaN(src, srcDst, 4);
#define UNDER(name, channels, computed) \
    agreeUnder(state, RUX_OPERATION(name), src, src.step(), srcDst, srcDst.step(), src.roi());
            EACH_BINARY(UNDER)
#undef UNDER
            agreeUnder(state, RUX_OPERATION(ruxiAdd_8u32f_C1IR), bytes, bytes.step(), srcDst, srcDst.step(), bytes.roi());
            agreeUnder(state, RUX_OPERATION(ruxiAddWeighted_8u32f_C1IR), bytes, bytes.step(), srcDst, srcDst.step(),
                       bytes.roi(), 0.3f);
            for (uint32_t value : {0x40E00000u, 0x7E967699u, 0x000116C2u, 0x3F7FFFFFu}) {
                agreeUnder(state, RUX_OPERATION(ruxiDivC_32f_C1IR), FloatBits{value}, srcDst, srcDst.step(), bytes.roi());
            }
        }
    }
}

// A host that sets both units to one mode gets results rounded in that mode, at every level.
TEST_P(Arithmetic, roundingIsTheHosts)
{
    for (int mode : {FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO}) {
        ASSERT_EQ(std::fesetround(mode), 0);
        Image<float> src(Shape{97, 2, 4}, 21);
        const Image<float> srcDst(Shape{97, 2, 4}, 22);
        const Image<uint8_t> bytes(Shape{388, 2}, 23);
        keepOneNaN(src, srcDst, 4);
#define AGREE(name, channels, computed) agree(RUX_OPERATION(name), src, src.step(), srcDst, srcDst.step(), src.roi());
        EACH_BINARY(AGREE)
#undef AGREE
        agree(RUX_OPERATION(ruxiAdd_8u32f_C1IR), bytes, bytes.step(), srcDst, srcDst.step(), bytes.roi());
        agree(RUX_OPERATION(ruxiAddWeighted_8u32f_C1IR), bytes, bytes.step(), srcDst, srcDst.step(), bytes.roi(), 0.3f);
        for (uint32_t value : {0x40E00000u, 0x7E967699u, 0x3F7FFFFFu}) {
            agree(RUX_OPERATION(ruxiDivC_32f_C1IR), FloatBits{value}, srcDst, srcDst.step(), bytes.roi());
        }
        std::fesetround(FE_TONEAREST);
    }
}

}
