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

// A result in single precision with sums in an order of their own: every decision of the body is followed.
static void expectFollowed(const Image<uint8_t>& src, const Image<uint8_t>& dst, int32_t noise, ruxDitherType type,
                           int32_t levels)
{
    auto expected = dst.clone();
    const auto before = src.clone();
    ASSERT_EQ(call(ruxiReduceBits_8u_C3R, src.data(), src.step(), dst.data(), dst.step(), src.roi(), noise, type,
                   levels), 0);
    ASSERT_TRUE(src.equals(before));
    ASSERT_TRUE(model::followsDiffusion(src.data(), src.step(), dst.data(), dst.step(), src.roi(), noise, type,
                                        levels)) << "type " << type << ", noise " << noise << ", levels " << levels;
    for (int y = 0; y < src.height(); y++) {
        for (int x = 0; x < 3 * src.width(); x++) expected.set(x, y, dst.get(x, y));
    }
    ASSERT_TRUE(dst.equals(expected)) << "written outside the region";
}

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
        expectFollowed(src, dst, noise, type, levels);
        if (HasFailure()) return;
        if (c.isGolden()) digest.addRegion(dst);
    }
    expectGolden("reduce_bits", "ruxiReduceBits_8u_C3R:largeKernels", level(), digest);
}

// Images whose three channels have whole waves of 16 rows and parts of one, wide enough for all rows of a wave to be at
// work at once; wide and high ones too, for the noise beyond its tables' 1024 entries.
TEST_P(ReduceBits, largeImages)
{
    for (const ruxiSize size : {ruxiSize{150, 40}, ruxiSize{46, 16}, ruxiSize{120, 17}, ruxiSize{2600, 3},
                                ruxiSize{64, 600}}) {
        for (const ruxDitherType type : types) {
            for (const int32_t noise : {0, 60}) {
                const Shape shape = {size.width, size.height, 3};
                const Image<uint8_t> src(shape, 1, picture), dst(shape, 2);
                if (hasOrderOfItsOwn(level(), type)) {
                    expectFollowed(src, dst, noise, type, 5);
                } else {
                    agree(RUX_OPERATION(ruxiReduceBits_8u_C3R), src, src.step(), dst, dst.step(), src.roi(), noise,
                          type, 5);
                }
                if (HasFailure()) return;
            }
        }
    }
}

// Samples that the last bit of a noise value decides, through the step and the range from which it comes.
TEST_P(ReduceBits, lastBitOfTheNoise)
{
    const Image<uint8_t> even(Shape{1024, 43, 3}, 1, constant<uint8_t>(167)), dithered(Shape{1024, 43, 3}, 2);
    agree(RUX_OPERATION(ruxiReduceBits_8u_C3R), even, even.step(), dithered, dithered.step(), even.roi(), 30,
          ruxDitherBayer, 12);

    const struct {
        uint64_t seed;
        int32_t noise, levels;
    } images[] = {{6049, 53, 8}, {5757, 50, 24}, {7798, 62, 39}};
    for (const auto& image : images) {
        const Image<uint8_t> src(Shape{300, 40, 3}, image.seed, anyBits<uint8_t>), dst(Shape{300, 40, 3}, 2);
        agree(RUX_OPERATION(ruxiReduceBits_8u_C3R), src, src.step(), dst, dst.step(), src.roi(), image.noise,
              ruxDitherFS, image.levels);
    }
}

// An error that all but fills the top step, above a threshold below 0: the byte of the level past the top one.
TEST_P(ReduceBits, pastTheTopLevel)
{
    const Image<uint8_t> src(Shape{300, 40, 3}, 13, anyBits<uint8_t>), dst(Shape{300, 40, 3}, 2);
    agree(RUX_OPERATION(ruxiReduceBits_8u_C3R), src, src.step(), dst, dst.step(), src.roi(), 100, ruxDitherFS, 2);
    if (level() != px && level() != m6) return;
    ASSERT_EQ(call(ruxiReduceBits_8u_C3R, src.data(), src.step(), dst.data(), dst.step(), src.roi(), 100, ruxDitherFS,
                   2), 0);
    EXPECT_EQ(dst.get(589, 23), 254);
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
    EXPECT_EQ(agree(RUX_OPERATION(ruxiReduceBits_8u_C3R), src, src.step(), dst, dst.step(), src.roi(), 500, none, 0),
              0);
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

// The first channel's second sample becomes 25.5, half a step, or 26.5: the comparison is strict.
TEST_P(ReduceBits, halfAStepIsNotAbove)
{
    for (const auto& [sample, byte] : {std::pair(22, 0), std::pair(23, 51)}) {
        Image<uint8_t> src(Shape{2, 1, 3}), dst(Shape{2, 1, 3}, 2);
        for (int i = 0; i < 6; i++) src.set(i, 0, static_cast<uint8_t>(i < 3 ? 8 : sample));
        ASSERT_EQ(call(ruxiReduceBits_8u_C3R, src.data(), 6, dst.data(), 6, src.roi(), 0, ruxDitherFS, 6), 0);
        EXPECT_EQ(dst.get(0), 0);
        EXPECT_EQ(dst.get(3), byte);
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

// The precision of the floating-point stack and flushing change nothing. The rounding modes change nothing at m6, which
// sets its own; elsewhere the last bits of the errors follow them.
TEST_P(ReduceBits, bearsEveryHostState)
{
    const Image<uint8_t> src(Shape{64, 18, 3}, 1, anyBits<uint8_t>);
    for (const ruxDitherType type : types) {
        for (const int32_t noise : {0, 100}) {
            const Image<uint8_t> expected(Shape{64, 18, 3}, 2), dst(Shape{64, 18, 3}, 2);
            const auto reduce = [&](const HostState& state, const Image<uint8_t>& to) {
                ASSERT_EQ(callUnder(state, ruxiReduceBits_8u_C3R, src.data(), src.step(), to.data(), to.step(),
                                    src.roi(), noise, type, 12), 0);
            };
            reduce(HostState(), expected);
            for (const HostState& state : hostStates()) {
                const Note note([&] { return state.describe(); });
                reduce(state, dst);
                const bool roundsToNearest = (state.x87Control & 0xC00) == 0 && (state.mxcsr & 0x6000) == 0;
                if (roundsToNearest || level() == m6 || type == ruxDitherNone) {
                    ASSERT_TRUE(dst.equals(expected));
                }
            }
        }
    }
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
