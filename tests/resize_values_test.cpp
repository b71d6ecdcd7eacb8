// Scaling: the contract's numbers and edges, with their values.
#include <algorithm>
#include <cmath>

#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

class ResizeValues : public LevelTest {};
RUX_AT_EACH_LEVEL(ResizeValues);

static bool isLanes()
{
    return LevelTest::level() == a6 || LevelTest::level() == w7;
}

// Column x holds x: what a copy of it holds tells where it came from.
static Image<uint8_t> ramp(int width, int height)
{
    Image<uint8_t> image(Shape{width, height});
    for (int y = 0; y < height; y++) {
        for (int x = 0; x < width; x++) image.set(x, y, static_cast<uint8_t>(x));
    }
    return image;
}

static Image<uint8_t> transposedRamp(int width, int height)
{
    Image<uint8_t> image(Shape{width, height});
    for (int y = 0; y < height; y++) std::fill_n(image.row(y), width, static_cast<uint8_t>(y));
    return image;
}

constexpr uint8_t untouched = 0xEE;

struct Scaled {
    ruxStatus status;
    std::vector<std::vector<uint8_t>> rows;
};

static Scaled scaled(const uint8_t* src, ruxiSize srcSize, int32_t srcStep, ruxiRect rectangle, ruxiSize region,
                     double xFactor, double yFactor, ruxInterpolation mode)
{
    const Image<uint8_t> dst(Shape{region.width, region.height}, 1, constant(untouched));
    Scaled result;
    result.status = call(ruxiResize_8u_C1R, src, srcSize, srcStep, rectangle, dst.data(), dst.step(), region, xFactor,
                         yFactor, mode);
    for (int y = 0; y < region.height; y++) result.rows.emplace_back(dst.row(y), dst.row(y) + region.width);
    return result;
}

static Scaled scaled(const Image<uint8_t>& src, ruxiRect rectangle, ruxiSize region, double xFactor, double yFactor,
                     ruxInterpolation mode)
{
    return scaled(src.data(), src.roi(), src.step(), rectangle, region, xFactor, yFactor, mode);
}

static ruxiRect allOf(const Image<uint8_t>& image)
{
    return {0, 0, image.width(), image.height()};
}

using Bytes = std::vector<uint8_t>;

TEST_P(ResizeValues, beginningAtTheImagesEnd)
{
    const auto src = ramp(9, 5);
    const auto outside = scaled(src, {9, 0, 4, 4}, {3, 1}, 1.0, 1.0, 1);
    EXPECT_EQ(outside.status, 1);
    EXPECT_EQ(outside.rows[0], Bytes(3, untouched));
    EXPECT_EQ(scaled(src, {0, 5, 4, 4}, {3, 1}, 1.0, 1.0, 77).status, 1);
    const auto lastColumn = scaled(src, {8, 0, 4, 4}, {3, 1}, 2.0, 1.0, 1);
    EXPECT_EQ(lastColumn.status, 0);
    EXPECT_EQ(lastColumn.rows[0], Bytes({8, 8, untouched}));
}

TEST_P(ResizeValues, nearestOfWholeRatios)
{
    const auto src = ramp(12, 3);
    const ruxiRect all = allOf(src);
    EXPECT_EQ(scaled(src, all, {8, 1}, 3.0, 1.0, 1).rows[0], Bytes({0, 0, 0, 1, 1, 1, 2, 2}));
    EXPECT_EQ(scaled(src, all, {8, 1}, 2.0, 1.0, 1).rows[0], Bytes({0, 0, 1, 1, 2, 2, 3, 3}));
    EXPECT_EQ(scaled(src, all, {3, 1}, 0.25, 1.0, 1).rows[0], Bytes({0, 4, 8}));
    EXPECT_EQ(scaled(src, all, {6, 1}, 0.5, 1.0, 1).rows[0], Bytes({0, 2, 4, 6, 8, 10}));
    const auto tall = transposedRamp(3, 12);
    const auto rows = scaled(tall, allOf(tall), {1, 4}, 1.0, 0.25, 1).rows;
    EXPECT_EQ(rows, (std::vector<Bytes>{{0}, {4}, {8}, {untouched}}));
}

