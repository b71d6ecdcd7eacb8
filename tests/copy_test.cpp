// Copy against its model at each level, and what the contract says of it in particular.
#include "model/copy.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(Copy, "copy");

// The five plain copies have one shape: pixels of so many elements of one type.
template <class T>
auto copies(int channels)
{
    return [=](Case& c, const auto& compare) {
        const auto src = c.image<T>(channels);
        const auto dst = c.image<T>(channels);
        compare(src, src.step(), dst, dst.step(), c.roi());
    };
}

TEST_P(Copy, ruxiCopy_8u_C1R)
{
    sweep(RUX_OPERATION(ruxiCopy_8u_C1R), imageSweep(), copies<uint8_t>(1));
}

TEST_P(Copy, ruxiCopy_8u_C3R)
{
    sweep(RUX_OPERATION(ruxiCopy_8u_C3R), imageSweep(), copies<uint8_t>(3));
}

TEST_P(Copy, ruxiCopy_8u_C4R)
{
    sweep(RUX_OPERATION(ruxiCopy_8u_C4R), imageSweep(), copies<uint8_t>(4));
}

TEST_P(Copy, ruxiCopy_16s_C1R)
{
    sweep(RUX_OPERATION(ruxiCopy_16s_C1R), imageSweep(), copies<int16_t>(1));
}

TEST_P(Copy, ruxiCopy_32f_C1R)
{
    sweep(RUX_OPERATION(ruxiCopy_32f_C1R), imageSweep(), copies<float>(1));
}

// Runs of zero, of one non-zero value and of mixed mask bytes, so that every kind of block of 16 comes up.
void maskBytes(Random& random, uint8_t* row, int count)
{
    for (int i = 0; i < count;) {
        const int end = std::min(count, i + random.between(1, 40));
        const uint32_t kind = random.below(4);
        for (; i < end; i++) {
            row[i] = kind == 0 ? 0 : kind == 1 ? 255 : kind == 2 ? random.below(2) : random.below(3) * 127;
        }
    }
}

TEST_P(Copy, ruxiCopy_8u_C1MR)
{
    sweep(RUX_OPERATION(ruxiCopy_8u_C1MR), imageSweep(), [](Case& c, const auto& compare) {
        const auto dst = c.image<uint8_t>();
        const auto mask = c.image<uint8_t>(1, maskBytes);
        const auto src = c.image<uint8_t>();
        compare(src, src.step(), dst, dst.step(), c.roi(), mask, mask.step());
    });
}

// A destination that ends with the last pixel's third byte: its fourth may be nobody's.
TEST_P(Copy, ruxiCopy_8u_C3AC4R)
{
    sweep(RUX_OPERATION(ruxiCopy_8u_C3AC4R), imageSweep(), [](Case& c, const auto& compare) {
        const auto src = c.image<uint8_t>(3);
        const auto dst = c.image<uint8_t>(Shape{4 * c.width - 1, c.height});
        const auto gapped = c.image<uint8_t>(4);
        if (c.height == 1) compare(src, src.step(), dst, dst.step(), c.roi());
        compare(src, src.step(), gapped, gapped.step(), c.roi());
    });
}

TEST_P(Copy, everyMaskValueButZeroSelects)
{
    const Image<uint8_t> src(Shape{256, 1}, 1);
    const Image<uint8_t> dst(Shape{256, 1}, 2);
    Image<uint8_t> mask(Shape{256, 1}, 3);
    for (int i = 0; i < 256; i++) mask.set(i, 0, static_cast<uint8_t>(i));
    const auto before = dst.clone();
    EXPECT_EQ(call(::ruxiCopy_8u_C1MR, src.data(), src.step(), dst.data(), dst.step(), dst.roi(), mask.data(),
                   mask.step()), ruxStatusOk);
    EXPECT_EQ(dst.get(0), before.get(0));
    for (int i = 1; i < 256; i++) EXPECT_EQ(dst.get(i), src.get(i)) << "mask byte " << i;
}

TEST_P(Copy, keepsTheFourthByte)
{
    const Image<uint8_t> src(Shape{2, 1, 3}, 1, constant<uint8_t>(7));
    const Image<uint8_t> dst(Shape{2, 1, 4}, 2, constant<uint8_t>(9));
    EXPECT_EQ(call(::ruxiCopy_8u_C3AC4R, src.data(), src.step(), dst.data(), dst.step(), dst.roi()), ruxStatusOk);
    for (int i = 0; i < 8; i++) EXPECT_EQ(dst.get(i), i % 4 == 3 ? 9 : 7) << "byte " << i;
}

TEST_P(Copy, movesFloatsAsBits)
{
    Image<float> src(Shape{70, 2}, 1, extremes<float>);
    const Image<float> dst(Shape{70, 2}, 2);
    EXPECT_EQ(call(::ruxiCopy_32f_C1R, src.data(), src.step(), dst.data(), dst.step(), dst.roi()), ruxStatusOk);
    EXPECT_EQ(std::memcmp(dst.data(), src.data(), 2 * src.rowBytes()), 0);
}

// A width of 1 and strides of 1 make an image of one run.
TEST_P(Copy, mergesColumnOfOneByte)
{
    for (int height : {1, 63, 64, 65, 1000}) {
        const Image<uint8_t> src(Shape{1, height}, 1), dst(Shape{1, height}, 2);
        agree(RUX_OPERATION(ruxiCopy_8u_C1R), src, Step{1}, dst, Step{1}, ruxiSize{1, height});
    }
}

