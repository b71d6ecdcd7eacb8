// Bit-depth reduction and dithering, against the models and the contract's numbers.
#include "model/reduce_bits.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(ReduceBits, "reduce_bits");

constexpr ruxDitherType types[] = {ruxDitherNone, ruxDitherFS, ruxDitherJJN, ruxDitherStucki, ruxDitherBayer};

static int32_t levelsOf(Random& random)
{
    const int32_t usual[] = {2, 3, 4, 10, 12, 16, 52, 86, 255, 256};
    return random.oneIn(2) ? usual[random.below(10)] : random.between(2, 256);
}

static int32_t noiseOf(Random& random)
{
    if (random.oneIn(2)) return 0;
    return random.oneIn(3) ? 100 : random.between(1, 99);
}

// The sums of the two large kernels may be taken in any order at a6 and w7.
static bool hasOrderOfItsOwn(Level level, ruxDitherType type)
{
    return (level == a6 || level == w7) && (type == ruxDitherJJN || type == ruxDitherStucki);
}

static void picture(Random& random, uint8_t* row, int count)
{
    if (random.oneIn(2)) return mixture<uint8_t>(random, row, count);
    const int from = random.between(0, 255), to = random.between(0, 255);
    for (int i = 0; i < count; i++) row[i] = static_cast<uint8_t>(from + (to - from) * i / count);
}

TEST_P(ReduceBits, ruxiReduceBits_8u_C3R)
{
    sweep(RUX_OPERATION(ruxiReduceBits_8u_C3R), imageSweep().heightsOf({1, 2, 3, 4, 5, 9}),
          [&](Case& c, const auto& compare) {
              ruxDitherType type = types[c.random.below(5)];
              const int32_t noise = noiseOf(c.random), levels = levelsOf(c.random);
              if (hasOrderOfItsOwn(level(), type)) type = ruxDitherFS;
              const auto src = c.image<uint8_t>(3, picture);
              const auto dst = c.image<uint8_t>(3);
              compare(src, src.step(), dst, dst.step(), c.roi(), noise, type, levels);
          });
}

// The large kernels in single precision: every decision of the body is followed.
TEST_P(ReduceBits, largeKernels)
{
    if (!hasOrderOfItsOwn(level(), ruxDitherJJN)) return;
    Digest digest;
    for (Case& c : casesOf(imageSweep().heightsOf({1, 2, 3, 4, 5, 9}))) {
        const Note note([&] { return c.describe(); });
        const ruxDitherType type = c.random.oneIn(2) ? ruxDitherJJN : ruxDitherStucki;
        const int32_t noise = noiseOf(c.random), levels = levelsOf(c.random);
        const auto src = c.image<uint8_t>(3, picture);
        const auto dst = c.image<uint8_t>(3);
        auto expected = dst.clone();
        const auto before = src.clone();
        ASSERT_EQ(call(ruxiReduceBits_8u_C3R, src.data(), src.step(), dst.data(), dst.step(), c.roi(), noise, type,
                       levels), 0);
        ASSERT_TRUE(src.equals(before));
        ASSERT_TRUE(model::followsDiffusion(src.data(), src.step(), dst.data(), dst.step(), c.roi(), noise, type,
                                            levels)) << "type " << type << ", noise " << noise << ", levels " << levels;
        for (int y = 0; y < c.height; y++) {
            for (int x = 0; x < 3 * c.width; x++) expected.set(x, y, dst.get(x, y));
        }
        ASSERT_TRUE(dst.equals(expected)) << "written outside the region";
        if (c.isGolden()) digest.addRegion(dst);
    }
    expectGolden("reduce_bits", "ruxiReduceBits_8u_C3R:largeKernels", level(), digest);
}

// A wide image, for the noise beyond its tables' 1024 entries.
TEST_P(ReduceBits, wideImage)
{
    const Image<uint8_t> src(Shape{2600, 3, 3}, 1, picture), dst(Shape{2600, 3, 3}, 2);
    for (const ruxDitherType type : {ruxDitherType(ruxDitherFS), ruxDitherType(ruxDitherBayer)}) {
        agree(RUX_OPERATION(ruxiReduceBits_8u_C3R), src, src.step(), dst, dst.step(), src.roi(), 60, type, 5);
    }
}

// Every sample at every place of the matrix, for all numbers of levels.
TEST_P(ReduceBits, orderedDitherOfEverySample)
{
    Image<uint8_t> src(Shape{1024, 4, 3}), dst(Shape{1024, 4, 3});
    for (int y = 0; y < 4; y++) {
        for (int x = 0; x < 3072; x++) src.set(x, y, static_cast<uint8_t>(x / 12));
    }
    for (int32_t levels = 2; levels <= 256; levels++) {
        agree(RUX_OPERATION(ruxiReduceBits_8u_C3R), src, src.step(), dst, dst.step(), src.roi(), 0, ruxDitherBayer,
              levels);
    }
}

// The bytes of all levels, from an image of them: without dithering a level's own value comes back, or one beside it.
static int byteOf(int sample, ruxDitherType type, int32_t levels, int x = 0, int y = 0)
{
    const Image<uint8_t> src(Shape{4, 4, 3}, 1, constant(static_cast<uint8_t>(sample))), dst(Shape{4, 4, 3}, 2);
    EXPECT_EQ(call(ruxiReduceBits_8u_C3R, src.data(), 12, dst.data(), 12, ruxiSize{4, 4}, 0, type, levels), 0);
    return dst.get(3 * x, y);
}

