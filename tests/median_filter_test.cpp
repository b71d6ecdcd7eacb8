// Medians of 3 and 5 pixels in a row, of 5 and 9 in a cross.
#include <set>

#include "model/median_filter.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(MedianFilter, "median_filter");

static Shape around(int width, int height, int32_t maskCode)
{
    const int reach = maskCode == 31 || maskCode == 33 ? 1 : 2;
    const bool isCross = maskCode == 33 || maskCode == 55;
    return Shape{width, height}.margins(reach, isCross ? reach : 0, reach, isCross ? reach : 0);
}

static auto medians(int32_t maskCode)
{
    return [=](Case& c, const auto& compare) {
        const auto src = c.image<uint8_t>(around(c.width, c.height, maskCode));
        const auto dst = c.image<uint8_t>();
        compare(src, src.step(), dst, dst.step(), c.roi(), maskCode);
    };
}

TEST_P(MedianFilter, ruxiFilterMedianHoriz_8u_C1R_31)
{
    sweep(RUX_OPERATION(ruxiFilterMedianHoriz_8u_C1R), imageSweep().labelled(":31"), medians(31));
}

TEST_P(MedianFilter, ruxiFilterMedianHoriz_8u_C1R_51)
{
    sweep(RUX_OPERATION(ruxiFilterMedianHoriz_8u_C1R), imageSweep().labelled(":51"), medians(51));
}

TEST_P(MedianFilter, ruxiFilterMedianCross_8u_C1R_33)
{
    sweep(RUX_OPERATION(ruxiFilterMedianCross_8u_C1R), imageSweep().labelled(":33"), medians(33));
}

TEST_P(MedianFilter, ruxiFilterMedianCross_8u_C1R_55)
{
    sweep(RUX_OPERATION(ruxiFilterMedianCross_8u_C1R), imageSweep().labelled(":55"), medians(55));
}

// Calls an action with both operations and both masks of each.
template <class Action>
static void eachMask(const Action& action)
{
    for (const int32_t maskCode : {31, 51}) action(RUX_OPERATION(ruxiFilterMedianHoriz_8u_C1R), maskCode);
    for (const int32_t maskCode : {33, 55}) action(RUX_OPERATION(ruxiFilterMedianCross_8u_C1R), maskCode);
}

// A network that sorts all rows of zeros and ones finds the median of all rows of numbers: every window of two values,
// at every place in the row. Windows of a row have their centres five pixels apart.
TEST_P(MedianFilter, everyWindowOfTwoValues)
{
    eachMask([&](const auto& operation, int32_t maskCode) {
        const int cells = maskCode == 31 ? 3 : maskCode == 55 ? 9 : 5;
        const int reach = maskCode == 31 || maskCode == 33 ? 1 : 2;
        constexpr int width = 131;
        for (int shift = 0; shift < 5; shift++) {
            for (int first = 0; first < 1 << cells; first += width / 5) {
                Image<uint8_t> src(around(width, 1, maskCode), 1);
                for (int x = 2 + shift; x + 2 < width; x += 5) {
                    int bits = first + x / 5;
                    const auto put = [&](int column, int row) {
                        src.set(column, row, bits & 1 ? 200 : 100);
                        bits >>= 1;
                    };
                    for (int i = -reach; i <= reach; i++) put(x + i, 0);
                    if (maskCode != 33 && maskCode != 55) continue;
                    for (int j = 1; j <= reach; j++) put(x, -j), put(x, j);
                }
                const Image<uint8_t> dst(Shape{width, 1}, 2);
                agree(operation, src, src.step(), dst, dst.step(), dst.roi(), maskCode);
                if (this->HasFailure()) return;
            }
        }
    });
}

// Every order of distinct values.
TEST_P(MedianFilter, everyOrderOfFive)
{
    int order[5] = {10, 20, 30, 40, 50};
    do {
        Image<uint8_t> src(around(1, 1, 55), 1);
        const Image<uint8_t> dst(Shape{1, 1}, 2);
        for (int i = 0; i < 5; i++) src.set(i - 2, 0, static_cast<uint8_t>(order[i]));
        EXPECT_EQ(call(ruxiFilterMedianHoriz_8u_C1R, src.data(), src.step(), dst.data(), 1, dst.roi(), 51), 0);
        EXPECT_EQ(dst.get(0), 30);
        src.set(0, -1, src.get(-2, 0)), src.set(0, 1, src.get(2, 0));
        EXPECT_EQ(call(ruxiFilterMedianCross_8u_C1R, src.data(), src.step(), dst.data(), 1, dst.roi(), 33), 0);
        EXPECT_EQ(dst.get(0), 30);
        const int least = std::min({order[1], order[2], order[3]}), most = std::max({order[1], order[2], order[3]});
        EXPECT_EQ(call(ruxiFilterMedianHoriz_8u_C1R, src.data(), src.step(), dst.data(), 1, dst.roi(), 31), 0);
        EXPECT_EQ(dst.get(0), order[1] + order[2] + order[3] - least - most);
    } while (std::next_permutation(order, order + 5));
}

