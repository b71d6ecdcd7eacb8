// The greatest value in a rectangle.
#include "block_requests.h"
#include "model/filter_maximum.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(FilterMaximum, "filter_maximum");

static Shape around(int width, int height, ruxiSize mask, ruxiPoint anchor)
{
    return Shape{width, height}.margins(anchor.x, anchor.y, mask.width - 1 - anchor.x, mask.height - 1 - anchor.y);
}

static int lengthOf(Random& random, int large)
{
    switch (random.below(4)) {
    case 0: return 1;
    case 1: return 3;
    case 2: return random.between(1, 9);
    default: return random.between(1, large);
    }
}

// Dark rows with a bright pixel here and there: the greatest is the one pixel's, wherever it stands in the mask.
static void sparks(Random& random, uint8_t* row, int count)
{
    for (int i = 0; i < count; i++) row[i] = static_cast<uint8_t>(random.oneIn(9) ? random.below(256) : 0);
}

TEST_P(FilterMaximum, ruxiFilterMax_8u_C1R)
{
    sweep(RUX_OPERATION(ruxiFilterMax_8u_C1R), imageSweep(), [](Case& c, const auto& compare) {
        ruxiSize mask;
        ruxiPoint anchor;
        mask.width = lengthOf(c.random, 70);
        mask.height = lengthOf(c.random, 20);
        anchor.x = c.random.oneIn(3) ? mask.width - 1 : c.random.between(0, mask.width - 1);
        anchor.y = c.random.oneIn(3) ? mask.height - 1 : c.random.between(0, mask.height - 1);
        const Fill<uint8_t> fill = c.random.oneIn(2) ? Fill<uint8_t>(sparks) : Fill<uint8_t>(mixture<uint8_t>);
        const auto src = c.image<uint8_t>(around(c.width, c.height, mask, anchor), fill);
        const auto dst = c.image<uint8_t>();
        compare(src, src.step(), dst, dst.step(), c.roi(), mask, anchor);
    });
}

// One bright pixel is seen by exactly the windows that hold it.
TEST_P(FilterMaximum, everyCellOfTheMask)
{
    for (int maskWidth = 1; maskWidth <= 9; maskWidth++) {
        for (int maskHeight = 1; maskHeight <= 5; maskHeight++) {
            const ruxiSize mask = {maskWidth, maskHeight};
            const ruxiPoint anchor = {maskWidth / 2, maskHeight / 3};
            Image<uint8_t> src(around(35, 9, mask, anchor), 1, constant<uint8_t>(3));
            src.set(17, 4, 200);
            const Image<uint8_t> dst(Shape{35, 9}, 2);
            EXPECT_EQ(call(ruxiFilterMax_8u_C1R, src.data(), src.step(), dst.data(), 35, dst.roi(), mask, anchor), 0);
            for (int y = 0; y < 9; y++) {
                for (int x = 0; x < 35; x++) {
                    const int cellX = 17 - (x - anchor.x), cellY = 4 - (y - anchor.y);
                    const bool held = cellX >= 0 && cellX < maskWidth && cellY >= 0 && cellY < maskHeight;
                    EXPECT_EQ(dst.get(x, y), held ? 200 : 3) << x << ", " << y << ", mask " << toText(mask);
                }
            }
        }
    }
}

TEST_P(FilterMaximum, maskOfOnePixelCopies)
{
    const Image<uint8_t> src(Shape{77, 5}, 1), dst(Shape{77, 5}, 2);
    const auto status = [&](ruxiPoint anchor) {
        return call(ruxiFilterMax_8u_C1R, src.data(), 77, dst.data(), 77, dst.roi(), ruxiSize{1, 1}, anchor);
    };
    EXPECT_EQ(status({0, 0}), 0);
    EXPECT_EQ(std::memcmp(dst.data(), src.data(), 77 * 5), 0);
    EXPECT_EQ(status({1, 0}), -34);
    EXPECT_EQ(status({0, 1}), -34);
}

TEST_P(FilterMaximum, largeMasks)
{
    for (const ruxiSize mask : {ruxiSize{500, 3}, ruxiSize{2, 300}, ruxiSize{129, 65}}) {
        const ruxiPoint anchor = {mask.width - 1, mask.height / 2};
        const Image<uint8_t> src(around(50, 6, mask, anchor), 1, sparks), dst(Shape{50, 6}, 2);
        agree(RUX_OPERATION(ruxiFilterMax_8u_C1R), src, src.step(), dst, dst.step(), dst.roi(), mask, anchor);
    }
}

