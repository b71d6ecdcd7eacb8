// The box filter against its model, and the contract's numbers.
#include <vector>

#include "block_requests.h"
#include "model/box.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(Box, "box");

struct Mask {
    ruxiSize size;
    ruxiPoint anchor;
};

static int anchorIn(Random& random, int length)
{
    if (random.oneIn(3)) return random.oneIn(2) ? 0 : length - 1;
    return random.between(0, length - 1);
}

static Mask maskOf(Random& random)
{
    Mask mask = {{3, 3}, {}};
    if (const uint32_t kind = random.below(4); kind > 0) {
        mask.size.width = random.between(2, kind == 3 ? 60 : 7);
        mask.size.height = random.between(2, kind == 3 ? 20 : 7);
    }
    mask.anchor.x = anchorIn(random, mask.size.width);
    mask.anchor.y = anchorIn(random, mask.size.height);
    return mask;
}

// The region with what the windows of so many rows reach around it, and nothing else.
static Shape reached(int width, int height, const Mask& mask, int filteredRows)
{
    const auto [size, anchor] = mask;
    return Shape{width, height}.margins(anchor.x, anchor.y, size.width - 1 - anchor.x,
                                        filteredRows + size.height - 1 - anchor.y - height);
}

static Shape around(int width, int height, const Mask& mask)
{
    return reached(width, height, mask, height);
}

// In place at least 2 * anchor.y + 1 rows are filtered.
static Shape aroundInPlace(int width, int height, const Mask& mask)
{
    return reached(width, height, mask, std::max(height, 2 * mask.anchor.y + 1));
}

// Whether blocks of 8 have a formula of their own in 3x3.
static bool hasBlocks(Level level)
{
    return level == a6 || level == w7;
}

TEST_P(Box, ruxiFilterBox_8u_C1R)
{
    sweep(RUX_OPERATION(ruxiFilterBox_8u_C1R), imageSweep(), [](Case& c, const auto& compare) {
        const Mask mask = maskOf(c.random);
        const auto src = c.image<uint8_t>(around(c.width, c.height, mask));
        const auto dst = c.image<uint8_t>();
        compare(src, src.step(), dst, dst.step(), c.roi(), mask.size, mask.anchor);
    });
}

TEST_P(Box, ruxiFilterBox_8u_C1IR)
{
    sweep(RUX_OPERATION(ruxiFilterBox_8u_C1IR), imageSweep(), [](Case& c, const auto& compare) {
        const Mask mask = maskOf(c.random);
        const auto srcDst = c.image<uint8_t>(aroundInPlace(c.width, c.height, mask));
        compare(srcDst, srcDst.step(), c.roi(), mask.size, mask.anchor);
    });
}

// Every schedule of the ring.
TEST_P(Box, everyHeightOfMaskAnchorAndRegionInPlace)
{
    for (int maskWidth : {2, 3}) {
        for (int maskHeight = 2; maskHeight <= 6; maskHeight++) {
            for (int anchor = 0; anchor < maskHeight; anchor++) {
                for (int height = 1; height <= 14; height++) {
                    const Mask mask = {{maskWidth, maskHeight}, {1, anchor}};
                    const Image<uint8_t> srcDst(aroundInPlace(13, height, mask), 1, anyBits<uint8_t>);
                    agree(RUX_OPERATION(ruxiFilterBox_8u_C1IR), srcDst, srcDst.step(), srcDst.roi(), mask.size,
                          mask.anchor);
                }
            }
        }
        if (HasFailure()) return;
    }
}

