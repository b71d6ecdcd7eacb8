// The rounded means of 3x3 and 5x5 pixels.
#include "block_requests.h"
#include "model/lowpass.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(Lowpass, "lowpass");

static Shape around(int width, int height, int32_t maskCode)
{
    const int reach = maskCode == 33 ? 1 : 2;
    return Shape{width, height}.margins(reach, reach, reach, reach);
}

static auto means(int32_t maskCode)
{
    return [=](Case& c, const auto& compare) {
        const auto src = c.image<uint8_t>(around(c.width, c.height, maskCode));
        const auto dst = c.image<uint8_t>();
        compare(src, src.step(), dst, dst.step(), c.roi(), maskCode);
    };
}

TEST_P(Lowpass, ruxiFilterLowpass_8u_C1R_33)
{
    sweep(RUX_OPERATION(ruxiFilterLowpass_8u_C1R), imageSweep().labelled(":33"), means(33));
}

TEST_P(Lowpass, ruxiFilterLowpass_8u_C1R_55)
{
    sweep(RUX_OPERATION(ruxiFilterLowpass_8u_C1R), imageSweep().labelled(":55"), means(55));
}

// Windows side by side, each with the next sum.
TEST_P(Lowpass, everySum)
{
    for (const int32_t maskCode : {33, 55}) {
        const int side = maskCode / 10, reach = side / 2, area = side * side;
        const int width = 67, perCall = width / side;
        for (int first = 0; first <= 255 * area; first += perCall) {
            Image<uint8_t> src(around(width, 1, maskCode), 1, constant<uint8_t>(0));
            for (int k = 0; k < perCall; k++) {
                int sum = std::min(first + k, 255 * area);
                for (int i = 0; i < area; i++) {
                    const int part = std::min(sum, 255);
                    src.set(k * side + i % side, i / side - reach, static_cast<uint8_t>(part));
                    sum -= part;
                }
            }
            const Image<uint8_t> dst(Shape{width, 1}, 2);
            EXPECT_EQ(call(ruxiFilterLowpass_8u_C1R, src.data(), src.step(), dst.data(), width, dst.roi(), maskCode),
                      0);
            for (int k = 0; k < perCall; k++) {
                const int sum = std::min(first + k, 255 * area);
                int mean = (sum + 13) * 10485 >> 18;
                if (maskCode == 33) mean = level() == px ? (sum + 5) * 455 >> 12 : (sum + 5) * 7281 >> 16;
                EXPECT_EQ(dst.get(k * side + reach), mean) << maskCode << ", sum " << sum;
            }
            if (HasFailure()) return;
        }
    }
}

TEST_P(Lowpass, whiteStaysWhite)
{
    for (const int32_t maskCode : {33, 55}) {
        for (const int width : {1, 7, 40}) {
            const Image<uint8_t> src(around(width, 3, maskCode), 1, constant<uint8_t>(255)), dst(Shape{width, 3}, 2);
            EXPECT_EQ(call(ruxiFilterLowpass_8u_C1R, src.data(), src.step(), dst.data(), width, dst.roi(), maskCode),
                      0);
            for (int i = 0; i < 3 * width; i++) EXPECT_EQ(dst.data()[i], 255) << maskCode << ", pixel " << i;
        }
    }
}

// Tall enough for every rotation of the row buffers.
TEST_P(Lowpass, tallRegions)
{
    for (const int32_t maskCode : {33, 55}) {
        for (int height = 1; height <= 40; height++) {
            const Image<uint8_t> src(around(21, height, maskCode), 1, anyBits<uint8_t>), dst(Shape{21, height}, 2);
            agree(RUX_OPERATION(ruxiFilterLowpass_8u_C1R), src, src.step(), dst, dst.step(), dst.roi(), maskCode);
        }
    }
}

TEST_P(Lowpass, refusesWrongArguments)
{
    for (const int32_t right : {33, 55}) {
        const Image<uint8_t> src(around(20, 3, right), 1), dst(Shape{20, 3}, 2);
        const auto maskCode = wrongly<int32_t>(right, {0, 3, 5, 13, 15, 31, 51, 35, 53, 77, -33, INT32_MAX, INT32_MIN});
        refuse(RUX_OPERATION(ruxiFilterLowpass_8u_C1R), src, src.step(), dst, dst.step(), dst.roi(), maskCode);
    }
}

TEST_P(Lowpass, orderOfStatuses)
{
    const Image<uint8_t> src(around(20, 3, 33), 1), dst(Shape{20, 3}, 2);
    const uint8_t* const none = nullptr;
    EXPECT_EQ(call(ruxiFilterLowpass_8u_C1R, none, 0, dst.data(), 20, ruxiSize{0, 3}, 31), -8);
    EXPECT_EQ(call(ruxiFilterLowpass_8u_C1R, src.data(), 0, dst.data(), 20, ruxiSize{0, 3}, 31), -6);
    EXPECT_EQ(call(ruxiFilterLowpass_8u_C1R, src.data(), 0, dst.data(), 20, dst.roi(), 31), -14);
    EXPECT_EQ(call(ruxiFilterLowpass_8u_C1R, src.data(), 22, dst.data(), 0, dst.roi(), 31), -14);
    EXPECT_EQ(call(ruxiFilterLowpass_8u_C1R, src.data(), 22, dst.data(), 20, dst.roi(), 31), -33);
    EXPECT_EQ(call(ruxiFilterLowpass_8u_C1R, src.data(), 22, dst.data(), 20, dst.roi(), 33), 0);
}

// At px a row of sums for each row of the mask and one of their sums, in one piece; at the other levels a row of 16-bit
// sums of columns, of whole sixteens.
TEST_P(Lowpass, workMemory)
{
    for (const size_t side : {3, 5}) {
        for (const size_t width : {1, 12, 13, 14, 15, 40}) {
            const int32_t maskCode = static_cast<int32_t>(11 * side);
            const Image<uint8_t> src(around(static_cast<int>(width), 3, maskCode), 1);
            const Image<uint8_t> dst(Shape{static_cast<int>(width), 3}, 2);
            const BlockRequests requests;
            EXPECT_EQ(call(ruxiFilterLowpass_8u_C1R, src.data(), src.step(), dst.data(), dst.step(), dst.roi(),
                           maskCode), 0);
            const size_t columns = (width + side - 1 + 15) / 16 * 16;
            EXPECT_EQ(requests.sizes, BlockSizes{level() == px ? (side + 1) * width * 4 : columns * 2}) << width;
        }
    }
}

TEST_P(Lowpass, refusedAllocation)
{
    for (const int32_t maskCode : {33, 55}) {
        const Image<uint8_t> src(around(40, 3, maskCode), 1), dst(Shape{40, 3}, 2);
        forEachRefusal(1, [&](bool refused) {
            const Image<uint8_t> to = dst.clone();
            EXPECT_EQ(call(ruxiFilterLowpass_8u_C1R, src.data(), src.step(), to.data(), 40, to.roi(), maskCode),
                      refused ? -9 : 0);
            if (refused) {
                EXPECT_TRUE(to.equals(dst));
            }
        });
    }
}

}