TEST_P(ReduceBits, bytesOfLevels)
{
    const bool wide = level() == px || level() == m6;
    EXPECT_EQ(byteOf(85, ruxDitherFS, 10), wide ? 84 : 85);     // q = 3
    EXPECT_EQ(byteOf(254, ruxDitherFS, 12), wide ? 254 : 255);  // q = 11
    EXPECT_EQ(byteOf(255, ruxDitherFS, 2), 255);
}

TEST_P(ReduceBits, orderedDitherOfTwoLevels)
{
    EXPECT_EQ(byteOf(0, ruxDitherBayer, 2), 0);
    EXPECT_EQ(byteOf(1, ruxDitherBayer, 2), 255);
}

TEST_P(ReduceBits, copies)
{
    const Image<uint8_t> src(Shape{37, 5, 3}, 1), dst(Shape{37, 5, 3}, 2);
    const ruxDitherType none = ruxDitherNone;
    EXPECT_EQ(agree(RUX_OPERATION(ruxiReduceBits_8u_C3R), src, src.step(), dst, dst.step(), src.roi(), 500, none, 0), 0);
}

// With 256 levels there is nothing to lose: no error ever arises.
TEST_P(ReduceBits, allLevelsReturnTheImage)
{
    const Image<uint8_t> src(Shape{256, 7, 3}, 3, picture), dst(Shape{256, 7, 3}, 2);
    for (const ruxDitherType type : types) {
        if (type == ruxDitherBayer) continue;
        ASSERT_EQ(call(ruxiReduceBits_8u_C3R, src.data(), src.step(), dst.data(), dst.step(), src.roi(), 0, type, 256),
                  0);
        for (int y = 0; y < 7; y++) {
            for (int x = 0; x < 768; x++) ASSERT_EQ(dst.get(x, y), src.get(x, y)) << "type " << type;
        }
    }
}

// 255 with a positive error before it gives 255, and what follows gets nothing of it.
TEST_P(ReduceBits, whiteCarriesNoError)
{
    for (const ruxDitherType type : {ruxDitherType(ruxDitherFS), ruxDitherType(ruxDitherJJN),
                                     ruxDitherType(ruxDitherStucki)}) {
        Image<uint8_t> src(Shape{40, 1, 3}, 1, constant<uint8_t>(255)), dst(Shape{40, 1, 3});
        for (int i = 0; i < 3; i++) src.set(i, 0, 100);   // its error is 100
        ASSERT_EQ(call(ruxiReduceBits_8u_C3R, src.data(), 120, dst.data(), 120, src.roi(), 0, type, 2), 0);
        for (int x = 3; x < 120; x++) EXPECT_EQ(dst.get(x), 255);
        EXPECT_EQ(dst.get(0), 0);
    }
}

// With noise 100 a threshold below 0 rounds even an error of 0 up.
TEST_P(ReduceBits, noiseRoundsZeroUp)
{
    const Image<uint8_t> src(Shape{200, 50, 3}, 1, constant<uint8_t>(0)), dst(Shape{200, 50, 3}, 2);
    ASSERT_EQ(call(ruxiReduceBits_8u_C3R, src.data(), 600, dst.data(), 600, src.roi(), 100, ruxDitherFS, 2), 0);
    int up = 0;
    for (int x = 0; x < 200; x++) up += dst.get(3 * x) == 255;
    EXPECT_GT(up, 5);
}

TEST_P(ReduceBits, unknownTypesWriteNothing)
{
    const Image<uint8_t> src(Shape{9, 3, 3}, 1), dst(Shape{9, 3, 3}, 2);
    const auto before = dst.clone();
    for (const ruxDitherType type : {5, -1, INT_MAX, INT_MIN}) {
        EXPECT_EQ(call(ruxiReduceBits_8u_C3R, src.data(), 27, dst.data(), 27, src.roi(), 0, type, 4), 0);
        EXPECT_EQ(call(ruxiReduceBits_8u_C3R, src.data(), 27, dst.data(), 27, src.roi(), 101, type, 4), -55);
        EXPECT_EQ(call(ruxiReduceBits_8u_C3R, src.data(), 27, dst.data(), 27, src.roi(), 0, type, 257), -54);
    }
    EXPECT_TRUE(dst.equals(before));
}

TEST_P(ReduceBits, refusesWrongArguments)
{
    const Image<uint8_t> src(Shape{5, 2, 3}, 1), dst(Shape{5, 2, 3}, 2);
    for (const ruxDitherType type : types) {
        refuse(RUX_OPERATION(ruxiReduceBits_8u_C3R), src, src.step(), dst, dst.step(), src.roi(),
               wrongly<int32_t>(0, {-1, 101, INT_MIN}), type, wrongly<int32_t>(2, {1, 257, 0, INT_MIN, INT_MAX}));
    }
}

TEST_P(ReduceBits, outOfMemory)
{
    const Image<uint8_t> src(Shape{20, 3, 3}, 1);
    for (const ruxDitherType type : {ruxDitherType(ruxDitherFS), ruxDitherType(ruxDitherStucki),
                                     ruxDitherType(ruxDitherBayer)}) {
        for (const int32_t noise : {0, 50}) {
            const int allocations = (noise ? 2 : 0) + (type == ruxDitherBayer ? 0 : 1);
            if (allocations == 0) continue;
            forEachRefusal(allocations, [&](bool refused) {
                const Image<uint8_t> dst(Shape{20, 3, 3}, 2);
                const auto before = dst.clone();
                EXPECT_EQ(call(ruxiReduceBits_8u_C3R, src.data(), 60, dst.data(), 60, src.roi(), noise, type, 4),
                          refused ? ruxStatusMemoryAllocated : ruxStatusOk);
                EXPECT_EQ(static_cast<bool>(dst.equals(before)), refused);
            });
        }
    }
}

}
