// The 8x8 DCT, against the models and the contract's numbers.
#include <array>

#include "model/dct.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(Dct, "dct");

// Samples of a picture or of a difference, now and then anything.
static void samples(Random& random, int16_t* row, int count)
{
    if (random.oneIn(3)) return mixture<int16_t>(random, row, count);
    const int middle = random.between(-256, 255), spread = random.oneIn(2) ? 8 : 255;
    for (int i = 0; i < count; i++) row[i] = static_cast<int16_t>(middle + random.between(-spread, spread));
}

// Coefficients as a decoder meets them, sparse and small to full and large, now and then anything.
static void coefficients(Random& random, int16_t* row, int count)
{
    if (random.oneIn(4)) return mixture<int16_t>(random, row, count);
    const uint32_t distance = random.below(12) + 1;
    const int size = random.oneIn(2) ? 60 : 2047;
    for (int i = 0; i < count; i++) {
        row[i] = static_cast<int16_t>(random.oneIn(distance) ? random.between(-size, size) : 0);
    }
}

// The case's stride, one of 16 bytes and their multiples, where vectors may be aligned, or a short one.
static Shape blockShape(Random& random, int shortest)
{
    const Shape shape{8, 8};
    if (random.oneIn(3)) return shape.withStep(16 * random.between(1, 5));
    if (random.oneIn(3)) return shape.withStep(random.between(shortest, 20));
    return shape;
}

TEST_P(Dct, ruxiDCT8x8Fwd_16s_C1R)
{
    sweep(RUX_OPERATION(ruxiDCT8x8Fwd_16s_C1R), blockSweep(150), [](Case& c, const auto& compare) {
        const Shape shape = blockShape(c.random, 1);
        const auto src = c.image<int16_t>(shape, samples);
        const auto dst = c.vector<int16_t>(64);
        compare(src, src.step(), dst);
    });
}

TEST_P(Dct, ruxiDCT8x8Fwd_8u16s_C1R)
{
    sweep(RUX_OPERATION(ruxiDCT8x8Fwd_8u16s_C1R), blockSweep(150), [](Case& c, const auto& compare) {
        const Shape shape = blockShape(c.random, 1);
        const auto src = c.image<uint8_t>(shape);
        const auto dst = c.vector<int16_t>(64);
        compare(src, src.step(), dst);
    });
}

TEST_P(Dct, ruxiDCT8x8Inv_16s_C1R)
{
    sweep(RUX_OPERATION(ruxiDCT8x8Inv_16s_C1R), blockSweep(150), [](Case& c, const auto& compare) {
        const auto src = c.vector<int16_t>(64, coefficients);
        const Shape shape = blockShape(c.random, 16);
        const auto dst = c.image<int16_t>(shape);
        compare(src, dst, dst.step());
    });
}

TEST_P(Dct, ruxiDCT8x8Inv_16s8u_C1R)
{
    sweep(RUX_OPERATION(ruxiDCT8x8Inv_16s8u_C1R), blockSweep(150), [](Case& c, const auto& compare) {
        const auto src = c.vector<int16_t>(64, coefficients);
        const Shape shape = blockShape(c.random, 8);
        const auto dst = c.image<uint8_t>(shape);
        compare(src, dst, dst.step());
    });
}

TEST_P(Dct, ruxiDCT8x8InvLSClip_16s8u_C1R)
{
    sweep(RUX_OPERATION(ruxiDCT8x8InvLSClip_16s8u_C1R), blockSweep(250), [](Case& c, const auto& compare) {
        const auto src = c.vector<int16_t>(64, coefficients);
        const Shape shape = blockShape(c.random, 8);
        const auto dst = c.image<uint8_t>(shape);
        int16_t levelShift = c.random.oneIn(2) ? 128 : 0;
        if (c.random.oneIn(2)) mixture<int16_t>(c.random, &levelShift, 1);
        uint8_t bounds[2] = {0, 255};
        if (c.random.oneIn(2)) bounds[0] = static_cast<uint8_t>(c.random.below(256));
        if (c.random.oneIn(2)) bounds[1] = static_cast<uint8_t>(c.random.below(256));
        compare(src, dst, dst.step(), levelShift, bounds[0], bounds[1]);
    });
}

// A rounding constant that is off by one shows in one block of some thousand.
TEST_P(Dct, manyBlocks)
{
    alignas(16) std::array<int16_t, 64> block, result, expected;
    for (Case& c : casesOf(blockSweep(3000))) {
        uniform<int16_t>(-300, 300)(c.random, block.data(), 64);
        call(ruxiDCT8x8Fwd_16s_C1R, block.data(), 16, result.data());
        model::ruxiDCT8x8Fwd_16s_C1R(level(), block.data(), 16, expected.data());
        ASSERT_EQ(result, expected) << "forward, " << c.describe();
        call(ruxiDCT8x8Inv_16s_C1R, block.data(), result.data(), 16);
        model::ruxiDCT8x8Inv_16s_C1R(level(), block.data(), expected.data(), 16);
        ASSERT_EQ(result, expected) << "inverse, " << c.describe();
    }
}