TEST_P(ResizeValues, nearestOfOddRatios)
{
    const auto src = ramp(10, 2);
    const ruxiRect all = allOf(src);
    EXPECT_EQ(scaled(src, all, {6, 1}, 0.55, 1.0, 1).rows[0], Bytes({0, 2, 4, 6, 8, untouched}));
    const auto larger = scaled(src, all, {15, 1}, 1.5, 1.0, 1).rows[0];
    for (int j = 0; j < 15; j++) EXPECT_EQ(larger[j], static_cast<int>(0.5 + j * 9 / 14.0 + 1e-07)) << j;
}

TEST_P(ResizeValues, lengthOfTheResult)
{
    const auto src = ramp(10, 4);
    EXPECT_EQ(scaled(src, {3, 0, 1, 1}, {3, 1}, 0.5, 1.0, 1).rows[0], Bytes({3, untouched, untouched}));
    EXPECT_EQ(scaled(src, {3, 0, 4, 4}, {1, 1}, 2.0, 2.0, 1).rows[0], Bytes({3}));
    // A region that is larger stays as it is beyond the result; a smaller one crops without a change of scale.
    const auto larger = scaled(src, {0, 0, 4, 2}, {6, 3}, 1.0, 1.0, 1).rows;
    EXPECT_EQ(larger[1], Bytes({0, 1, 2, 3, untouched, untouched}));
    EXPECT_EQ(larger[2], Bytes(6, untouched));
    EXPECT_EQ(scaled(src, allOf(src), {3, 1}, 0.5, 0.5, 1).rows[0], Bytes({0, 2, 4}));
}

// By the size of the image: a cubic on 3 columns is linear, a linear on one column nearest with nearest's start.
TEST_P(ResizeValues, downgrade)
{
    const Image<uint8_t> narrow(Shape{3, 100}, 5), column(Shape{1, 100}, 6);
    EXPECT_EQ(scaled(narrow, allOf(narrow), {7, 40}, 2.3, 0.37, 4).rows,
              scaled(narrow, allOf(narrow), {7, 40}, 2.3, 0.37, 2).rows);
    const auto rows = scaled(column, allOf(column), {1, 37}, 1.0, 0.37, 2).rows;
    EXPECT_EQ(rows, scaled(column, allOf(column), {1, 37}, 1.0, 0.37, 1).rows);
    for (int i = 0; i < 37; i++) EXPECT_EQ(rows[i][0], column.get(0, static_cast<int>(0.5 + i * 99 / 36.0 + 1e-07)));
    // A rectangle of one column in a larger image keeps its mode.
    const auto wide = transposedRamp(9, 9);
    EXPECT_EQ(scaled(wide, {4, 0, 1, 9}, {1, 17}, 1.0, 17 / 9.0, 2).rows[1][0], level() == px ? 1 : 0);
}

TEST_P(ResizeValues, linearHalfway)
{
    Image<uint8_t> src(Shape{8, 4});
    for (int y = 0; y < 4; y++) {
        for (int x = 0; x < 8; x++) src.set(x, y, x % 2 ? 255 : 0);
    }
    const uint8_t half = level() == px ? 128 : 127;
    const auto rows = scaled(src, allOf(src), {15, 4}, 15 / 8.0, 1.0, 2).rows;
    for (const auto& row : rows) {
        for (int j = 0; j < 15; j++) EXPECT_EQ(row[j], j % 2 ? half : j % 4 ? 255 : 0) << j;
    }
}

TEST_P(ResizeValues, linearOfOneValue)
{
    for (const uint8_t value : {0, 1, 100, 254, 255}) {
        const Image<uint8_t> src(Shape{21, 13}, 1, constant(value));
        for (const auto& row : scaled(src, allOf(src), {29, 17}, 1.4, 1.35, 2).rows) EXPECT_EQ(row, Bytes(29, value));
    }
}

// The rectangle ends before the image. Its last column is met whole, with no share of the next one...
TEST_P(ResizeValues, linearOnTheRectanglesEnd)
{
    const auto src = ramp(12, 4);
    const auto row = scaled(src, {0, 0, 5, 4}, {9, 4}, 1.8, 1.0, 2).rows[0];
    EXPECT_EQ(row[8], 4);
    EXPECT_EQ(row[6], 3);
}