// White and any pixels under every area up to 4200, odd ones too, and under the areas whose products wrap or whose
// multiplier has a bit more than the others. Rows a byte apart keep the images small.
TEST_P(Box, everyArea)
{
    std::vector<ruxiSize> masks = {{27, 19}, {41, 25}, {54, 19}, {4096, 2}, {2731, 3}, {91, 91}, {128, 128},
                                   {256, 256}, {257, 256}, {1024, 1024}, {1025, 1024}, {4096, 4096}};
    for (int area = 4; area <= 4200; area++) {
        int height = 2;
        while (height * height < area && area % height != 0) height++;
        if (area % height == 0) masks.push_back({area / height, height});
    }
    for (const ruxiSize mask : masks) {
        const Image<uint8_t> white(vectorOf(mask.width + mask.height + 1), 1, constant<uint8_t>(255));
        const Image<uint8_t> any(vectorOf(mask.width + mask.height + 1), 2, anyBits<uint8_t>), dst(Shape{2, 2}, 3);
        for (const auto* src : {&white, &any}) {
            agree(RUX_OPERATION(ruxiFilterBox_8u_C1R), *src, Step{1}, dst, dst.step(), dst.roi(), mask,
                  ruxiPoint{0, 0});
        }
        if (HasFailure()) return;
    }
}

// Where 2^32 by the area lies right below an integer, px and the others each make of it what they do.
TEST_P(Box, reciprocalsRightBelowIntegers)
{
    for (const ruxiSize mask : {ruxiSize{5574, 6214}, ruxiSize{7568, 18307}}) {
        const Image<uint8_t> src(vectorOf(mask.width + mask.height), 1, anyBits<uint8_t>), dst(Shape{1, 1}, 2);
        agree(RUX_OPERATION(ruxiFilterBox_8u_C1R), src, Step{1}, dst, dst.step(), dst.roi(), mask, ruxiPoint{0, 0});
    }
}

// A wide mask on a wide region: the running sums go over many columns. Sums of white end at 16 bits, or the products
// wrap, within vectors.
TEST_P(Box, wideRegions)
{
    const Mask masks[] = {{{300, 4}, {299, 0}}, {{1000, 2}, {0, 1}}, {{2, 200}, {1, 100}}, {{128, 2}, {0, 0}},
                          {{51, 5}, {9, 2}},    {{16, 16}, {0, 3}},  {{86, 3}, {0, 0}},    {{129, 2}, {3, 0}},
                          {{91, 90}, {0, 0}},   {{91, 91}, {0, 1}}};
    for (const Mask& mask : masks) {
        for (const int width : {500, 507, 512}) {
            const Fill<uint8_t> fill = width == 500 ? constant<uint8_t>(255) : Fill<uint8_t>(anyBits<uint8_t>);
            const Image<uint8_t> src(around(width, 5, mask), 1, fill), dst(Shape{width, 5}, 2);
            const Image<uint8_t> srcDst(aroundInPlace(width, 5, mask), 3, fill);
            agree(RUX_OPERATION(ruxiFilterBox_8u_C1R), src, src.step(), dst, dst.step(), dst.roi(), mask.size,
                  mask.anchor);
            agree(RUX_OPERATION(ruxiFilterBox_8u_C1IR), srcDst, srcDst.step(), srcDst.roi(), mask.size, mask.anchor);
        }
    }
}

// Wrapping products on rows of several vectors, at strides of a byte.
TEST_P(Box, hugeMasksOnWideRegions)
{
    for (const ruxiSize mask : {ruxiSize{300, 200}, ruxiSize{2048, 513}, ruxiSize{1024, 2048}}) {
        const Image<uint8_t> src(vectorOf(70 + mask.width + mask.height), 1, anyBits<uint8_t>), dst(Shape{70, 1}, 2);
        agree(RUX_OPERATION(ruxiFilterBox_8u_C1R), src, Step{1}, dst, dst.step(), dst.roi(), mask, ruxiPoint{0, 0});
    }
}

// The pixels of one window, whose sum is given.
static void setSum(Image<uint8_t>& window, ruxiSize mask, int sum)
{
    for (int i = 0; i < mask.width * mask.height; i++) {
        const int part = std::min(sum, 255);
        window.set(i % mask.width, i / mask.width, static_cast<uint8_t>(part));
        sum -= part;
    }
}