// Source, stride and destination on and off 16-byte boundaries, in every combination.
TEST_P(Dct, everyCombinationOfAlignments)
{
    uint64_t seed = 1;
    for (const int srcOffset : {0, 8, 2, 1}) {
        for (const int step : {16, 48, 24, 18, 17}) {
            for (const int dstOffset : {0, 8, 2, 1}) {
                const Place srcPlace{Edge::end, srcOffset}, dstPlace{Edge::start, dstOffset};
                const Image<int16_t> strided(Shape{8, 8}.withStep(step).at(srcPlace), seed++, samples);
                const Image<int16_t> coded(vectorOf(64).at(dstPlace), seed++, coefficients);
                agree(RUX_OPERATION(ruxiDCT8x8Fwd_16s_C1R), strided, strided.step(), coded);
                agree(RUX_OPERATION(ruxiDCT8x8Inv_16s_C1R), coded, strided, strided.step());
                const Image<uint8_t> bytes(Shape{8, 8}.withStep(step).at(srcPlace), seed++);
                agree(RUX_OPERATION(ruxiDCT8x8Fwd_8u16s_C1R), bytes, bytes.step(), coded);
                agree(RUX_OPERATION(ruxiDCT8x8Inv_16s8u_C1R), coded, bytes, bytes.step());
            }
        }
    }
}

TEST_P(Dct, worksInPlace)
{
    for (const int offset : {0, 8, 2, 1}) {
        for (uint64_t seed = 1; seed <= 20; seed++) {
            const Shape shape = vectorOf(64).at({Edge::end, offset});
            const Image<int16_t> block(shape, seed, samples), coded(shape, seed, coefficients);
            agree(RUX_OPERATION(ruxiDCT8x8Fwd_16s_C1R), block, Step{16}, block);
            agree(RUX_OPERATION(ruxiDCT8x8Inv_16s_C1R), coded, coded, Step{16});
        }
    }
}

// What overlapping rows hold depends on the level; no level touches a byte outside them.
TEST_P(Dct, overlappingRowsStayInsideTheBlock)
{
    const Image<int16_t> src(vectorOf(64), 1, coefficients);
    for (int step = 1; step < 16; step++) {
        for (const Edge edge : {Edge::start, Edge::end}) {
            const Image<int16_t> words(Shape{8, 8}.withStep(step).at({edge}), 2);
            const Image<uint8_t> bytes(Shape{8, 8}.withStep(step).at({edge}), 3);
            const auto wordsBefore = words.clone();
            const auto bytesBefore = bytes.clone();
            EXPECT_EQ(call(ruxiDCT8x8Inv_16s_C1R, src.data(), words.data(), step), 0);
            EXPECT_EQ(call(ruxiDCT8x8Inv_16s8u_C1R, src.data(), bytes.data(), step), 0);
            std::memcpy(words.row(0), wordsBefore.row(0), static_cast<size_t>(7 * step + 16));
            std::memcpy(bytes.row(0), bytesBefore.row(0), static_cast<size_t>(7 * step + 8));
            EXPECT_TRUE(words.equals(wordsBefore));
            EXPECT_TRUE(bytes.equals(bytesBefore));
        }
    }
}

TEST_P(Dct, refusesWrongArguments)
{
    const Image<int16_t> block(vectorOf(64), 1, samples), coded(vectorOf(64), 2, coefficients);
    const Image<int16_t> words(Shape{8, 8}, 3);
    const Image<uint8_t> bytes(Shape{8, 8}, 4);
    refuse(RUX_OPERATION(ruxiDCT8x8Fwd_16s_C1R), words, words.step(), block);
    refuse(RUX_OPERATION(ruxiDCT8x8Fwd_8u16s_C1R), bytes, bytes.step(), block);
    refuse(RUX_OPERATION(ruxiDCT8x8Inv_16s_C1R), coded, words, words.step());
    refuse(RUX_OPERATION(ruxiDCT8x8Inv_16s8u_C1R), coded, bytes, bytes.step());
    refuse(RUX_OPERATION(ruxiDCT8x8InvLSClip_16s8u_C1R), coded, bytes, bytes.step(), int16_t(128), uint8_t(1),
           uint8_t(200));
}

// A block whose DC alone is not 0, and what the inverse forms make of it.
struct DcAlone {
    explicit DcAlone(int dc) { coefficients[0] = static_cast<int16_t>(dc); }

