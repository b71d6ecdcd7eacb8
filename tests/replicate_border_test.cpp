// Copy into a larger image whose margins repeat the edge.
#include "model/replicate_border.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(ReplicateBorder, "replicate_border");

// No margin, one of a few elements, one of several vector blocks.
static int margin(Random& random, int large)
{
    switch (random.below(4)) {
    case 0: return 0;
    case 1: return random.between(1, 3);
    case 2: return random.between(1, 20);
    default: return random.between(1, large);
    }
}

template <class T>
void borders(Case& c, const std::function<void(const Image<T>&, const Image<T>&, int top, int left)>& compare)
{
    const int top = std::min(margin(c.random, 5), 5), left = margin(c.random, 80);
    const int bottom = std::min(margin(c.random, 5), 5), right = margin(c.random, 80);
    const auto dst = c.image<T>(Shape{left + c.width + right, top + c.height + bottom});
    const auto src = c.image<T>(1, anyBits<T>);
    compare(src, dst, top, left);
}

TEST_P(ReplicateBorder, ruxiCopyReplicateBorder_8u_C1R)
{
    sweep(RUX_OPERATION(ruxiCopyReplicateBorder_8u_C1R), imageSweep(), [](Case& c, const auto& compare) {
        borders<uint8_t>(c, [&](const auto& src, const auto& dst, int top, int left) {
            compare(src, src.step(), src.roi(), dst, dst.step(), dst.roi(), top, left);
        });
    });
}

TEST_P(ReplicateBorder, ruxiCopyReplicateBorder_32s_C1R)
{
    sweep(RUX_OPERATION(ruxiCopyReplicateBorder_32s_C1R), imageSweep(), [](Case& c, const auto& compare) {
        borders<int32_t>(c, [&](const auto& src, const auto& dst, int top, int left) {
            compare(src, src.step(), src.roi(), dst, dst.step(), dst.roi(), top, left);
        });
    });
}

// Every width of a margin at every alignment of its start.
TEST_P(ReplicateBorder, marginsAtEveryAlignment)
{
    for (int offset = 0; offset < 16; offset++) {
        for (int width = 0; width < 50; width++) {
            const Image<uint8_t> src(Shape{5, 1}, 1, anyBits<uint8_t>);
            const Place place{Edge::end, offset};
            const Image<uint8_t> dst(Shape{5 + 2 * width, 1}.at(place), 2);
            agree(RUX_OPERATION(ruxiCopyReplicateBorder_8u_C1R), src, src.step(), src.roi(), dst, dst.step(), dst.roi(),
                  0, width);
            const Image<int32_t> src32(Shape{3, 1}, 3, anyBits<int32_t>), dst32(Shape{3 + 2 * width, 1}.at(place), 4);
            agree(RUX_OPERATION(ruxiCopyReplicateBorder_32s_C1R), src32, src32.step(), src32.roi(), dst32, dst32.step(),
                  dst32.roi(), 0, width);
        }
        if (HasFailure()) return;
    }
}

// A source that already stands in its place in the destination: the border alone is new.
TEST_P(ReplicateBorder, aroundAnImageInItsPlace)
{
    for (int top : {0, 2}) {
        for (int left : {0, 1, 7, 16, 40}) {
            for (int width : {1, 5, 33, 100}) {
                const Image<uint8_t> image(Shape{left + width + 21, top + 7}.at({Edge::start, left}), 1);
                agree(RUX_OPERATION(ruxiCopyReplicateBorder_8u_C1R), elementOf(image, left, top), image.step(),
                      ruxiSize{width, 4}, image, image.step(), image.roi(), top, left);
                const Image<int32_t> wide(Shape{left + width + 21, top + 7}.at({Edge::start, left}), 2);
                agree(RUX_OPERATION(ruxiCopyReplicateBorder_32s_C1R), elementOf(wide, left, top), wide.step(),
                      ruxiSize{width, 4}, wide, wide.step(), wide.roi(), top, left);
            }
        }
    }
}

TEST_P(ReplicateBorder, eachPlaceIsItsNearestSource)
{
    const Image<int32_t> src(Shape{6, 4}, 1, anyBits<int32_t>), dst(Shape{20, 11}, 2);
    EXPECT_EQ(call(ruxiCopyReplicateBorder_32s_C1R, src.data(), src.step(), src.roi(), dst.data(), dst.step(),
                   dst.roi(), 2, 3), 0);
    for (int y = 0; y < 11; y++) {
        for (int x = 0; x < 20; x++) {
            EXPECT_EQ(dst.get(x, y), src.get(std::clamp(x - 3, 0, 5), std::clamp(y - 2, 0, 3))) << x << ", " << y;
        }
    }
}