TEST_P(Box, multipliersAndShifts)
{
    const struct {
        ruxiSize mask;
        int multiplier, shift, w7Multiplier, w7Shift;
    } areas[] = {{{2, 2}, 128, 9, 2048, 13},  {{3, 2}, 171, 10, 2730, 14}, {{3, 3}, 228, 11, 3640, 15},
                 {{4, 4}, 128, 11, 2048, 15}, {{5, 5}, 164, 12, 2621, 16}, {{7, 7}, 167, 13, 2674, 17}};
    for (const auto& area : areas) {
        const int count = area.mask.width * area.mask.height;
        if (count == 9 && hasBlocks(level())) continue;
        const int multiplier = level() == w7 ? area.w7Multiplier : area.multiplier;
        const int shift = level() == w7 ? area.w7Shift : area.shift;
        Image<uint8_t> src(Shape{area.mask.width, area.mask.height}, 1);
        const Image<uint8_t> dst(Shape{1, 1}, 2);
        for (int sum = 0; sum <= 255 * count; sum++) {
            setSum(src, area.mask, sum);
            EXPECT_EQ(call(ruxiFilterBox_8u_C1R, src.data(), src.step(), dst.data(), 1, dst.roi(), area.mask,
                           ruxiPoint{0, 0}), 0);
            EXPECT_EQ(dst.get(0), sum * multiplier >> shift) << "area " << count << ", sum " << sum;
            if (HasFailure()) return;
        }
    }
}

// Each of the three formulas for nine pixels, at every sum, by operation, level and place in the row.
TEST_P(Box, everySumOfNine)
{
    for (int sum = 0; sum <= 2295; sum++) {
        Image<uint8_t> window(Shape{3, 3}, 1);
        setSum(window, {3, 3}, sum);
        Image<uint8_t> src(aroundInPlace(24, 1, {{3, 3}, {1, 1}}), 2, constant<uint8_t>(0));
        for (const int x : {2, 20}) {   // in a block whatever the width, behind the last block of 23 pixels
            for (int i = 0; i < 9; i++) src.set(x - 1 + i % 3, i / 3 - 1, window.get(i % 3, i / 3));
        }
        const Image<uint8_t> dst(Shape{23, 1}, 3);
        EXPECT_EQ(call(ruxiFilterBox_8u_C1R, src.data(), src.step(), dst.data(), 23, dst.roi(), ruxiSize{3, 3},
                       ruxiPoint{1, 1}), 0);
        EXPECT_EQ(call(ruxiFilterBox_8u_C1IR, src.data(), src.step(), dst.roi(), ruxiSize{3, 3}, ruxiPoint{1, 1}), 0);
        const int block = ((sum * 29127 >> 16) + 2) >> 2, rest = sum * 455 >> 12, general = sum * 228 >> 11;
        EXPECT_EQ(dst.get(2), hasBlocks(level()) ? block : general) << sum;
        EXPECT_EQ(dst.get(20), hasBlocks(level()) ? rest : general) << sum;
        EXPECT_EQ(src.get(2, 0), hasBlocks(level()) ? block : rest) << sum;
        EXPECT_EQ(src.get(20, 0), rest) << sum;
        if (HasFailure()) return;
    }
}

TEST_P(Box, whiteUnderThreeByThree)
{
    const Mask mask = {{3, 3}, {1, 1}};
    const Image<uint8_t> src(around(13, 4, mask), 1, constant<uint8_t>(255)), dst(Shape{13, 4}, 2);
    EXPECT_EQ(call(ruxiFilterBox_8u_C1R, src.data(), src.step(), dst.data(), 13, dst.roi(), mask.size, mask.anchor), 0);
    const Image<uint8_t> srcDst = src.clone();
    EXPECT_EQ(call(ruxiFilterBox_8u_C1IR, srcDst.data(), src.step(), src.roi(), mask.size, mask.anchor), 0);
    for (int y = 0; y < 4; y++) {
        for (int x = 0; x < 13; x++) {
            EXPECT_EQ(dst.get(x, y), hasBlocks(level()) && x >= 8 ? 254 : 255) << x << ", " << y;
            EXPECT_EQ(srcDst.get(x, y), hasBlocks(level()) && x < 8 ? 255 : 254) << x << ", " << y;
        }
    }
}