    int16_t inverse()
    {
        std::array<int16_t, 64> block;
        EXPECT_EQ(call(ruxiDCT8x8Inv_16s_C1R, coefficients.data(), block.data(), 16), 0);
        for (int16_t value : block) EXPECT_EQ(value, block[0]);
        return block[0];
    }
    uint8_t inverseToBytes()
    {
        std::array<uint8_t, 64> block;
        EXPECT_EQ(call(ruxiDCT8x8Inv_16s8u_C1R, coefficients.data(), block.data(), 8), 0);
        for (uint8_t value : block) EXPECT_EQ(value, block[0]);
        return block[0];
    }
    uint8_t shiftedAndClipped(int levelShift, int clipMin, int clipMax)
    {
        std::array<uint8_t, 64> block;
        EXPECT_EQ(call(ruxiDCT8x8InvLSClip_16s8u_C1R, coefficients.data(), block.data(), 8, levelShift, clipMin,
                       clipMax), 0);
        for (uint8_t value : block) EXPECT_EQ(value, block[0]);
        return block[0];
    }

    std::array<int16_t, 64> coefficients = {};
};

// 64 equal samples v give a DC of 8 * v and nothing else.
TEST_P(Dct, equalSamplesGiveADcAlone)
{
    const int bound = level() == px ? 512 : 256;
    for (int v = -bound; v < bound; v++) {
        std::array<int16_t, 64> words, coded, fromBytes;
        std::array<uint8_t, 64> bytes;
        words.fill(static_cast<int16_t>(v));
        bytes.fill(static_cast<uint8_t>(v));
        ASSERT_EQ(call(ruxiDCT8x8Fwd_16s_C1R, words.data(), 16, coded.data()), 0);
        ASSERT_EQ(call(ruxiDCT8x8Fwd_8u16s_C1R, bytes.data(), 8, fromBytes.data()), 0);
        for (int k = 0; k < 64; k++) {
            ASSERT_EQ(coded[k], k == 0 ? 8 * v : 0) << "v = " << v << ", coefficient " << k;
            ASSERT_EQ(fromBytes[k], k == 0 ? 8 * bytes[0] : 0) << "v = " << v << ", coefficient " << k;
        }
    }
}

TEST_P(Dct, zeroGivesZero)
{
    DcAlone zero(0);
    EXPECT_EQ(zero.inverse(), 0);
    EXPECT_EQ(zero.inverseToBytes(), 0);
    EXPECT_EQ(zero.shiftedAndClipped(128, 0, 255), 128);
}

// A DC of 8 * v alone gives v everywhere.
TEST_P(Dct, dcAloneGivesEqualSamples)
{
    for (int v = -512; v < 512; v++) {
        DcAlone block(8 * v);
        ASSERT_EQ(block.inverse(), v);
        ASSERT_EQ(block.inverseToBytes(), std::clamp(v, 0, 255));
        ASSERT_EQ(block.shiftedAndClipped(128, 16, 235), std::clamp(v + 128, 16, 235));
    }
}

TEST_P(Dct, levelShiftWrapsAtTheVectorLevels)
{
    EXPECT_EQ(DcAlone(8 * 128).shiftedAndClipped(32767, 0, 255), level() == px ? 255 : 0);
    EXPECT_EQ(DcAlone(8 * 128).shiftedAndClipped(32767, 5, 250), level() == px ? 250 : 5);
    EXPECT_EQ(DcAlone(8 * -128).shiftedAndClipped(-32768, 0, 255), level() == px ? 0 : 255);
}

TEST_P(Dct, clipMinAboveClipMax)
{
    EXPECT_EQ(DcAlone(8 * 20).shiftedAndClipped(0, 100, 50), level() == px ? 100 : 50);
    EXPECT_EQ(DcAlone(8 * 99).shiftedAndClipped(0, 100, 50), level() == px ? 100 : 50);
    EXPECT_EQ(DcAlone(8 * 100).shiftedAndClipped(0, 100, 50), 50);
    EXPECT_EQ(DcAlone(8 * 200).shiftedAndClipped(0, 100, 50), 50);
}

// With the bounds of a byte the shifting form is the inverse plus levelShift, clamped.
TEST_P(Dct, boundsOfAByte)
{
    for (uint64_t seed = 1; seed <= 100; seed++) {
        const Image<int16_t> src(vectorOf(64), seed, uniform<int16_t>(-300, 300));
        std::array<int16_t, 64> values;
        std::array<uint8_t, 64> clipped;
        const int levelShift = static_cast<int>(seed * 5) - 250;
        ASSERT_EQ(call(ruxiDCT8x8Inv_16s_C1R, src.data(), values.data(), 16), 0);
        ASSERT_EQ(call(ruxiDCT8x8InvLSClip_16s8u_C1R, src.data(), clipped.data(), 8, levelShift, 0, 255),
                  0);
        for (int i = 0; i < 64; i++) ASSERT_EQ(clipped[i], std::clamp(values[i] + levelShift, 0, 255));
    }
}

}
