// Channel order, into another image and in place.
#include "model/swap_channels.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(SwapChannels, "swap_channels");

static Image<int32_t> orderOf(int first, int second, int third)
{
    Image<int32_t> order(vectorOf(3));
    order.set(0, 0, first);
    order.set(1, 0, second);
    order.set(2, 0, third);
    return order;
}

// The reversed order has bodies of its own.
static void orders(Random& random, int32_t* row, int count)
{
    const bool reversed = random.oneIn(4);
    for (int i = 0; i < count; i++) row[i] = reversed ? 2 - i % 3 : random.between(0, 2);
}

TEST_P(SwapChannels, ruxiSwapChannels_8u_C3R)
{
    sweep(RUX_OPERATION(ruxiSwapChannels_8u_C3R), imageSweep(), [](Case& c, const auto& compare) {
        const auto src = c.image<uint8_t>(3, anyBits<uint8_t>);
        const auto dst = c.image<uint8_t>(3);
        const auto order = c.vector<int32_t>(3, orders);
        compare(src, src.step(), dst, dst.step(), c.roi(), order);
    });
}

TEST_P(SwapChannels, ruxiSwapChannels_8u_C3IR)
{
    sweep(RUX_OPERATION(ruxiSwapChannels_8u_C3IR), imageSweep(), [](Case& c, const auto& compare) {
        const auto srcDst = c.image<uint8_t>(3, anyBits<uint8_t>);
        const auto order = c.vector<int32_t>(3, orders);
        compare(srcDst, srcDst.step(), c.roi(), order);
    });
}

TEST_P(SwapChannels, allTwentySevenOrders)
{
    for (int i = 0; i < 27; i++) {
        const auto order = orderOf(i / 9, i / 3 % 3, i % 3);
        const Image<uint8_t> src(Shape{131, 2, 3}, 1, anyBits<uint8_t>), dst(Shape{131, 2, 3}, 2);
        EXPECT_EQ(agree(RUX_OPERATION(ruxiSwapChannels_8u_C3R), src, src.step(), dst, dst.step(), dst.roi(), order), 0);
        EXPECT_EQ(agree(RUX_OPERATION(ruxiSwapChannels_8u_C3IR), src, src.step(), src.roi(), order), 0);
    }
}

TEST_P(SwapChannels, anOrderOfZerosFillsFromTheFirst)
{
    const Image<uint8_t> src(Shape{70, 1, 3}, 1, anyBits<uint8_t>), dst(Shape{70, 1, 3}, 2);
    const auto order = orderOf(0, 0, 0);
    EXPECT_EQ(call(ruxiSwapChannels_8u_C3R, src.data(), src.step(), dst.data(), dst.step(), dst.roi(),
                   order.data()), 0);
    for (int i = 0; i < 210; i++) EXPECT_EQ(dst.get(i), src.get(i / 3 * 3)) << i;
}

TEST_P(SwapChannels, entriesNameSources)
{
    const Image<uint8_t> image(Shape{1, 1, 3}, 1);
    for (int c = 0; c < 3; c++) image.row(0)[c] = static_cast<uint8_t>(10 + c);
    EXPECT_EQ(call(ruxiSwapChannels_8u_C3IR, image.data(), 3, image.roi(), orderOf(1, 2, 0).data()), 0);
    EXPECT_EQ(image.get(0), 11);
    EXPECT_EQ(image.get(1), 12);
    EXPECT_EQ(image.get(2), 10);
}

TEST_P(SwapChannels, inPlaceIdentityAndReversal)
{
    const Image<uint8_t> image(Shape{101, 3, 3}, 1, anyBits<uint8_t>);
    const auto before = image.clone();
    EXPECT_EQ(call(ruxiSwapChannels_8u_C3IR, image.data(), image.step(), image.roi(), orderOf(0, 1, 2).data()), 0);
    EXPECT_TRUE(image.equals(before));
    EXPECT_EQ(call(ruxiSwapChannels_8u_C3IR, image.data(), image.step(), image.roi(), orderOf(2, 1, 0).data()), 0);
    for (int y = 0; y < 3; y++) {
        for (int i = 0; i < 303; i++) EXPECT_EQ(image.get(i, y), before.get(i / 3 * 3 + 2 - i % 3, y));
    }
}

// A stride shorter than a row: rows go from first to last.
TEST_P(SwapChannels, laterRowWinsWhereRowsOverlap)
{
    for (int step : {1, 3, 16, 50, 149}) {
        const auto order = orderOf(2, 0, 1);
        const Image<uint8_t> src(Shape{50, 5, 3}, 1), dst(Shape{50, 5, 3, step}, 2);
        agree(RUX_OPERATION(ruxiSwapChannels_8u_C3R), src, src.step(), dst, dst.step(), dst.roi(), order);
    }
}

TEST_P(SwapChannels, refusesWrongArguments)
{
    const Image<uint8_t> src(Shape{20, 3, 3}, 1), dst(Shape{20, 3, 3}, 2);
    const auto good = orderOf(2, 1, 0);
    refuse(RUX_OPERATION(ruxiSwapChannels_8u_C3R), src, src.step(), dst, dst.step(), dst.roi(), good);
    refuse(RUX_OPERATION(ruxiSwapChannels_8u_C3IR), dst, dst.step(), dst.roi(), good);
    for (int place = 0; place < 3; place++) {
        for (int wrong : {3, -1, 256, INT32_MAX, INT32_MIN}) {
            auto order = good.clone();
            order.set(place, 0, wrong);
            EXPECT_EQ(call(ruxiSwapChannels_8u_C3R, src.data(), 60, dst.data(), 60, dst.roi(), order.data()), -60);
            EXPECT_EQ(call(ruxiSwapChannels_8u_C3IR, dst.data(), 60, dst.roi(), order.data()), -60);
            refuse(RUX_OPERATION(ruxiSwapChannels_8u_C3R), src, src.step(), dst, dst.step(), dst.roi(), order);
            refuse(RUX_OPERATION(ruxiSwapChannels_8u_C3IR), dst, dst.step(), dst.roi(), order);
        }
    }
}

TEST_P(SwapChannels, looksAtSizeThenStrideThenOrder)
{
    const Image<uint8_t> image(Shape{4, 4, 3}, 1);
    const auto wrong = orderOf(0, 3, 1);
    EXPECT_EQ(call(ruxiSwapChannels_8u_C3IR, image.data(), 0, ruxiSize{0, 4}, wrong.data()), -6);
    EXPECT_EQ(call(ruxiSwapChannels_8u_C3IR, image.data(), 0, ruxiSize{4, 4}, wrong.data()), -14);
    EXPECT_EQ(call(ruxiSwapChannels_8u_C3IR, image.data(), 12, ruxiSize{4, 4}, wrong.data()), -60);
}

}
