// Sobel derivatives with a replicated border.
#include <vector>

#include "model/sobel.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(Sobel, "sobel");

static const std::vector<int> heights = {2, 3, 5, 4, 2, 7, 3, 16, 6, 33};

// A region of one column: px and m6 read and write a second one.
static Shape withSecondColumn(Level level, int width, int height)
{
    const bool second = width == 1 && (level == px || level == m6);
    return Shape{width, height}.margins(0, 0, second ? 1 : 0, 0);
}

// A stride of whole elements; that of the source may be odd.
static Image<int16_t> destinationOf(Case& c, const Shape& shape)
{
    const int gap = c.random.oneIn(3) ? 0 : c.random.between(0, 40);
    return c.image<int16_t>(shape.withStep(2 * (shape.width + shape.right + gap)));
}

TEST_P(Sobel, ruxiSobel3x3_Dx_8u16s_C1R)
{
    sweep(RUX_OPERATION(ruxiSobel3x3_Dx_8u16s_C1R), imageSweep().heightsOf(heights), [](Case& c, const auto& compare) {
        const Shape shape = withSecondColumn(level(), c.width, c.height);
        const auto src = c.image<uint8_t>(shape);
        const auto dst = destinationOf(c, shape);
        compare(src, src.step(), dst, dst.step(), c.roi());
    });
}

TEST_P(Sobel, ruxiSobel3x3_Dy_8u16s_C1R)
{
    sweep(RUX_OPERATION(ruxiSobel3x3_Dy_8u16s_C1R), imageSweep().heightsOf(heights), [](Case& c, const auto& compare) {
        const Shape shape = withSecondColumn(level(), c.width, c.height);
        const int32_t rowOrder = c.random.between(0, 1);
        const auto src = c.image<uint8_t>(shape);
        const auto dst = destinationOf(c, shape);
        compare(src, src.step(), dst, dst.step(), rowOrder, c.roi());
    });
}

static Image<int16_t> dxOf(const Image<uint8_t>& src)
{
    const Image<int16_t> dst(Shape{src.width(), src.height()}, 9);
    EXPECT_EQ(call(ruxiSobel3x3_Dx_8u16s_C1R, src.data(), src.step(), dst.data(), dst.step(), dst.roi()), 0);
    return dst.clone();
}

static Image<int16_t> dyOf(const Image<uint8_t>& src, int32_t rowOrder)
{
    const Image<int16_t> dst(Shape{src.width(), src.height()}, 9);
    EXPECT_EQ(call(ruxiSobel3x3_Dy_8u16s_C1R, src.data(), src.step(), dst.data(), dst.step(), rowOrder, dst.roi()), 0);
    return dst.clone();
}

TEST_P(Sobel, constantGivesZeros)
{
    for (const int width : {2, 15, 40}) {
        for (const int height : {2, 3, 9}) {
            const Image<uint8_t> src(Shape{width, height}, 1, constant<uint8_t>(201));
            for (const auto& dst : {dxOf(src), dyOf(src, 0), dyOf(src, 1)}) {
                for (int i = 0; i < width * height; i++) EXPECT_EQ(dst.get(i), 0);
            }
        }
    }
}

// The two columns beside a step hold 1020, in the first and the last row too.
TEST_P(Sobel, verticalStep)
{
    for (const int width : {4, 30}) {
        const int edge = width / 2;
        Image<uint8_t> src(Shape{width, 6}, 1, constant<uint8_t>(0));
        for (int y = 0; y < 6; y++) {
            for (int x = edge; x < width; x++) src.set(x, y, 255);
        }
        const auto dx = dxOf(src), dy = dyOf(src, 0);
        for (int y = 0; y < 6; y++) {
            for (int x = 0; x < width; x++) {
                EXPECT_EQ(dx.get(x, y), x == edge - 1 || x == edge ? 1020 : 0) << x << ", " << y;
                EXPECT_EQ(dy.get(x, y), 0) << x << ", " << y;
            }
        }
    }
}

// A bright lower side is positive in row order 0 and negative in row order 1.
TEST_P(Sobel, horizontalStep)
{
    for (const int width : {2, 30}) {
        Image<uint8_t> src(Shape{width, 6}, 1, constant<uint8_t>(0));
        for (int y = 3; y < 6; y++) {
            for (int x = 0; x < width; x++) src.set(x, y, 255);
        }
        const auto dx = dxOf(src), down = dyOf(src, 0), up = dyOf(src, 1);
        for (int y = 0; y < 6; y++) {
            for (int x = 0; x < width; x++) {
                EXPECT_EQ(down.get(x, y), y == 2 || y == 3 ? 1020 : 0) << x << ", " << y;
                EXPECT_EQ(up.get(x, y), y == 2 || y == 3 ? -1020 : 0) << x << ", " << y;
                EXPECT_EQ(dx.get(x, y), 0) << x << ", " << y;
            }
        }
    }
}

// The first column is 3 * s(0) + s(1), the last 3 * s(w - 1) + s(w - 2); two rows are the first and the last.
TEST_P(Sobel, edgesAreReplicated)
{
    for (const int width : {2, 3, 17, 40}) {
        for (const int height : {2, 5}) {
            const Image<uint8_t> src(Shape{width, height}, 1, anyBits<uint8_t>);
            const auto dx = dxOf(src), dy = dyOf(src, 0);
            const auto s = [&](int x, int y) { return int(src.get(x, y)); };
            const auto left = [&](int y) { return 3 * s(0, y) + s(1, y); };
            const auto right = [&](int y) { return 3 * s(width - 1, y) + s(width - 2, y); };
            const auto across = [&](int x, int y) {
                return s(std::min(x + 1, width - 1), y) - s(std::max(x - 1, 0), y);
            };
            EXPECT_EQ(dy.get(0, 0), left(1) - left(0));
            EXPECT_EQ(dy.get(width - 1, height - 1), right(height - 1) - right(height - 2));
            for (int x = 0; x < width; x++) {
                EXPECT_EQ(dx.get(x, 0), 3 * across(x, 0) + across(x, 1)) << x;
                EXPECT_EQ(dx.get(x, height - 1), across(x, height - 2) + 3 * across(x, height - 1)) << x;
            }
        }
    }
}