TEST_P(Box, whiteUnderFiveByFive)
{
    const Mask mask = {{5, 5}, {2, 2}};
    const Image<uint8_t> src(around(21, 4, mask), 1, constant<uint8_t>(255)), dst(Shape{21, 4}, 2);
    EXPECT_EQ(call(ruxiFilterBox_8u_C1R, src.data(), src.step(), dst.data(), 21, dst.roi(), mask.size, mask.anchor), 0);
    for (int i = 0; i < 84; i++) EXPECT_EQ(dst.data()[i], level() == w7 ? 254 : 255) << i;
}

// One image under both anchors: the output moves by a pixel and a row, and only the matching side is read.
TEST_P(Box, anchorMovesTheOutput)
{
    const Mask upperLeft = {{2, 2}, {0, 0}}, lowerRight = {{2, 2}, {1, 1}};
    for (const Edge edge : {Edge::start, Edge::end}) {
        const Place place{edge, Place::touching};
        const Image<uint8_t> first(around(30, 6, upperLeft).at(place), 1, anyBits<uint8_t>);
        Image<uint8_t> second(around(30, 6, lowerRight).at(place), 2);
        for (int y = 0; y < 7; y++) {
            for (int x = 0; x < 31; x++) second.set(x - 1, y - 1, first.get(x, y));
        }
        const Image<uint8_t> dst1(Shape{30, 6}, 3), dst2(Shape{30, 6}, 4);
        EXPECT_EQ(call(ruxiFilterBox_8u_C1R, first.data(), 31, dst1.data(), 30, dst1.roi(), upperLeft.size,
                       upperLeft.anchor), 0);
        EXPECT_EQ(call(ruxiFilterBox_8u_C1R, second.data(), 31, dst2.data(), 30, dst2.roi(), lowerRight.size,
                       lowerRight.anchor), 0);
        EXPECT_EQ(std::memcmp(dst1.data(), dst2.data(), 180), 0);
        EXPECT_EQ(dst1.get(3, 2), (first.get(3, 2) + first.get(4, 2) + first.get(3, 3) + first.get(4, 3)) / 4);
    }
}

TEST_P(Box, inPlaceAsElsewhere)
{
    for (const Mask& mask : {Mask{{2, 2}, {1, 1}}, Mask{{5, 7}, {2, 3}}, Mask{{9, 4}, {8, 0}}, Mask{{3, 3}, {1, 1}}}) {
        if (mask.size.width == 3 && !hasBlocks(level())) continue;   // another formula
        const Image<uint8_t> src(around(45, 19, mask), 1, anyBits<uint8_t>), dst(Shape{45, 19}, 2);
        EXPECT_EQ(call(ruxiFilterBox_8u_C1R, src.data(), src.step(), dst.data(), 45, dst.roi(), mask.size,
                       mask.anchor), 0);
        EXPECT_EQ(call(ruxiFilterBox_8u_C1IR, src.data(), src.step(), dst.roi(), mask.size, mask.anchor), 0);
        for (int y = 0; y < 19; y++) EXPECT_EQ(std::memcmp(src.row(y), dst.row(y), 45), 0) << "row " << y;
    }
}

// A region two rows higher than the anchor: the column sums are never updated.
TEST_P(Box, twoRowsAboveTheAnchorRepeatTheFirst)
{
    for (int anchor = 0; anchor < 5; anchor++) {
        const Mask mask = {{4, 5}, {2, anchor}};
        const int height = anchor + 2;
        const Image<uint8_t> image(aroundInPlace(20, height, mask), 1, anyBits<uint8_t>), dst(Shape{20, 1}, 2);
        EXPECT_EQ(call(ruxiFilterBox_8u_C1R, image.data(), image.step(), dst.data(), 20, dst.roi(), mask.size,
                       mask.anchor), 0);
        EXPECT_EQ(call(ruxiFilterBox_8u_C1IR, image.data(), image.step(), image.roi(), mask.size, mask.anchor), 0);
        for (int y = 0; y < height; y++) EXPECT_EQ(std::memcmp(image.row(y), dst.data(), 20), 0) << "row " << y;
    }
}

