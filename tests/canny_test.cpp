// Canny edges from two gradient images, against the models.
#include <limits>

#include "canny_setting.h"
#include "model/canny.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(Canny, "canny");

static Scratch scratchFor(Random& random, int width, int height)
{
    Place place = {random.oneIn(2) ? Edge::start : Edge::end};
    if (random.oneIn(2)) place.offset = random.between(0, 63);
    return Scratch(scratchBytes(width, height), place, random.next());
}

static Fill<int16_t> gradients(Random& random)
{
    switch (random.below(6)) {
    case 0: return uniform<int16_t>(-2, 2);
    case 1: return uniform<int16_t>(-40, 40);
    case 2: return uniform<int16_t>(-1020, 1020);
    case 3: return anyBits<int16_t>;
    case 4: return extremes<int16_t>;
    default: return mixture<int16_t>;
    }
}

struct Thresholds {
    float low, high;
};

// Low thresholds below 32768, with and without a fraction; high ones that a6 and w7 take for something else too.
static Thresholds thresholds(Random& random)
{
    static const float lows[] = {0.0f, -0.0f, 0.5f, 1.0f, 1.5f, 3.0f, 40.0f, 500.25f, 2000.0f, 32766.5f, 32767.0f};
    const float low = random.oneIn(2) ? lows[random.below(3)] : lows[random.below(11)];
    switch (random.below(6)) {
    case 0: return {low, low};
    case 1: return {low, low + 0.25f};
    case 2: return {low, low + 30000.0f};
    case 3: return {low, low + static_cast<float>(random.below(70000))};
    default: return {low, low + static_cast<float>(random.below(60))};
    }
}

TEST_P(Canny, ruxiCanny_16s8u_C1R)
{
    sweep(RUX_OPERATION(ruxiCanny_16s8u_C1R), imageSweep().strides(2), [](Case& c, const auto& compare) {
        const Shape shape = gradientShape(level(), c.width, c.height);
        const auto fill = gradients(c.random);
        const auto dx = c.image<int16_t>(shape, fill);
        const auto dy = c.image<int16_t>(shape, fill);
        const int gap = c.random.between(0, 20);
        const auto dst = c.image<uint8_t>(Shape{c.width, c.height}.withStep(c.width + gap));
        const Thresholds t = thresholds(c.random);
        const Scratch buffer = scratchFor(c.random, c.width, c.height);
        compare(dx, dx.step(), dy, dy.step(), dst, dst.step(), c.roi(), FloatBits{bitsOf(t.low)},
                FloatBits{bitsOf(t.high)}, buffer);
    });
}

TEST_P(Canny, pictures)
{
    for (const ruxiSize size : {ruxiSize{200, 150}, ruxiSize{37, 300}, ruxiSize{301, 20}}) {
        const Gradients g(level(), size.width, size.height);
        const Image<uint8_t> dst(Shape{size.width, size.height}, 5);
        const Scratch buffer(scratchBytes(size.width, size.height), {Edge::end, Place::touching}, 6);
        for (const float low : {0.0f, 20.0f, 100.5f}) {
            for (const float more : {0.0f, 50.0f, 300.0f}) {
                agree(RUX_OPERATION(ruxiCanny_16s8u_C1R), g.dx, g.dx.step(), g.dy, g.dy.step(), dst, dst.step(),
                      dst.roi(), FloatBits{bitsOf(low)}, FloatBits{bitsOf(low + more)}, buffer);
            }
        }
    }
}

// Every buffer's address, and contents that put as much on the stack as there can be: no input overruns the buffer.
TEST_P(Canny, bufferOfTheStatedSize)
{
    for (int offset = 0; offset < 64; offset++) {
        for (const Edge edge : {Edge::start, Edge::end}) {
            for (const int width : {1, 3, 4, 5, 33}) {
                const Shape shape = gradientShape(level(), width, 9);
                const Image<int16_t> dx(shape, 7, uniform<int16_t>(-2, 2)), dy(shape, 8, uniform<int16_t>(-2, 2));
                const Image<uint8_t> dst(Shape{width, 9}, 9);
                const Scratch buffer(scratchBytes(width, 9), {edge, offset}, 10);
                agree(RUX_OPERATION(ruxiCanny_16s8u_C1R), dx, dx.step(), dy, dy.step(), dst, dst.step(), dst.roi(),
                      FloatBits{0}, FloatBits{0}, buffer);
            }
        }
        if (HasFailure()) return;
    }
}