TEST_P(ReplicateBorder, cornerOfTheDestination)
{
    const Image<uint8_t> src(Shape{9, 3}, 1, anyBits<uint8_t>), dst(Shape{15, 7}, 2, constant(uint8_t(0)));
    EXPECT_EQ(call(ruxiCopyReplicateBorder_8u_C1R, src.data(), src.step(), src.roi(), dst.data(), dst.step(), dst.roi(),
                   2, 3), 0);
    EXPECT_EQ(dst.get(0, 0), src.get(0, 0));
    EXPECT_EQ(dst.get(14, 0), src.get(8, 0));
    EXPECT_EQ(dst.get(0, 6), src.get(0, 2));
    EXPECT_EQ(dst.get(14, 6), src.get(8, 2));
}

TEST_P(ReplicateBorder, withoutBordersItIsACopy)
{
    const Image<uint8_t> src(Shape{77, 5}, 1), dst(Shape{77, 5}, 2);
    EXPECT_EQ(call(ruxiCopyReplicateBorder_8u_C1R, src.data(), src.step(), src.roi(), dst.data(), dst.step(), dst.roi(),
                   0, 0), 0);
    EXPECT_EQ(std::memcmp(dst.data(), src.data(), 77 * 5), 0);
}

TEST_P(ReplicateBorder, destinationTooSmall)
{
    const Image<uint8_t> src(Shape{9, 3}, 1), dst(Shape{15, 7}, 2);
    const auto before = dst.clone();
    const auto status = [&](ruxiSize to, int top, int left) {
        return call(ruxiCopyReplicateBorder_8u_C1R, src.data(), src.step(), src.roi(), dst.data(), dst.step(), to, top,
                    left);
    };
    EXPECT_EQ(status({11, 5}, 2, 3), -6);
    EXPECT_EQ(status({12, 4}, 2, 3), -6);
    EXPECT_EQ(status({15, 7}, INT32_MAX, 0), -6);
    EXPECT_EQ(status({15, 7}, 0, INT32_MAX), -6);
    EXPECT_EQ(status({15, 7}, INT32_MAX - 2, INT32_MAX - 8), -6);
    EXPECT_TRUE(dst.equals(before));
    EXPECT_EQ(status({12, 5}, 2, 3), 0);
}

TEST_P(ReplicateBorder, refusesWrongArguments)
{
    const Image<uint8_t> src(Shape{9, 3}, 1), dst(Shape{15, 7}, 2);
    const Image<int32_t> src32(Shape{9, 3}, 1), dst32(Shape{15, 7}, 2);
    const auto top = wrongly<int32_t>(4, {-1, 5, INT32_MIN, INT32_MAX, INT32_MAX - 2});
    const auto left = wrongly<int32_t>(6, {-1, 7, INT32_MIN, INT32_MAX, INT32_MAX - 8});
    const auto from = wrongly<ruxiSize>({9, 3}, {{0, 3}, {9, 0}, {-1, 3}, {9, -1}, {INT32_MAX, 3}, {9, INT32_MAX}});
    const auto to = wrongly<ruxiSize>({15, 7}, {{0, 7}, {15, 0}, {-1, 7}, {15, INT32_MIN}, {14, 7}, {15, 6}});
    refuse(RUX_OPERATION(ruxiCopyReplicateBorder_8u_C1R), src, src.step(), from, dst, dst.step(), to, top, left);
    refuse(RUX_OPERATION(ruxiCopyReplicateBorder_32s_C1R), src32, src32.step(), from, dst32, dst32.step(), to, top,
           left);
}

TEST_P(ReplicateBorder, looksAtStridesBeforeSizes)
{
    const Image<uint8_t> src(Shape{9, 3}, 1), dst(Shape{15, 7}, 2);
    uint8_t* const none = nullptr;
    EXPECT_EQ(call(ruxiCopyReplicateBorder_8u_C1R, src.data(), 0, ruxiSize{0, 3}, none, 15, dst.roi(), 0, 0), -8);
    EXPECT_EQ(call(ruxiCopyReplicateBorder_8u_C1R, src.data(), 9, ruxiSize{0, 3}, dst.data(), 0, dst.roi(), -1, 0),
              -14);
    EXPECT_EQ(call(ruxiCopyReplicateBorder_8u_C1R, src.data(), 9, ruxiSize{0, 3}, dst.data(), 15, dst.roi(), 0, 0), -6);
}

}