TEST_P(Box, lowRegionsWriteTheRowsBelow)
{
    for (const int maskWidth : {3, 4}) {
        const Mask mask = {{maskWidth, maskWidth}, {1, 2}};
        const Image<uint8_t> image(aroundInPlace(20, 1, mask), 1, anyBits<uint8_t>), dst(Shape{20, 3}, 2);
        const Image<uint8_t> before = image.clone(), higher = image.clone();
        EXPECT_EQ(call(ruxiFilterBox_8u_C1IR, image.data(), image.step(), ruxiSize{20, 1}, mask.size, mask.anchor), 0);
        EXPECT_EQ(call(ruxiFilterBox_8u_C1IR, higher.data(), image.step(), ruxiSize{20, 3}, mask.size, mask.anchor),
                  0);
        EXPECT_TRUE(image.equals(higher)) << "a region of one row is not done as one of three";
        for (int y = 0; y < 3; y++) EXPECT_NE(std::memcmp(image.row(y), before.row(y), 20), 0) << "row " << y;
        EXPECT_EQ(std::memcmp(image.row(3), before.row(3), 20), 0);
    }
}

TEST_P(Box, refusesWrongArguments)
{
    const Image<uint8_t> src(around(20, 3, {{3, 4}, {1, 2}}), 1), dst(Shape{20, 3}, 2);
    const Image<uint8_t> srcDst(aroundInPlace(20, 3, {{3, 4}, {1, 2}}), 3);
    const auto mask = wrongly<ruxiSize>({3, 4}, {{1, 4}, {3, 1}, {0, 4}, {3, -1}, {1, 1}, {INT32_MIN, INT32_MIN}});
    const auto anchor = wrongly<ruxiPoint>({1, 2}, {{3, 2}, {1, 4}, {-1, 2}, {1, -1}, {INT32_MAX, 2}, {1, INT32_MIN}});
    refuse(RUX_OPERATION(ruxiFilterBox_8u_C1R), src, src.step(), dst, dst.step(), dst.roi(), mask, anchor);
    refuse(RUX_OPERATION(ruxiFilterBox_8u_C1IR), srcDst, srcDst.step(), srcDst.roi(), mask, anchor);
}

TEST_P(Box, orderOfStatuses)
{
    const Image<uint8_t> src(around(20, 3, {{3, 3}, {1, 1}}), 1), dst(Shape{20, 3}, 2);
    uint8_t* const none = nullptr;
    const auto status = [&](const uint8_t* from, int32_t step, ruxiSize roi, ruxiSize mask, ruxiPoint anchor) {
        uint8_t* const srcDst = from ? src.data() : none;
        const ruxStatus inPlace = call(ruxiFilterBox_8u_C1IR, srcDst, step, roi, mask, anchor);
        EXPECT_EQ(call(ruxiFilterBox_8u_C1R, from, step, dst.data(), 20, roi, mask, anchor), inPlace);
        return inPlace;
    };
    EXPECT_EQ(status(none, 0, {0, 0}, {1, 3}, {-1, 0}), -8);
    EXPECT_EQ(status(src.data(), 0, {0, 0}, {1, 3}, {-1, 0}), -14);
    EXPECT_EQ(status(src.data(), 22, {20, 0}, {1, 3}, {-1, 0}), -6);
    EXPECT_EQ(status(src.data(), 22, {20, 3}, {1, 3}, {-1, 0}), -33);
    EXPECT_EQ(status(src.data(), 22, {20, 3}, {3, 1}, {0, 0}), -33);
    EXPECT_EQ(status(src.data(), 22, {20, 3}, {3, 3}, {3, 0}), -34);
    EXPECT_EQ(status(src.data(), 22, {20, 3}, {3, 3}, {1, 1}), 0);
}