// Rows overlap where a stride is shorter than a row; the later row wins.
TEST_P(Copy, laterRowWinsWhereRowsOverlap)
{
    for (int width : {2, 17, 64, 65, 130, 200}) {
        for (int step : {1, 3, 8, 16, 63, width / 2, width - 1}) {
            if (step >= width) continue;
            const Image<uint8_t> src(Shape{width, 9}, 1);
            const Image<uint8_t> sameStep(Shape{width, 9, 1, step}, 4);
            const Image<uint8_t> dst(Shape{width, 9, 1, step}, 2);
            const Image<int16_t> src16(Shape{width, 9}, 3), dst16(Shape{width, 9, 1, step}, 5);
            const Image<uint8_t> mask(Shape{width, 9, 1, step}, 6, maskBytes);
            agree(RUX_OPERATION(ruxiCopy_8u_C1R), src, src.step(), dst, dst.step(), dst.roi());
            agree(RUX_OPERATION(ruxiCopy_8u_C1R), sameStep, sameStep.step(), dst, dst.step(), dst.roi());
            agree(RUX_OPERATION(ruxiCopy_16s_C1R), src16, src16.step(), dst16, dst16.step(), dst16.roi());
            agree(RUX_OPERATION(ruxiCopy_8u_C1MR), src, src.step(), dst, dst.step(), dst.roi(), mask, mask.step());
        }
    }
}

// A stride of as many bytes as the row has elements is shorter than the row: such rows are no contiguous run.
TEST_P(Copy, tellsElementsFromBytes)
{
    const Image<int16_t> src16(Shape{70, 5, 1, 70}, 1), dst16(Shape{70, 5, 1, 70}, 2);
    const Image<float> src32(Shape{70, 5, 1, 70}, 3), dst32(Shape{70, 5, 1, 70}, 4);
    const Image<uint8_t> src8(Shape{70, 5, 3, 70}, 5), dst8(Shape{70, 5, 3, 70}, 6);
    agree(RUX_OPERATION(ruxiCopy_16s_C1R), src16, src16.step(), dst16, dst16.step(), dst16.roi());
    agree(RUX_OPERATION(ruxiCopy_32f_C1R), src32, src32.step(), dst32, dst32.step(), dst32.roi());
    agree(RUX_OPERATION(ruxiCopy_8u_C3R), src8, src8.step(), dst8, dst8.step(), dst8.roi());
}

TEST_P(Copy, refusesWrongArguments)
{
    const Image<uint8_t> src(Shape{20, 3, 3}, 1), dst(Shape{20, 3, 4}, 2), mask(Shape{20, 3}, 3);
    const Image<int16_t> src16(Shape{20, 3}, 4), dst16(Shape{20, 3}, 5);
    const Image<float> src32(Shape{20, 3}, 6), dst32(Shape{20, 3}, 7);
    refuse(RUX_OPERATION(ruxiCopy_8u_C1R), src, src.step(), dst, dst.step(), mask.roi());
    refuse(RUX_OPERATION(ruxiCopy_8u_C3R), src, src.step(), dst, dst.step(), mask.roi());
    refuse(RUX_OPERATION(ruxiCopy_8u_C4R), dst, dst.step(), dst.clone(), dst.step(), dst.roi());
    refuse(RUX_OPERATION(ruxiCopy_16s_C1R), src16, src16.step(), dst16, dst16.step(), dst16.roi());
    refuse(RUX_OPERATION(ruxiCopy_32f_C1R), src32, src32.step(), dst32, dst32.step(), dst32.roi());
    refuse(RUX_OPERATION(ruxiCopy_8u_C3AC4R), src, src.step(), dst, dst.step(), dst.roi());
    refuse(RUX_OPERATION(ruxiCopy_8u_C1MR), src, src.step(), dst, dst.step(), mask.roi(), mask, mask.step());
}

TEST_P(Copy, looksAtPointersThenSizeThenStrides)
{
    const Image<uint8_t> src(Shape{4, 4}, 1), dst(Shape{4, 4}, 2);
    uint8_t* const none = nullptr;
    EXPECT_EQ(call(::ruxiCopy_8u_C1R, src.data(), 4, dst.data(), 4, ruxiSize{0, 4}), -6);
    EXPECT_EQ(call(::ruxiCopy_8u_C1R, src.data(), 4, dst.data(), 4, ruxiSize{4, 0}), -6);
    EXPECT_EQ(call(::ruxiCopy_8u_C1R, none, 4, dst.data(), 4, ruxiSize{0, 4}), -8);
    EXPECT_EQ(call(::ruxiCopy_8u_C1R, src.data(), 0, dst.data(), 4, ruxiSize{4, 4}), -14);
    EXPECT_EQ(call(::ruxiCopy_8u_C1R, src.data(), 0, dst.data(), 4, ruxiSize{4, 0}), -6);
    EXPECT_EQ(call(::ruxiCopy_8u_C1MR, src.data(), 4, dst.data(), 4, ruxiSize{4, 4}, src.data(), 0), -14);
    EXPECT_EQ(call(::ruxiCopy_8u_C1MR, src.data(), 4, dst.data(), 4, ruxiSize{4, 4}, none, 4), -8);
}

TEST_P(Copy, bearsEveryHostState)
{
    const Image<float> src(Shape{50, 3}, 1, extremes<float>), dst(Shape{50, 3}, 2);
    for (const HostState& state : hostStates()) {
        agreeUnder(state, RUX_OPERATION(ruxiCopy_32f_C1R), src, src.step(), dst, dst.step(), dst.roi());
    }
}

}