// Every height of the mask on a region of many rows, so that the ring of rows goes round.
TEST_P(FilterMaximum, tallRegions)
{
    for (int maskHeight = 1; maskHeight <= 24; maskHeight++) {
        for (const int maskWidth : {1, 2, 18}) {
            for (const int height : {maskHeight, 53, 54}) {
                const ruxiSize mask = {maskWidth, maskHeight};
                const Image<uint8_t> src(around(37, height, mask, {0, 0}), 1, sparks), dst(Shape{37, height}, 2);
                agree(RUX_OPERATION(ruxiFilterMax_8u_C1R), src, src.step(), dst, dst.step(), dst.roi(), mask,
                      ruxiPoint{0, 0});
            }
        }
    }
}

// Every width of the mask on rows of several vectors.
TEST_P(FilterMaximum, everyMaskWidth)
{
    for (int maskWidth = 1; maskWidth <= 80; maskWidth++) {
        for (const int width : {1, 7, 8, 15, 16, 17, 40, 100}) {
            const ruxiSize mask = {maskWidth, 2};
            const Image<uint8_t> src(around(width, 3, mask, {0, 0}), 1, sparks), dst(Shape{width, 3}, 2);
            agree(RUX_OPERATION(ruxiFilterMax_8u_C1R), src, src.step(), dst, dst.step(), dst.roi(), mask,
                  ruxiPoint{0, 0});
        }
    }
}

TEST_P(FilterMaximum, laterRowWinsWhereRowsOverlap)
{
    for (const int maskHeight : {1, 2, 3, 8, 9, 12}) {
        const ruxiSize mask = {3, maskHeight};
        const Image<uint8_t> src(around(70, 21, mask, {0, 0}), 1), dst(Shape{70, 21}.withStep(33), 2);
        agree(RUX_OPERATION(ruxiFilterMax_8u_C1R), src, src.step(), dst, dst.step(), dst.roi(), mask, ruxiPoint{0, 0});
    }
}

// No row lands before the windows that need the pixels there are done.
TEST_P(FilterMaximum, inPlaceAsElsewhere)
{
    for (const ruxiSize mask : {ruxiSize{1, 2}, ruxiSize{3, 1}, ruxiSize{5, 1}, ruxiSize{7, 1}, ruxiSize{4, 3},
                                ruxiSize{3, 9}, ruxiSize{6, 12}, ruxiSize{20, 2}}) {
        for (int cell = 0; cell < mask.width * mask.height; cell++) {
            const ruxiPoint anchor = {cell % mask.width, cell / mask.width};
            for (const int width : {3, 50}) {
                const Image<uint8_t> image(around(width, 17, mask, anchor), 1, anyBits<uint8_t>);
                const Image<uint8_t> dst(Shape{width, 17}, 2);
                EXPECT_EQ(call(ruxiFilterMax_8u_C1R, image.data(), image.step(), dst.data(), width, dst.roi(), mask,
                               anchor), 0);
                EXPECT_EQ(call(ruxiFilterMax_8u_C1R, image.data(), image.step(), image.data(), image.step(), dst.roi(),
                               mask, anchor), 0);
                for (int y = 0; y < 17; y++) {
                    EXPECT_EQ(std::memcmp(image.row(y), dst.row(y), static_cast<size_t>(width)), 0)
                        << "row " << y << ", mask " << toText(mask) << ", cell " << cell;
                }
            }
        }
        if (HasFailure()) return;
    }
}

TEST_P(FilterMaximum, refusesWrongArguments)
{
    const Image<uint8_t> src(around(20, 3, {3, 4}, {1, 2}), 1), dst(Shape{20, 3}, 2);
    const auto mask = wrongly<ruxiSize>({3, 4}, {{0, 4}, {3, 0}, {-1, 4}, {3, -1}, {INT32_MIN, INT32_MIN}});
    const auto anchor = wrongly<ruxiPoint>({1, 2}, {{3, 2}, {1, 4}, {-1, 2}, {1, -1}, {INT32_MAX, 2}, {1, INT32_MIN}});
    refuse(RUX_OPERATION(ruxiFilterMax_8u_C1R), src, src.step(), dst, dst.step(), dst.roi(), mask, anchor);
}