// Source rows at every alignment beside the destination's: vector levels load and store differently by both, and by
// the stride.
TEST_P(MedianFilter, everyAlignment)
{
    eachMask([&](const auto& operation, int32_t maskCode) {
        for (int offset = 0; offset < 256; offset++) {
            for (const int step : {160, 161}) {
                const Place from{Edge::start, offset % 16}, to{Edge::start, offset / 16};
                const Image<uint8_t> src(around(90, 3, maskCode).withStep(step).at(from), 1);
                const Image<uint8_t> dst(Shape{90, 3}.withStep(step).at(to), 2);
                agree(operation, src, src.step(), dst, dst.step(), dst.roi(), maskCode);
            }
            if (this->HasFailure()) return;
        }
    });
}

// One column or one row still has neighbours outside the region.
TEST_P(MedianFilter, readsAroundOnePixel)
{
    Image<uint8_t> src(around(1, 1, 55), 1, constant<uint8_t>(9));
    const Image<uint8_t> dst(Shape{1, 1}, 2);
    src.set(0, 0, 200);
    eachMask([&](const auto& operation, int32_t maskCode) {
        EXPECT_EQ(call(operation.function, src.data(), src.step(), dst.data(), 1, dst.roi(), maskCode), 0);
        EXPECT_EQ(dst.get(0), 9) << maskCode;
    });
}

TEST_P(MedianFilter, constantStays)
{
    const Image<uint8_t> src(around(50, 5, 55), 1, constant<uint8_t>(77)), dst(Shape{50, 5}, 2);
    eachMask([&](const auto& operation, int32_t maskCode) {
        EXPECT_EQ(call(operation.function, src.data(), src.step(), dst.data(), 50, dst.roi(), maskCode), 0);
        for (int i = 0; i < 250; i++) EXPECT_EQ(dst.data()[i], 77) << maskCode << ", pixel " << i;
    });
}

TEST_P(MedianFilter, refusesWrongArguments)
{
    eachMask([&](const auto& operation, int32_t right) {
        const Image<uint8_t> src(around(20, 3, right), 1), dst(Shape{20, 3}, 2);
        std::set<int32_t> wrong = {13, 15, 0, 11, 31, 33, 35, 51, 53, 55, 77, -31, INT32_MAX, INT32_MIN};
        for (const int32_t legal : right == 31 || right == 51 ? std::set<int32_t>{31, 51} : std::set<int32_t>{33, 55}) {
            wrong.erase(legal);
        }
        refuse(operation, src, src.step(), dst, dst.step(), dst.roi(),
               wrongly<int32_t>(right, std::vector<int32_t>(wrong.begin(), wrong.end())));
    });
}

TEST_P(MedianFilter, orderOfStatuses)
{
    const Image<uint8_t> src(around(20, 3, 55), 1), dst(Shape{20, 3}, 2);
    const uint8_t* const none = nullptr;
    eachMask([&](const auto& operation, int32_t maskCode) {
        const int32_t others = maskCode == 31 || maskCode == 51 ? 33 : 31;
        const auto status = [&](const uint8_t* from, int32_t step, ruxiSize roi, int32_t mask) {
            return call(operation.function, from, step, dst.data(), 20, roi, mask);
        };
        EXPECT_EQ(status(none, 0, {0, 3}, 13), -8);
        EXPECT_EQ(status(src.data(), 0, {0, 3}, 13), -6);
        EXPECT_EQ(status(src.data(), 24, {0, 3}, 13), -6);
        EXPECT_EQ(status(src.data(), 0, dst.roi(), 13), -14);
        EXPECT_EQ(status(src.data(), 24, dst.roi(), 13), -33);
        EXPECT_EQ(status(src.data(), 24, dst.roi(), others), -33);
        EXPECT_EQ(status(src.data(), 24, dst.roi(), maskCode), 0);
    });
}

TEST_P(MedianFilter, allocatesNothing)
{
    const Image<uint8_t> src(around(200, 3, 55), 1), dst(Shape{200, 3}, 2);
    eachMask([&](const auto& operation, int32_t maskCode) {
        forEachRefusal(0, [&](bool) {
            EXPECT_EQ(call(operation.function, src.data(), src.step(), dst.data(), 200, dst.roi(), maskCode), 0);
        });
    });
}

}
