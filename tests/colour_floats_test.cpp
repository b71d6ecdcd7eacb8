// HLS to BGR and the colour twist, against the models and the contract's numbers.
#include <cmath>
#include <limits>

#include "colour_images.h"
#include "model/colour_floats.h"
#include "ruxlib.h"

namespace rux::test {

RUX_FAMILY(ColourFloats, "colour_floats");

// Three planes with one stride.
static Planes<uint8_t> planesOfOneStride(Case& c)
{
    const int step = c.width + (c.random.oneIn(3) ? 0 : c.random.between(1, 40));
    const Shape shape = Shape{c.width, c.height}.withStep(step);
    auto h = c.image<uint8_t>(shape);
    auto l = c.image<uint8_t>(shape);
    auto s = c.image<uint8_t>(shape);
    return Planes<uint8_t>(std::move(h), std::move(l), std::move(s));
}

TEST_P(ColourFloats, ruxiHLSToBGR_8u_P3C3R)
{
    sweep(RUX_OPERATION(ruxiHLSToBGR_8u_P3C3R), imageSweep(), [](Case& c, const auto& compare) {
        const auto src = planesOfOneStride(c);
        const auto dst = c.image<uint8_t>(3);
        compare(src, src[0].step(), dst, dst.step(), c.roi());
    });
}

// All hues at all saturations, with one lightness in five, which are others at the next saturation.
TEST_P(ColourFloats, everyHueLightnessAndSaturation)
{
    for (int saturation = 0; saturation < 256 && !HasFailure(); saturation++) {
        const Shape shape{256, 52};
        Planes<uint8_t> src(Image<uint8_t>(shape, 1), Image<uint8_t>(shape, 2),
                            Image<uint8_t>(shape, 3, constant(static_cast<uint8_t>(saturation))));
        for (int y = 0; y < 52; y++) {
            for (int x = 0; x < 256; x++) {
                src[0].set(x, y, static_cast<uint8_t>(x));
                src[1].set(x, y, static_cast<uint8_t>(saturation + 5 * y));
            }
        }
        const Image<uint8_t> dst(Shape{256, 52, 3});
        agree(RUX_OPERATION(ruxiHLSToBGR_8u_P3C3R), src, src[0].step(), dst, dst.step(), dst.roi());
    }
}

static std::array<int, 3> bgrOf(int h, int l, int s)
{
    const auto planes = planesOfColour({1, 1}, 0, h, l, s);
    const Image<uint8_t> dst(Shape{1, 1, 3});
    EXPECT_EQ(call(ruxiHLSToBGR_8u_P3C3R, planes.data(), 1, dst.data(), 3, ruxiSize{1, 1}), 0);
    return {dst.get(0), dst.get(1), dst.get(2)};
}

TEST_P(ColourFloats, grey)
{
    for (int l = 0; l < 256; l++) EXPECT_EQ(bgrOf(l * 7 % 256, l, 0), (std::array<int, 3>{l, l, l}));
}

TEST_P(ColourFloats, red)
{
    const int greatest = level() == px || level() == m6 ? 255 : 254;
    EXPECT_EQ(bgrOf(0, 128, 255), (std::array<int, 3>{1, 1, greatest}));
}

// The precision of the floating-point stack and flushing change nothing. The rounding modes change nothing at a6 and
// w7, which set their own.
TEST_P(ColourFloats, hlsUnderAnyStateOfTheHost)
{
    const Shape shape{256, 37};
    Planes<uint8_t> src(Image<uint8_t>(shape, 1, anyBits<uint8_t>), Image<uint8_t>(shape, 2, anyBits<uint8_t>),
                        Image<uint8_t>(shape, 3, anyBits<uint8_t>));
    for (int x = 0; x < 256; x++) src[0].set(x, 0, static_cast<uint8_t>(x));
    const Image<uint8_t> dst(Shape{256, 37, 3}, 4);
    for (const HostState& state : hostStates()) {
        const bool roundsToNearest = (state.x87Control & 0xC00) == 0 && (state.mxcsr & 0x6000) == 0;
        if (!roundsToNearest && (level() == px || level() == m6)) continue;
        agreeUnder(state, RUX_OPERATION(ruxiHLSToBGR_8u_P3C3R), src, src[0].step(), dst, dst.step(), dst.roi());
    }
}

static void twists(Random& random, float* row, int count)
{
    if (random.oneIn(3)) return uniform<float>(-2, 2)(random, row, count);
    for (int i = 0; i < count; i++) {
        const bool offset = i % 4 == 3;
        row[i] = static_cast<float>(random.between(-1000, 1000)) / (offset ? 4.0f : 1000.0f);
    }
}

TEST_P(ColourFloats, ruxiColorTwist32f_8u_C3R)
{
    sweep(RUX_OPERATION(ruxiColorTwist32f_8u_C3R), imageSweep(), [](Case& c, const auto& compare) {
        const auto src = c.image<uint8_t>(3);
        const auto dst = c.image<uint8_t>(3);
        const auto twist = c.vector<float>(12, twists);
        compare(src, src.step(), dst, dst.step(), c.roi(), twist);
    });
}

static Image<float> twistOf(const std::array<float, 12>& values)
{
    Image<float> twist(vectorOf(12));
    for (int i = 0; i < 12; i++) twist.set(i, 0, values[static_cast<size_t>(i)]);
    return twist;
}

// Sums at ties, under each state of the host: the rounding is to even in all of them.
TEST_P(ColourFloats, twistUnderAnyStateOfTheHost)
{
    const Image<float> twist = twistOf({0.5f, 0, 0, 0, 0.25f, 0.25f, 0.5f, 0.25f, 0.3f, 0.6f, 0.1f, -0.5f});
    const Image<uint8_t> src(Shape{67, 5, 3}, 1, anyBits<uint8_t>), dst(Shape{67, 5, 3}, 2);
    for (const HostState& state : hostStates()) {
        agreeUnder(state, RUX_OPERATION(ruxiColorTwist32f_8u_C3R), src, src.step(), dst, dst.step(), src.roi(), twist);
    }
}

// Factors and offsets of every magnitude, subnormal ones among them, or with sums around an integer's bounds.
TEST_P(ColourFloats, twistBeyondAnInteger)
{
    const Image<uint8_t> src(Shape{37, 2, 3}, 1, anyBits<uint8_t>), dst(Shape{37, 2, 3}, 2);
    Random random(3);
    for (int i = 0; i < 400 && !HasFailure(); i++) {
        std::array<float, 12> values;
        const bool anyMagnitude = random.oneIn(2);
        for (float& value : values) {
            const int exponent = anyMagnitude ? random.between(-150, 108) : random.between(8, 16);
            value = static_cast<float>(std::ldexp(random.between(-1000, 1000), exponent));
        }
        agree(RUX_OPERATION(ruxiColorTwist32f_8u_C3R), src, src.step(), dst, dst.step(), src.roi(), twistOf(values));
    }
}

// What three rows make of the pixel 1, 1, 1.
static std::array<int, 3> twisted(const std::array<float, 12>& values)
{
    const Image<uint8_t> src(Shape{1, 1, 3}, 1, constant<uint8_t>(1)), dst(Shape{1, 1, 3}, 2);
    const Image<float> twist = twistOf(values);
    EXPECT_EQ(call(ruxiColorTwist32f_8u_C3R, src.data(), 3, dst.data(), 3, ruxiSize{1, 1}, twist.data()), 0);
    return {dst.get(0), dst.get(1), dst.get(2)};
}

// Two halves of a last place together move 2.5 off its tie; one after the other they do not.
TEST_P(ColourFloats, orderOfTheSum)
{
    constexpr float inDouble = 0x1p-52f, inSingle = 0x1p-23f;
    EXPECT_EQ(twisted({inDouble, 2.5f, 0, inDouble, inDouble, 0, 2.5f, inDouble, 2.5f, inDouble, 0, inDouble}),
              level() == w7 ? (std::array<int, 3>{2, 2, 2}) : (std::array<int, 3>{3, 3, 2}));
    EXPECT_EQ(twisted({inSingle, 2.5f, 0, inSingle, 2.5f, inSingle, inSingle, 0, inSingle, inSingle, 0, 2.5f}),
              level() == w7 ? (std::array<int, 3>{3, 3, 2}) : (std::array<int, 3>{3, 3, 3}));
}

// Only a float overflows here: infinities of both signs are a NaN.
TEST_P(ColourFloats, twistOfInfinitiesAndNaN)
{
    constexpr float nan = std::numeric_limits<float>::quiet_NaN(), infinity = std::numeric_limits<float>::infinity();
    constexpr float most = std::numeric_limits<float>::max();
    EXPECT_EQ(twisted({nan, 1, 1, 1, 1, 1, nan, 1, 1, 1, 1, nan}), (std::array<int, 3>{0, 0, 0}));
    EXPECT_EQ(twisted({infinity, 0, 0, 0, 0, -infinity, 0, 0, infinity, 0, 0, -infinity}),
              (std::array<int, 3>{255, 0, 0}));
    EXPECT_EQ(twisted({most, 0, 0, most, 0, -most, -most, 0, most, -most, -most / 2, most}),
              (std::array<int, 3>{255, 0, level() == w7 ? 0 : 255}));
}

TEST_P(ColourFloats, identity)
{
    const Image<float> twist = twistOf({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0});
    const Image<uint8_t> src(Shape{61, 4, 3}, 1), dst(Shape{61, 4, 3}, 2);
    EXPECT_EQ(call(ruxiColorTwist32f_8u_C3R, src.data(), src.step(), dst.data(), dst.step(), src.roi(), twist.data()),
              0);
    for (int y = 0; y < 4; y++) {
        for (int x = 0; x < 183; x++) ASSERT_EQ(dst.get(x, y), src.get(x, y));
    }
}

TEST_P(ColourFloats, tiesGoToEven)
{
    const Image<float> twist = twistOf({1, 0, 0, 0.5f, 0, 0.5f, 0, 0, 0, 0, 0, 300});
    Image<uint8_t> src(Shape{256, 1, 3}), dst(Shape{256, 1, 3});
    for (int x = 0; x < 256; x++) {
        for (int i = 0; i < 3; i++) src.set(3 * x + i, 0, static_cast<uint8_t>(x));
    }
    EXPECT_EQ(call(ruxiColorTwist32f_8u_C3R, src.data(), 768, dst.data(), 768, src.roi(), twist.data()), 0);
    EXPECT_EQ(dst.get(3 * 2), 2);   // 2.5
    EXPECT_EQ(dst.get(3 * 3), 4);   // 3.5
    for (int x = 0; x < 256; x++) {
        EXPECT_EQ(dst.get(3 * x), std::min(x + (x & 1), 255));
        EXPECT_EQ(dst.get(3 * x + 1), x % 4 == 3 ? x / 2 + 1 : x / 2);
        EXPECT_EQ(dst.get(3 * x + 2), 255);
    }
}

TEST_P(ColourFloats, refusesWrongArguments)
{
    const Image<uint8_t> src(Shape{5, 2, 3}, 1), dst(Shape{5, 2, 3}, 2);
    const Image<float> twist = twistOf({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0});
    refuse(RUX_OPERATION(ruxiColorTwist32f_8u_C3R), src, src.step(), dst, dst.step(), src.roi(), twist);
    const Planes<uint8_t> planes(Image<uint8_t>(Shape{5, 2}, 3), Image<uint8_t>(Shape{5, 2}, 4),
                                 Image<uint8_t>(Shape{5, 2}, 5));
    refuse(RUX_OPERATION(ruxiHLSToBGR_8u_P3C3R), planes, planes[0].step(), dst, dst.step(), dst.roi());
}

}
