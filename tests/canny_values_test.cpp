// What Canny makes of gradients set by hand: the contract's numbers.
#include <limits>

#include "canny_setting.h"
#include "ruxlib.h"
#include "support/call.h"
#include "support/levels.h"

namespace rux::test {

class CannyValues : public LevelTest {};
RUX_AT_EACH_LEVEL(CannyValues);

// A few gradients by hand: each pixel's dx, and dy 0 where none is given.
class Field {
public:
    Field(Level level, int width, int height)
        : dx(gradientShape(level, width, height), 1, constant<int16_t>(0)), dy(dx.clone()),
          dst(Shape{width, height}, 2), buffer(scratchBytes(width, height), {Edge::end, Place::touching}, 3)
    {
    }

    void set(int x, int y, int16_t horizontal, int16_t vertical = 0)
    {
        dx.set(x, y, horizontal);
        dy.set(x, y, vertical);
    }
    void find(float low, float high) const
    {
        EXPECT_EQ(call(ruxiCanny_16s8u_C1R, dx.data(), dx.step(), dy.data(), dy.step(), dst.data(), dst.step(),
                       dst.roi(), FloatBits{bitsOf(low)}, FloatBits{bitsOf(high)}, buffer.data()), 0);
        EXPECT_TRUE(buffer.surroundingsStay());
    }
    int edge(int x, int y) const { return dst.get(x, y); }
    int edges() const
    {
        int count = 0;
        for (int y = 0; y < dst.height(); y++) {
            for (int x = 0; x < dst.width(); x++) count += dst.get(x, y) == 255;
        }
        return count;
    }

private:
    Image<int16_t> dx, dy;
    Image<uint8_t> dst;
    Scratch buffer;
};

TEST_P(CannyValues, onePixel)
{
    for (const int16_t value : {20, 21, -21}) {
        Field field(level(), 1, 1);
        field.set(0, 0, value, 10);
        field.find(5, 30);
        EXPECT_EQ(field.edge(0, 0), value == 20 ? 0 : 255) << value;
    }
}

TEST_P(CannyValues, noGradients)
{
    for (const float low : {0.0f, -0.0f, 10.0f}) {
        Field field(level(), 13, 5);
        field.find(low, 10);
        for (int i = 0; i < 65; i++) EXPECT_EQ(field.edge(i % 13, i / 13), 0);
    }
}

// Equal magnitudes on both columns of a step suppress each other.
TEST_P(CannyValues, stepOfTwoColumns)
{
    Field field(level(), 12, 6);
    for (int y = 0; y < 6; y++) field.set(5, y, 1020), field.set(6, y, 1020);
    field.find(0, 0);
    EXPECT_EQ(field.edges(), 0);
    for (int y = 0; y < 6; y++) field.set(6, y, 1019);
    field.find(0, 0);
    EXPECT_EQ(field.edges(), 6);
    for (int y = 0; y < 6; y++) EXPECT_EQ(field.edge(5, y), 255);
}

// A pixel is compared with the two neighbours along its gradient, and with no other.
TEST_P(CannyValues, directions)
{
    const struct {
        int16_t dx, dy;
        int toX, toY;
    } directions[] = {{100, 0, 1, 0},   {-100, 41, 1, 0},  {100, 42, 1, 1},   {-100, -100, 1, 1}, {100, 241, 1, 1},
                      {100, 242, 0, 1}, {0, -100, 0, 1},   {0, 100, 0, 1},    {100, -100, -1, 1}, {-100, 100, -1, 1},
                      {-42, 100, -1, 1}, {41, -100, 0, 1}};
    for (const auto& each : directions) {
        for (int y = 0; y < 3; y++) {
            for (int x = 0; x < 3; x++) {
                if (x == 1 && y == 1) continue;
                Field field(level(), 3, 3);
                field.set(1, 1, each.dx, each.dy);
                field.set(x, y, 500);
                field.find(10, 450);
                // The pixel is above the low threshold and beside an edge, unless that edge has suppressed it.
                const bool along = (x - 1 == each.toX && y - 1 == each.toY) || (1 - x == each.toX && 1 - y == each.toY);
                EXPECT_EQ(field.edge(1, 1), along ? 0 : 255)
                    << each.dx << ", " << each.dy << " beside " << x << ", " << y;
                EXPECT_EQ(field.edge(x, y), 255);
            }
        }
    }
}

// Whether a greater magnitude at this place beside a pixel suppresses it.
static bool isHeldBack(Level level, int16_t dx, int16_t dy, int atX, int atY)
{
    Field field(level, 3, 3);
    field.set(1, 1, dx, dy);
    field.set(atX, atY, 32767, 32767);
    field.find(1, 32000);
    return field.edge(1, 1) == 0;
}

// 0.4142 and 2.4142 at px and m6, 1697 / 4096 and 9889 / 4096 at a6 and w7.
TEST_P(CannyValues, boundsOfTheDirections)
{
    EXPECT_EQ(isHeldBack(level(), 18000, 7457, 2, 1), inWords(level()));    // 7455.6, 7457.5
    EXPECT_EQ(isHeldBack(level(), 18000, 7457, 2, 2), !inWords(level()));
    EXPECT_EQ(isHeldBack(level(), 8000, 19314, 1, 2), !inWords(level()));   // 19313.6, 19314.5
    EXPECT_EQ(isHeldBack(level(), 8000, 19314, 2, 2), inWords(level()));
    EXPECT_TRUE(isHeldBack(level(), 4096, 9889, 1, 2));                     // on the upper bound: vertical
    EXPECT_FALSE(isHeldBack(level(), 4096, 9888, 1, 2));
    EXPECT_TRUE(isHeldBack(level(), 4096, 1697, 2, 2));                     // on the lower bound: not horizontal
    EXPECT_TRUE(isHeldBack(level(), 4096, 1696, 2, 1));
}

// The float nearest to 0.4142 is a little above it, and the one after it too far.
TEST_P(CannyValues, boundsToTheLastBit)
{
    EXPECT_TRUE(isHeldBack(level(), 5000, 2071, 2, 1));                            // 2071.00004
    EXPECT_TRUE(isHeldBack(level(), 10169, 4212, 2, inWords(level()) ? 1 : 2));     // 4211.9999
    EXPECT_TRUE(isHeldBack(level(), 5000, 12071, 2, 2));                           // 12071.00004
    EXPECT_TRUE(isHeldBack(level(), 10169, 24550, inWords(level()) ? 2 : 1, 2));    // 24549.9999
}

TEST_P(CannyValues, hysteresis)
{
    Field field(level(), 20, 5);
    for (int x = 0; x < 20; x++) field.set(x, x % 2 + 1, 0, x == 17 ? 300 : 100);   // a zigzag, touching by corners
    field.find(50, 200);
    EXPECT_EQ(field.edges(), 20);
    field.find(50, 300);
    EXPECT_EQ(field.edges(), 0);
    field.set(9, 2, 0, 50);   // not above the low threshold: the line is broken
    field.find(50, 200);
    EXPECT_EQ(field.edges(), 10);
    EXPECT_EQ(field.edge(8, 1), 0);
}

TEST_P(CannyValues, equalThresholds)
{
    const Gradients g(level(), 200, 150);
    const Image<uint8_t> equal(Shape{200, 150}, 1), hysteresis(Shape{200, 150}, 2);
    const Scratch buffer(scratchBytes(200, 150), {Edge::end, Place::touching}, 3);
    const auto find = [&](const Image<uint8_t>& dst, float low, float high) {
        EXPECT_EQ(call(ruxiCanny_16s8u_C1R, g.dx.data(), g.dx.step(), g.dy.data(), g.dy.step(), dst.data(), dst.step(),
                       dst.roi(), FloatBits{bitsOf(low)}, FloatBits{bitsOf(high)}, buffer.data()), 0);
    };
    find(equal, 90, 90);
    find(hysteresis, 0, 90);
    int above = 0;
    for (int y = 0; y < 150; y++) {
        for (int x = 0; x < 200; x++) {
            const int magnitude = std::abs(g.dx.get(x, y)) + std::abs(g.dy.get(x, y));
            if (equal.get(x, y)) {
                EXPECT_GT(magnitude, 90);
                above++;
            }
            // Without a low threshold more is found, and above the threshold the same.
            if (magnitude > 90) {
                EXPECT_EQ(equal.get(x, y), hysteresis.get(x, y)) << x << ", " << y;
            }
        }
    }
    EXPECT_GT(above, 50);
}

TEST_P(CannyValues, everyMaximumWithoutThresholds)
{
    Field field(level(), 20, 3);
    for (const int x : {1, 5, 6, 12}) field.set(x, 1, 3);
    field.set(6, 1, 7);
    field.find(0, 0);
    EXPECT_EQ(field.edges(), 3);
    EXPECT_EQ(field.edge(5, 1), 0);
}

// A suppressed magnitude of 1 has the bits of an accepted one at a6 and w7.
TEST_P(CannyValues, suppressedMagnitudeOfOne)
{
    for (const float low : {0.0f, 0.75f, 1.0f}) {
        Field field(level(), 10, 1);
        field.set(3, 0, 1);
        field.set(4, 0, 9);
        field.find(low, 5);
        EXPECT_EQ(field.edge(4, 0), 255);
        EXPECT_EQ(field.edge(3, 0), inWords(level()) && low < 1 ? 255 : 0) << low;
    }
}

// Magnitudes end at 32767 at a6 and w7: there these two are equal.
TEST_P(CannyValues, magnitudesThatSaturate)
{
    Field field(level(), 4, 1);
    field.set(1, 0, 30000, 10000);
    field.set(2, 0, 30000, 12000);
    field.find(100, 32766);
    EXPECT_EQ(field.edge(1, 0), 0);
    EXPECT_EQ(field.edge(2, 0), inWords(level()) ? 0 : 255);
    field.set(1, 0, 0);
    field.find(100, 32766);
    EXPECT_EQ(field.edge(2, 0), 255);
    field.find(100, 32767);
    EXPECT_EQ(field.edge(2, 0), inWords(level()) ? 0 : 255);
}

// dst is written when all gradients have been read: it may stand on theirs.
TEST_P(CannyValues, dstOverTheGradients)
{
    const Shape shape = gradientShape(level(), 64, 60);
    const Image<int16_t> srcDx(shape, 1, uniform<int16_t>(-40, 40)), srcDy(shape, 2, uniform<int16_t>(-40, 40));
    const ruxiSize roi{64, 40};
    const Scratch buffer(scratchBytes(64, 40), {Edge::end, Place::touching}, 3);
    const auto find = [&](const Image<int16_t>& dx, const Image<int16_t>& dy, uint8_t* dst, int32_t dstStep) {
        EXPECT_EQ(call(ruxiCanny_16s8u_C1R, dx.data(), dx.step(), dy.data(), dy.step(), dst, dstStep, roi,
                       FloatBits{bitsOf(20)}, FloatBits{bitsOf(60)}, buffer.data()), 0);
    };
    const Image<uint8_t> apart(Shape{64, 40}, 1);
    find(srcDx, srcDy, apart.data(), apart.step());
    int edges = 0;
    for (int i = 0; i < 64 * 40; i++) edges += apart.get(i % 64, i / 64) == 255;
    EXPECT_GT(edges, 200);
    for (const int firstRow : {0, 2, 20}) {
        for (const bool overDx : {false, true}) {
            const auto dx = srcDx.clone(), dy = srcDy.clone();
            const Image<int16_t>& under = overDx ? dx : dy;
            find(dx, dy, under.row(firstRow), under.step());
            for (int y = 0; y < 40; y++) {
                ASSERT_EQ(std::memcmp(under.row(firstRow + y), apart.row(y), 64), 0) << firstRow << ", row " << y;
            }
        }
    }
}

// 40000 is -25536 at a6 and w7: every pixel of a block of 4 that holds a magnitude is above it.
TEST_P(CannyValues, highThresholdThatWraps)
{
    Field field(level(), 12, 1);
    field.set(5, 0, 9);
    field.find(3, 40000);
    for (int x = 0; x < 12; x++) {
        EXPECT_EQ(field.edge(x, 0), inWords(level()) && x / 4 == 1 ? 255 : 0) << x;
    }

    Field endingInABlock(level(), 10, 2);
    endingInABlock.set(9, 0, 9);
    endingInABlock.find(3, 40000);
    EXPECT_EQ(endingInABlock.edges(), inWords(level()) ? 2 : 0);
    EXPECT_EQ(endingInABlock.edge(8, 0), inWords(level()) ? 255 : 0);
}

// What an integer cannot hold is 0 at a6 and w7; at px and m6 no magnitude is above it.
TEST_P(CannyValues, thresholdsBeyondIntegers)
{
    constexpr float infinity = std::numeric_limits<float>::infinity(), nan = std::numeric_limits<float>::quiet_NaN();
    for (const float threshold : {2147483648.0f, 1e10f, infinity, nan}) {
        Field field(level(), 5, 3);
        field.set(2, 1, 50);
        field.find(threshold, threshold);
        EXPECT_EQ(field.edges(), inWords(level()) ? 1 : 0) << threshold;
        field.find(10, threshold);
        EXPECT_EQ(field.edges(), inWords(level()) ? 1 : 0) << threshold;
    }
}

// 65546 is 10 at a6 and w7.
TEST_P(CannyValues, thresholdThatWrapsToASmallOne)
{
    Field field(level(), 5, 3);
    field.set(1, 1, 10);
    field.set(3, 1, 11);
    field.find(5, 65546);
    EXPECT_EQ(field.edge(1, 1), 0);
    EXPECT_EQ(field.edge(3, 1), inWords(level()) ? 255 : 0);
}

// Where both thresholds have wrapped the search goes over zeros too, but not on from a suppressed magnitude of 1: that
// has the bits of an accepted pixel.
TEST_P(CannyValues, thresholdsThatWrap)
{
    Field field(level(), 12, 1);
    field.set(6, 0, 9);
    field.set(7, 0, 1);
    field.find(40000, 40000);
    for (int x = 0; x < 12; x++) EXPECT_EQ(field.edge(x, 0), inWords(level()) && x <= 7 ? 255 : 0) << x;
}

// -32768 has no absolute value at a6 and w7, and is 32768 at px and m6.
TEST_P(CannyValues, leastGradient)
{
    Field field(level(), 3, 3);
    field.set(1, 1, INT16_MIN);
    field.find(5, 100);
    EXPECT_EQ(field.edge(1, 1), inWords(level()) ? 0 : 255);
}

TEST_P(CannyValues, sizeOfTheBuffer)
{
    int32_t size = -1;
    EXPECT_EQ(call(ruxiCannyGetSize, ruxiSize{640, 480}, &size), 0);
    EXPECT_EQ(size, 3713328);
    EXPECT_EQ(call(ruxiCannyGetSize, ruxiSize{1, 1}, &size), 0);
    EXPECT_EQ(size, 108);
    EXPECT_EQ(call(ruxiCannyGetSize, ruxiSize{8000, 2}, &size), 0);
    EXPECT_EQ(size, 12 * 8002 * 4);
    EXPECT_EQ(call(ruxiCannyGetSize, ruxiSize{14000, 14000}, &size), 0);
    EXPECT_EQ(size, -1942295248);   // 2352672048 - 2^32
}

}