// ...but where the width rounds up to a whole number, the position lies a little past it.
TEST_P(ResizeValues, linearReadsBesideTheRectangle)
{
    constexpr int width = 100001;
    Image<uint8_t> src(Shape{width + 1, 2}, 1, constant(uint8_t(0)));
    for (int y : {0, 1}) src.set(width, y, 255);
    const double factor = (2 - 9e-8) / width;
    const double position = (width - 1) * (1.0 / (width * factor - 1.0));
    const int fraction = static_cast<int>(1e-07 + (position - (width - 1)) * 16384.0);
    ASSERT_GT(fraction, 100);
    const int along = (255 * fraction + (level() == px ? 128 : 0)) >> 8;
    const int expected = (along * 16384 + (level() == px ? 0x80000 : 0)) >> 20;
    ASSERT_GT(expected, 0);
    EXPECT_EQ(scaled(src, {0, 0, width, 2}, {3, 1}, factor, 1.0, 2).rows[0],
              Bytes({0, static_cast<uint8_t>(expected), untouched}));
}

// A rectangle that is the image's last row: the row above has no weight and is not read.
TEST_P(ResizeValues, linearOnTheLastRow)
{
    const Image<uint8_t> last(Shape{9, 1}.at({Edge::start, Place::touching}), 7);
    for (const double yFactor : {1.0, 3.0}) {
        const auto result = scaled(last.data() - 4 * 9, {9, 5}, 9, {1, 4, 8, 6}, {8, 3}, 1.0, yFactor, 2);
        EXPECT_EQ(result.status, 0);
        for (int y = 0; y < yFactor; y++) {
            for (int x = 0; x < 8; x++) EXPECT_EQ(result.rows[y][x], last.get(x + 1)) << x;
        }
    }
}

TEST_P(ResizeValues, linearOnTheLastColumn)
{
    const Image<uint8_t> src(Shape{9, 5}, 8);
    const auto rows = scaled(src, {8, 0, 3, 5}, {2, 5}, 2.0, 1.0, 2).rows;
    for (int y = 0; y < 5; y++) EXPECT_EQ(rows[y], Bytes(2, src.get(8, y)));
}

// A ramp's cubic is the ramp: halves are truncated at px and m6, rounded at a6 and w7 but in the last columns.
TEST_P(ResizeValues, cubicHalfway)
{
    const auto src = ramp(8, 4);
    const auto row = scaled(src, allOf(src), {15, 1}, 15 / 8.0, 1.0, 4).rows[0];
    for (int j = 0; j < 15; j++) EXPECT_EQ(row[j], isLanes() && j < 12 ? (j + 1) / 2 : j / 2) << j;
    const auto three = scaled(src, allOf(src), {3, 1}, 15 / 8.0, 1.0, 4).rows[0];
    EXPECT_EQ(three, Bytes({0, 0, 1}));
}

TEST_P(ResizeValues, cubicOnTheFirstPixel)
{
    const Image<uint8_t> src(Shape{20, 20}, 9, anyBits<uint8_t>);
    EXPECT_EQ(scaled(src, allOf(src), {9, 9}, 1.3, 1.7, 4).rows[0][0], src.get(0));
    // A rectangle that begins within the image stands on its own first pixel, with its true neighbours.
    EXPECT_EQ(scaled(src, {5, 6, 9, 9}, {9, 9}, 1.3, 1.7, 4).rows[0][0], src.get(5, 6));
}

// The value is not forced to the last sample: a third is not exact.
TEST_P(ResizeValues, cubicOnTheLastPixel)
{
    const Image<uint8_t> src(Shape{20, 20}, 10, extremes<uint8_t>);
    const auto rows = scaled(src, allOf(src), {26, 34}, 1.3, 1.7, 4).rows;
    EXPECT_NEAR(rows[33][25], src.get(19, 19), 1);
}

TEST_P(ResizeValues, cubicOvershootIsClamped)
{
    Image<uint8_t> src(Shape{12, 8});
    for (int y = 0; y < 8; y++) {
        for (int x = 0; x < 12; x++) src.set(x, y, x < 6 ? 0 : 255);
    }
    const auto row = scaled(src, allOf(src), {23, 8}, 23 / 12.0, 1.0, 4).rows[3];
    EXPECT_EQ(row[9], 0);      // below 0 by the polynomial
    EXPECT_EQ(row[13], 255);   // above 255
}

