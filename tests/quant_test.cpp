// MPEG-2 quantisation, against the models and the contract's numbers.
#include "model/quant.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(Quant, "quant");

// Blocks as coders meet them: mostly small coefficients and zeros.
static void coefficients(Random& random, int16_t* row, int count)
{
    for (int i = 0; i < count; i++) {
        const int size = random.oneIn(2) ? 3 : random.oneIn(8) ? 2047 : 60;
        row[i] = static_cast<int16_t>(random.oneIn(3) ? 0 : random.between(-size, size));
    }
}

static void multipliers(Random& random, float* row, int count)
{
    for (int i = 0; i < count; i++) row[i] = 1.0f / static_cast<float>(random.between(2, 120));
}

static int32_t quantScale(Random& random)
{
    static constexpr int32_t few[] = {1, 2, 3, 7, 31, 62, 112, -1, -5};
    return random.oneIn(2) ? few[random.below(9)] : random.between(1, 112);
}

template <class Op, class Compare>
static void forwardCase(Case& c, const Compare& compare)
{
    const auto block = c.vector<int16_t>(64, coefficients);
    const auto matrix = c.vector<float>(64, multipliers);
    const auto count = c.vector<int32_t>(1);
    const int32_t scale = quantScale(c.random);
    compare(block, scale, matrix, count);
}

// The reciprocal's estimate at w7 is the processor's own: no digest is kept of it.
template <class Op>
void Quant_forward(FamilyTest& test, const Op& operation, Level level)
{
    if (level != w7) {
        test.sweep(operation, blockSweep(600), [](Case& c, const auto& compare) { forwardCase<Op>(c, compare); });
        return;
    }
    for (Case& c : casesOf(blockSweep(600))) {
        forwardCase<Op>(c, [&](const auto&... arguments) { test.agree(operation, arguments...); });
        if (testing::Test::HasFailure()) return;
    }
}

TEST_P(Quant, ruxiQuantIntra_MPEG2_16s_C1I)
{
    Quant_forward(*this, RUX_OPERATION(ruxiQuantIntra_MPEG2_16s_C1I), level());
}

TEST_P(Quant, ruxiQuant_MPEG2_16s_C1I)
{
    Quant_forward(*this, RUX_OPERATION(ruxiQuant_MPEG2_16s_C1I), level());
}

// Also with elements and weights of any size: the inverse forms tell what wraps.
template <class Compare>
static void inverseCase(Case& c, const Compare& compare)
{
    const bool wild = c.random.oneIn(3);
    const auto block = c.vector<int16_t>(64, wild ? Fill<int16_t>(mixture<int16_t>) : coefficients);
    const auto matrix = c.vector<int16_t>(64, wild ? Fill<int16_t>(mixture<int16_t>) : uniform<int16_t>(1, 255));
    const int32_t scale = wild ? static_cast<int32_t>(c.random.next()) : quantScale(c.random);
    compare(block, scale, matrix);
}

TEST_P(Quant, ruxiQuantInvIntra_MPEG2_16s_C1I)
{
    sweep(RUX_OPERATION(ruxiQuantInvIntra_MPEG2_16s_C1I), blockSweep(600),
          [](Case& c, const auto& compare) { inverseCase(c, compare); });
}

TEST_P(Quant, ruxiQuantInv_MPEG2_16s_C1I)
{
    const int16_t* const flat = nullptr;
    sweep(RUX_OPERATION(ruxiQuantInv_MPEG2_16s_C1I), blockSweep(600), [&](Case& c, const auto& compare) {
        inverseCase(c, [&](const auto& block, int32_t scale, const auto& matrix) {
            compare(block, scale, matrix);
            compare(block, scale, flat);
        });
    });
}

TEST_P(Quant, refusesWrongArguments)
{
    const Image<int16_t> block(vectorOf(64), 1, coefficients), weights(vectorOf(64), 2, uniform<int16_t>(1, 99));
    const Image<float> matrix(vectorOf(64), 3, multipliers);
    const Image<int32_t> count(vectorOf(1));
    const auto scale = wrongly<int32_t>(4, {0});
    refuse(RUX_OPERATION(ruxiQuantIntra_MPEG2_16s_C1I), block, scale, matrix, count);
    refuse(RUX_OPERATION(ruxiQuant_MPEG2_16s_C1I), block, scale, matrix, count);
    refuse(RUX_OPERATION(ruxiQuantInvIntra_MPEG2_16s_C1I), block, scale, weights);
    int16_t* const none = nullptr;
    EXPECT_EQ(call(ruxiQuantInv_MPEG2_16s_C1I, none, 4, weights.data()), -8);
    const int16_t* const flat = nullptr;
    EXPECT_EQ(call(ruxiQuantInv_MPEG2_16s_C1I, none, 4, flat), -8);
}