TEST_P(Box, workMemory)
{
    const Mask general = {{4, 5}, {2, 3}}, nine = {{3, 3}, {1, 1}};
    const auto requested = [](const Mask& mask, bool inPlace) {
        const Image<uint8_t> src(aroundInPlace(20, 6, mask), 1), dst(Shape{20, 6}, 2);
        const BlockRequests requests;
        EXPECT_EQ(inPlace ? call(ruxiFilterBox_8u_C1IR, src.data(), src.step(), dst.roi(), mask.size, mask.anchor)
                          : call(ruxiFilterBox_8u_C1R, src.data(), src.step(), dst.data(), 20, dst.roi(), mask.size,
                                 mask.anchor), 0);
        return requests.sizes;
    };
    EXPECT_EQ(requested(general, false), BlockSizes({4 * (4 + 20 + 2)}));
    EXPECT_EQ(requested(nine, false), hasBlocks(level()) ? BlockSizes() : BlockSizes({4 * (3 + 20 + 2)}));
    EXPECT_EQ(requested(general, true), BlockSizes({4 * (4 + 20 + 2), 4 * sizeof(void*), 4 * 20}));
    EXPECT_EQ(requested(nine, true), BlockSizes({2 * sizeof(void*), 2 * 20}));
}

TEST_P(Box, refusedAllocations)
{
    const Mask general = {{4, 5}, {2, 3}}, nine = {{3, 3}, {1, 1}};
    for (const Mask& mask : {general, nine}) {
        const bool isNine = mask.size.width == 3;
        const Image<uint8_t> src(aroundInPlace(20, 6, mask), 1), dst(Shape{20, 6}, 2);
        const Image<uint8_t> before = src.clone(), dstBefore = dst.clone();
        forEachRefusal(isNine && hasBlocks(level()) ? 0 : 1, [&](bool refused) {
            const Image<uint8_t> to = dst.clone();
            EXPECT_EQ(call(ruxiFilterBox_8u_C1R, src.data(), src.step(), to.data(), 20, to.roi(), mask.size,
                           mask.anchor), refused ? -9 : 0);
            if (refused) {
                EXPECT_TRUE(to.equals(dstBefore));
            }
        });
        int number = 0;
        forEachRefusal(isNine ? 2 : 3, [&](bool refused) {
            const Image<uint8_t> image = before.clone();
            EXPECT_EQ(call(ruxiFilterBox_8u_C1IR, image.data(), image.step(), ruxiSize{20, 6}, mask.size, mask.anchor),
                      refused ? -9 : 0);
            if (refused) {
                EXPECT_TRUE(image.equals(before));
            }
            // The table of pointers stays where the ring of a 3x3 mask is refused.
            EXPECT_EQ(outstandingBlocks(), isNine && number == 2 ? 1 : 0) << "allocation " << number;
            if (number++ > 0) forgetBlocks();
        });
        forgetBlocks();
    }
}

TEST_P(Box, bearsEveryHostState)
{
    const Mask mask = {{7, 6}, {2, 3}};
    const Image<uint8_t> src(around(40, 3, mask), 1), dst(Shape{40, 3}, 2), srcDst(aroundInPlace(40, 3, mask), 3);
    for (const HostState& state : hostStates()) {
        agreeUnder(state, RUX_OPERATION(ruxiFilterBox_8u_C1R), src, src.step(), dst, dst.step(), dst.roi(), mask.size,
                   mask.anchor);
        agreeUnder(state, RUX_OPERATION(ruxiFilterBox_8u_C1IR), srcDst, srcDst.step(), srcDst.roi(), mask.size,
                   mask.anchor);
    }
}

// The reciprocals of powers of two are exact, and what lies half below them is rounded to them in every mode.
TEST_P(Box, roundsReciprocalsToNearest)
{
    for (const ruxiSize mask : {ruxiSize{4, 4}, ruxiSize{4096, 4096}}) {
        const Image<uint8_t> src(vectorOf(8 + mask.width + mask.height), 1, anyBits<uint8_t>), dst(Shape{8, 1}, 2);
        for (const Rounding rounding : {Rounding::down, Rounding::up, Rounding::zero}) {
            agreeUnder(HostState().x87Rounding(rounding).vectorRounding(rounding), RUX_OPERATION(ruxiFilterBox_8u_C1R),
                       src, Step{1}, dst, dst.step(), dst.roi(), mask, ruxiPoint{0, 0});
        }
    }
}

}