TEST_P(ResizeValues, superSamplingOfPairs)
{
    Image<uint8_t> src(Shape{8, 2}, 1, constant(uint8_t(0)));
    src.set(0, 0, 1);                                                             // 1 / 4
    src.set(2, 0, 1), src.set(3, 1, 1);                                           // 2 / 4
    src.set(4, 0, 1), src.set(4, 1, 1), src.set(5, 0, 1);                         // 3 / 4
    for (int x : {6, 7}) src.set(x, 0, 255), src.set(x, 1, 255);
    EXPECT_EQ(scaled(src, allOf(src), {4, 1}, 0.5, 0.5, 8).rows[0], Bytes({0, 1, 1, 255}));
}

TEST_P(ResizeValues, superSamplingOfTwoRowsAndAHalf)
{
    Image<uint8_t> src(Shape{20, 10});
    const int values[] = {10, 20, 100, 7, 9, 200, 100, 40, 90, 33};
    for (int y = 0; y < 10; y++) std::fill_n(src.row(y), 20, static_cast<uint8_t>(values[y]));
    for (const double xFactor : {0.5, 0.4}) {
        const auto rows = scaled(src, allOf(src), {3, 4}, xFactor, 0.4, 8).rows;
        EXPECT_EQ(rows[0], Bytes(3, 32));    // (10 + 20 + 100 / 2) / 2.5
        EXPECT_EQ(rows[1], Bytes(3, 26));    // (100 / 2 + 7 + 9) / 2.5 = 26.4
        EXPECT_EQ(rows[2], Bytes(3, 128));   // (200 + 100 + 40 / 2) / 2.5
        EXPECT_EQ(rows[3], Bytes(3, 57));    // (40 / 2 + 90 + 33) / 2.5 = 57.2
    }
}

// A box goes on past the rectangle, and at the bottom past the image.
TEST_P(ResizeValues, superSamplingPastTheRectangle)
{
    Image<uint8_t> src(Shape{8, 5});
    for (int y = 0; y < 5; y++) std::fill_n(src.row(y), 8, static_cast<uint8_t>(40 * (y + 1)));
    const auto result = scaled(src.data(), {8, 3}, 8, {0, 1, 8, 2}, {4, 2}, 0.5, 0.25, 8);
    EXPECT_EQ(result.rows[0], Bytes(4, (80 + 120 + 160 + 200) / 4));
    EXPECT_EQ(result.rows[1], Bytes(4, untouched));
}

// Columns past the rectangle's count as zeros.
TEST_P(ResizeValues, superSamplingOfANarrowRectangle)
{
    const Image<uint8_t> src(Shape{8, 4}, 1, constant(uint8_t(200)));
    EXPECT_EQ(scaled(src, {1, 0, 3, 4}, {4, 2}, 0.1, 0.5, 8).rows[0], Bytes({60, untouched, untouched, untouched}));
    EXPECT_EQ(scaled(src, {1, 0, 3, 4}, {4, 2}, 1 / 12.5, 0.5, 8).rows[1],
              Bytes({48, untouched, untouched, untouched}));
}

// The reciprocal lies just below 3: the rest of the first box's last column is too little to count, and the second box
// takes a column more than it covers; the rows do not.
TEST_P(ResizeValues, superSamplingBesideAWholeRatio)
{
    const Image<uint8_t> src(Shape{30, 30}, 1, constant(uint8_t(60)));
    const auto rows = scaled(src, allOf(src), {4, 4}, 0.33333334, 0.33333334, 8).rows;
    for (int y : {0, 1, 2, 3}) EXPECT_EQ(rows[y], Bytes({60, 80, 60, 60})) << y;
}

// A value of 256 keeps its low byte: there is no clamp.
TEST_P(ResizeValues, superSamplingDoesNotClamp)
{
    const Image<uint8_t> src(Shape{30, 30}, 1, constant(uint8_t(240)));
    EXPECT_EQ(scaled(src, allOf(src), {2, 1}, 0.33333334, 0.33333334, 8).rows[0], Bytes({240, 64}));
}

}