// A block and a matrix, on 16-byte boundaries or off them.
struct Setting {
    Setting(bool aligned)
        : block(64 + 8), matrix(64 + 4)
    {
        const size_t shift = aligned ? 0 : 1;
        elements = reinterpret_cast<int16_t*>((reinterpret_cast<uintptr_t>(block.data()) + 15) & ~uintptr_t(15)) + shift;
        weights = reinterpret_cast<float*>((reinterpret_cast<uintptr_t>(matrix.data()) + 15) & ~uintptr_t(15));
        std::fill_n(weights, 64, 1.0f);
        std::fill_n(elements, 64, int16_t(0));
    }
    std::vector<int16_t> block;
    std::vector<float> matrix;
    int16_t* elements;
    float* weights;
    int32_t count = 77;
};

TEST_P(Quant, countOfAZeroBlock)
{
    for (const bool aligned : {true, false}) {
        Setting s(aligned);
        EXPECT_EQ(call(ruxiQuant_MPEG2_16s_C1I, s.elements, 2, s.weights, &s.count), 0);
        EXPECT_EQ(s.count, level() == w7 && !aligned ? 77 : 0);
        s.elements[5] = 40;
        EXPECT_EQ(call(ruxiQuant_MPEG2_16s_C1I, s.elements, 2, s.weights, &s.count), 0);
        EXPECT_EQ(s.count, level() != w7 ? 5 : aligned ? 1 : 77);
    }
}

TEST_P(Quant, countOfADcAlone)
{
    for (const bool aligned : {true, false}) {
        Setting s(aligned);
        s.elements[0] = 900;
        EXPECT_EQ(call(ruxiQuantIntra_MPEG2_16s_C1I, s.elements, 2, s.weights, &s.count), 0);
        EXPECT_EQ(s.count, level() == w7 ? 64 : 0);
        EXPECT_EQ(s.elements[0], 900);
    }
}

// t = 3 rounds to 2 above zero and to -1 below it; a small negative one at an odd place does not vanish at w7.
TEST_P(Quant, intraRounding)
{
    for (const bool aligned : {true, false}) {
        Setting s(aligned);
        s.elements[1] = 3, s.elements[2] = -3, s.elements[3] = -1;
        std::fill_n(s.weights, 64, 1.0f / 32);
        EXPECT_EQ(call(ruxiQuantIntra_MPEG2_16s_C1I, s.elements, 1, s.weights, &s.count), 0);
        if (level() == w7) continue;   // 1 / 1 is an estimate there
        EXPECT_EQ(s.elements[1], 2);
        EXPECT_EQ(s.elements[2], -1);
        EXPECT_EQ(s.elements[3], 0);
    }
    if (level() != w7) return;
    Setting s(false);
    s.elements[1] = -1;
    std::fill_n(s.weights, 64, 1.0f / 1024);
    call(ruxiQuantIntra_MPEG2_16s_C1I, s.elements, 16, s.weights, &s.count);
    EXPECT_EQ(s.elements[1], -1);
}

TEST_P(Quant, scaleZeroTouchesNothing)
{
    Setting s(true);
    s.elements[9] = -50;
    EXPECT_EQ(call(ruxiQuant_MPEG2_16s_C1I, s.elements, 0, s.weights, &s.count), -10);
    EXPECT_EQ(call(ruxiQuantIntra_MPEG2_16s_C1I, s.elements, 0, s.weights, &s.count), -10);
    EXPECT_EQ(s.elements[9], -50);
    EXPECT_EQ(s.count, 77);
}

TEST_P(Quant, inverseNumbers)
{
    std::vector<int16_t> block(64), weights(64, 16);
    const int16_t* const flat = nullptr;
    EXPECT_EQ(call(ruxiQuantInv_MPEG2_16s_C1I, block.data(), 2, flat), 0);
    EXPECT_EQ(block[63], 1) << "an even sum changes the last element";
    block[63] = 0, block[1] = -1;
    EXPECT_EQ(call(ruxiQuantInv_MPEG2_16s_C1I, block.data(), 2, flat), 0);
    EXPECT_EQ(block[1], -3);
    EXPECT_EQ(block[63], 0);

    block.assign(64, 0);
    block[1] = 2000;
    EXPECT_EQ(call(ruxiQuantInvIntra_MPEG2_16s_C1I, block.data(), 31, weights.data()), 0);
    // 62000 wraps to -3536 and is clamped; at a6 and w7 2000 * 31 wraps to -3536 and -3536 * 16 to 8960.
    EXPECT_EQ(block[1], level() == px || level() == m6 ? -2048 : 8960 >> 4);
}

}