TEST_P(FilterMaximum, orderOfStatuses)
{
    const Image<uint8_t> src(around(20, 3, {3, 3}, {1, 1}), 1), dst(Shape{20, 3}, 2);
    const uint8_t* const none = nullptr;
    const auto status = [&](const uint8_t* from, int32_t step, ruxiSize roi, ruxiSize mask) {
        return call(ruxiFilterMax_8u_C1R, from, step, dst.data(), 20, roi, mask, ruxiPoint{1, 1});
    };
    EXPECT_EQ(status(none, 0, {0, 3}, {0, 3}), -8);
    EXPECT_EQ(status(src.data(), 0, {0, 3}, {0, 3}), -6);
    EXPECT_EQ(status(src.data(), 0, {20, 3}, {0, 3}), -14);
    EXPECT_EQ(status(src.data(), 22, {20, 3}, {0, 3}), -33);
    EXPECT_EQ(status(src.data(), 22, {20, 3}, {1, 3}), -34);
    EXPECT_EQ(status(src.data(), 22, {20, 3}, {3, 3}), 0);
}

// A ring of rows, each of whole 32 bytes; at px also a window of 32-bit numbers. The other levels take no ring for a
// mask of one row, and a second block only for a wide mask.
TEST_P(FilterMaximum, workMemory)
{
    const auto requested = [](ruxiSize mask, int width) {
        const Image<uint8_t> src(around(width, 3, mask, {0, 0}), 1), dst(Shape{width, 3}, 2);
        const BlockRequests requests;
        EXPECT_EQ(call(ruxiFilterMax_8u_C1R, src.data(), src.step(), dst.data(), width, dst.roi(), mask,
                       ruxiPoint{0, 0}), 0);
        return requests.sizes;
    };
    EXPECT_EQ(requested({1, 1}, 40), BlockSizes());
    for (const int width : {31, 32, 40}) {
        const size_t row = width <= 32 ? 32 : 64;
        for (const int maskWidth : {1, 2, 5, 9, 40}) {
            for (const int maskHeight : {1, 2, 4, 9, 10, 23}) {
                if (maskWidth == 1 && maskHeight == 1) continue;
                const BlockSizes sizes = requested({maskWidth, maskHeight}, width);
                const size_t ring = row * static_cast<size_t>(maskHeight), window = 4 * static_cast<size_t>(maskWidth);
                if (level() == px) {
                    EXPECT_EQ(sizes, BlockSizes({ring, window}));
                    continue;
                }
                ASSERT_EQ(sizes.size(), (maskHeight > 1 ? 1u : 0u) + (maskWidth > 5 ? 1u : 0u));
                if (maskHeight > 1) {
                    EXPECT_EQ(sizes[0], ring) << maskWidth << "x" << maskHeight;
                }
            }
        }
    }
}

// At px the first of the two blocks stays where the second is refused.
TEST_P(FilterMaximum, refusedAllocations)
{
    const struct {
        ruxiSize mask;
        int blocks;   // above px
    } calls[] = {{{5, 4}, 1}, {{7, 4}, 2}, {{7, 1}, 1}, {{5, 1}, 0}};
    for (const auto& [mask, blocks] : calls) {
        const Image<uint8_t> src(around(40, 3, mask, {1, 0}), 1), dst(Shape{40, 3}, 2);
        int number = 0;
        forEachRefusal(level() == px ? 2 : blocks, [&, mask = mask](bool refused) {
            const Image<uint8_t> to = dst.clone();
            EXPECT_EQ(call(ruxiFilterMax_8u_C1R, src.data(), src.step(), to.data(), 40, to.roi(), mask,
                           ruxiPoint{1, 0}), refused ? -9 : 0);
            if (refused) {
                EXPECT_TRUE(to.equals(dst));
            }
            EXPECT_EQ(outstandingBlocks(), level() == px && number == 2 ? 1 : 0) << "allocation " << number;
            if (number++ > 0) forgetBlocks();
        });
        forgetBlocks();
    }
}

}