// Thresholds that wrap to negative words let the search run everywhere: it stays within its buffer and the region.
TEST_P(Canny, thresholdsBeyondWords)
{
    constexpr float beyond[] = {32768.0f, 40000.0f, 65535.0f, 65536.0f, 65546.5f, 1e6f, 2147483520.0f, 2147483648.0f,
                                1e30f, std::numeric_limits<float>::infinity()};
    for (const int width : {1, 4, 6, 31}) {
        const Shape shape = gradientShape(level(), width, 12);
        for (const auto& fill : {Fill<int16_t>(uniform<int16_t>(-3, 3)), Fill<int16_t>(anyBits<int16_t>)}) {
            const Image<int16_t> dx(shape, 1, fill), dy(shape, 2, fill);
            const Image<uint8_t> dst(Shape{width, 12}, 3);
            const Scratch buffer(scratchBytes(width, 12), {Edge::end, Place::touching}, 4);
            for (const float high : beyond) {
                for (const float low : {0.0f, 2.0f, high}) {
                    agree(RUX_OPERATION(ruxiCanny_16s8u_C1R), dx, dx.step(), dy, dy.step(), dst, dst.step(), dst.roi(),
                          FloatBits{bitsOf(low)}, FloatBits{bitsOf(high)}, buffer);
                }
            }
        }
        if (HasFailure()) return;
    }
}

TEST_P(Canny, refusesWrongArguments)
{
    const Image<int32_t> size(vectorOf(1), 1);
    refuse(RUX_OPERATION(ruxiCannyGetSize), ruxiSize{20, 3}, size);

    const Shape shape = gradientShape(level(), 20, 3);
    const Image<int16_t> dx(shape, 1), dy(shape, 2);
    const Image<uint8_t> dst(Shape{20, 3}, 3);
    const Scratch buffer(scratchBytes(20, 3), {}, 4);
    const auto step = wrongly<int32_t>(dx.step(), {0, -1, -2, INT32_MIN, 1, 47, INT32_MAX});
    const auto low = wrongly<float>(30, {-1.0f, -1e-40f, 60.5f, std::numeric_limits<float>::infinity(),
                                         -std::numeric_limits<float>::infinity()});
    refuse(RUX_OPERATION(ruxiCanny_16s8u_C1R), dx, step, dy, step, dst, dst.step(), dst.roi(), low, 60.0f, buffer);
}

TEST_P(Canny, orderOfStatuses)
{
    int32_t* const none = nullptr;
    EXPECT_EQ(call(ruxiCannyGetSize, ruxiSize{0, 480}, none), -6);
    EXPECT_EQ(call(ruxiCannyGetSize, ruxiSize{640, 480}, none), -8);

    const Shape shape = gradientShape(level(), 20, 3);
    const Image<int16_t> dx(shape, 1), dy(shape, 2);
    const Image<uint8_t> dst(Shape{20, 3}, 3);
    const Scratch buffer(scratchBytes(20, 3), {}, 4);
    const auto status = [&](uint8_t* work, int32_t dxStep, int32_t dyStep, ruxiSize roi, float low, float high) {
        return call(ruxiCanny_16s8u_C1R, dx.data(), dxStep, dy.data(), dyStep, dst.data(), dst.step(), roi,
                    FloatBits{bitsOf(low)}, FloatBits{bitsOf(high)}, work);
    };
    const int32_t step = dx.step();
    EXPECT_EQ(status(nullptr, 0, 47, {0, 3}, -1, 5), -8);
    EXPECT_EQ(status(buffer.data(), 0, 47, {0, 3}, -1, 5), -14);
    EXPECT_EQ(status(buffer.data(), step, 47, {0, 3}, -1, 5), -6);
    EXPECT_EQ(status(buffer.data(), step, 47, {20, 3}, -1, 5), -108);
    EXPECT_EQ(status(buffer.data(), 47, step, {20, 3}, -1, 5), -108);
    EXPECT_EQ(status(buffer.data(), step, step, {20, 3}, -1, 5), -5);
    EXPECT_EQ(status(buffer.data(), step, step, {20, 3}, 5.5f, 5), -5);
    EXPECT_EQ(status(buffer.data(), step, step, {20, 3}, 5, 5), 0);
    EXPECT_EQ(status(buffer.data(), step, step, {20, 3}, -0.0f, 0), 0);
}

// a6 and w7 clear the MMX state, also that of a host that has it in use.
TEST_P(Canny, clearsMmxState)
{
    if (!inWords(level())) GTEST_SKIP() << "px and m6 compute on the stack that MMX takes";
    const Gradients g(level(), 40, 20);
    const Image<uint8_t> dst(Shape{40, 20}, 1);
    const Scratch buffer(scratchBytes(40, 20), {}, 2);
    agreeUnder(HostState().mmxInUse(), RUX_OPERATION(ruxiCanny_16s8u_C1R), g.dx, g.dx.step(), g.dy, g.dy.step(), dst,
               dst.step(), dst.roi(), FloatBits{bitsOf(20)}, FloatBits{bitsOf(90)}, buffer);
}

TEST_P(Canny, bearsEveryHostState)
{
    const Gradients g(level(), 40, 20);
    const Image<uint8_t> dst(Shape{40, 20}, 1);
    const Scratch buffer(scratchBytes(40, 20), {}, 2);
    for (const HostState& state : hostStates()) {
        agreeUnder(state, RUX_OPERATION(ruxiCanny_16s8u_C1R), g.dx, g.dx.step(), g.dy, g.dy.step(), dst, dst.step(),
                   dst.roi(), 20.5f, 90.0f, buffer);
    }
}

}