// One column: a6 and w7 see only itself. px and m6 take the byte to the right for a second column, and write one.
TEST_P(Sobel, oneColumn)
{
    Image<uint8_t> src(Shape{1, 3}.margins(0, 0, 1, 0), 1);
    Image<int16_t> dst(Shape{1, 3}.margins(0, 0, 1, 0), 2, constant<int16_t>(7777));
    const uint8_t first[] = {10, 20, 90}, second[] = {13, 43, 5};
    for (int y = 0; y < 3; y++) src.set(0, y, first[y]), src.set(1, y, second[y]);
    const bool two = level() == px || level() == m6;

    EXPECT_EQ(call(ruxiSobel3x3_Dx_8u16s_C1R, src.data(), 2, dst.data(), 4, ruxiSize{1, 3}), 0);
    const int across[] = {3 * 3 + 23, 3 + 2 * 23 - 85, 23 - 3 * 85};
    for (int y = 0; y < 3; y++) {
        EXPECT_EQ(dst.get(0, y), two ? across[y] : 0) << y;
        EXPECT_EQ(dst.get(1, y), two ? across[y] : 7777) << y;
    }

    dst.fill(2, constant<int16_t>(7777));
    EXPECT_EQ(call(ruxiSobel3x3_Dy_8u16s_C1R, src.data(), 2, dst.data(), 4, 0, ruxiSize{1, 3}), 0);
    const int left[] = {3 * 10 + 13, 3 * 20 + 43, 3 * 90 + 5}, right[] = {10 + 3 * 13, 20 + 3 * 43, 90 + 3 * 5};
    const int itself[] = {4 * (20 - 10), 4 * (90 - 10), 4 * (90 - 20)};
    for (int y = 0; y < 3; y++) {
        const int above = std::max(y - 1, 0), below = std::min(y + 1, 2);
        EXPECT_EQ(dst.get(0, y), two ? left[below] - left[above] : itself[y]) << y;
        EXPECT_EQ(dst.get(1, y), two ? right[below] - right[above] : 7777) << y;
    }
}

// Pictures of many rows, as a host has them.
TEST_P(Sobel, tallPictures)
{
    for (const int width : {16, 17, 100}) {
        const Image<uint8_t> src(Shape{width, 150}, 1);
        const Image<int16_t> dst(Shape{width, 150}, 3);
        agree(RUX_OPERATION(ruxiSobel3x3_Dx_8u16s_C1R), src, src.step(), dst, dst.step(), dst.roi());
        for (const int32_t rowOrder : {0, 1}) {
            agree(RUX_OPERATION(ruxiSobel3x3_Dy_8u16s_C1R), src, src.step(), dst, dst.step(), rowOrder, dst.roi());
        }
    }
}

TEST_P(Sobel, refusesWrongArguments)
{
    const Image<uint8_t> src(Shape{20, 3}, 1);
    const Image<int16_t> dst(Shape{20, 3}, 2);
    const auto step = wrongly<int32_t>(40, {0, -1, -2, INT32_MIN, 1, 3, 39, 41, INT32_MAX});
    const auto roi = wrongly<ruxiSize>({20, 3}, {{0, 3}, {20, 0}, {-1, 3}, {20, 1}, {20, -1}, {0, 0}});
    const auto rowOrder = wrongly<int32_t>(1, {2, -1, 256, INT32_MIN});
    refuse(RUX_OPERATION(ruxiSobel3x3_Dx_8u16s_C1R), src, src.step(), dst, step, roi);
    refuse(RUX_OPERATION(ruxiSobel3x3_Dy_8u16s_C1R), src, src.step(), dst, step, rowOrder, roi);
}

TEST_P(Sobel, orderOfStatuses)
{
    const Image<uint8_t> src(Shape{20, 3}, 1);
    const Image<int16_t> dst(Shape{20, 3}, 2);
    const auto status = [&](const uint8_t* from, int32_t srcStep, int32_t dstStep, ruxiSize roi) {
        const ruxStatus dx = call(ruxiSobel3x3_Dx_8u16s_C1R, from, srcStep, dst.data(), dstStep, roi);
        EXPECT_EQ(call(ruxiSobel3x3_Dy_8u16s_C1R, from, srcStep, dst.data(), dstStep, 2, roi), dx == 0 ? -5 : dx);
        return dx;
    };
    EXPECT_EQ(status(nullptr, 0, 0, {0, 3}), -8);
    EXPECT_EQ(status(src.data(), 0, 3, {0, 3}), -14);
    EXPECT_EQ(status(src.data(), 20, 0, {0, 3}), -14);
    EXPECT_EQ(status(src.data(), 20, 3, {0, 3}), -6);
    EXPECT_EQ(status(src.data(), 20, 3, {20, 1}), -6);
    EXPECT_EQ(status(src.data(), 20, 3, {20, 3}), -108);
    EXPECT_EQ(status(src.data(), 20, 40, {20, 3}), 0);
}

}
