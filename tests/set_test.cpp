// Fill against its model at each level, and what the contract says of it in particular.
#include "model/copy.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(Set, "set");

TEST_P(Set, ruxiSet_8u_C1R)
{
    sweep(RUX_OPERATION(ruxiSet_8u_C1R), imageSweep(), [](Case& c, const auto& compare) {
        const auto dst = c.image<uint8_t>();
        compare(c.random.between(0, 255), dst, dst.step(), c.roi());
    });
}

TEST_P(Set, ruxiSet_16s_C1R)
{
    sweep(RUX_OPERATION(ruxiSet_16s_C1R), imageSweep(), [](Case& c, const auto& compare) {
        const auto dst = c.image<int16_t>();
        compare(c.random.between(-32768, 32767), dst, dst.step(), c.roi());
    });
}

TEST_P(Set, ruxiSet_32f_C1R)
{
    sweep(RUX_OPERATION(ruxiSet_32f_C1R), imageSweep(), [](Case& c, const auto& compare) {
        const auto dst = c.image<float>();
        compare(FloatBits{static_cast<uint32_t>(c.random.next())}, dst, dst.step(), c.roi());
    });
}

// One byte of each pixel: the channels before the first and behind the last may be nobody's.
TEST_P(Set, ruxiSet_8u_C4CR)
{
    sweep(RUX_OPERATION(ruxiSet_8u_C4CR), imageSweep(), [](Case& c, const auto& compare) {
        const auto least = c.image<uint8_t>(Shape{4 * c.width - 3, c.height});
        const auto whole = c.image<uint8_t>(4);
        const int value = c.random.between(0, 255);
        if (c.height == 1) compare(value, least, least.step(), c.roi());
        compare(value, elementOf(whole, c.random.between(0, 3)), whole.step(), c.roi());
    });
}

TEST_P(Set, keepsTheBitsOfNaN)
{
    for (int width : {1, 15, 16, 70, 1000}) {
        const Image<float> dst(Shape{width, 2}, 1);
        EXPECT_EQ(call(::ruxiSet_32f_C1R, FloatBits{0x7FA12345}, dst.data(), dst.step(), dst.roi()), ruxStatusOk);
        for (int i = 0; i < width; i++) {
            uint32_t bits;
            std::memcpy(&bits, dst.row(1) + 4 * i, sizeof bits);
            EXPECT_EQ(bits, 0x7FA12345u) << i;
        }
    }
}

TEST_P(Set, writesOneByteOfOnePixel)
{
    const Image<uint8_t> dst(Shape{1, 1, 4}, 1, constant<uint8_t>(9));
    EXPECT_EQ(call(::ruxiSet_8u_C4CR, 7, dst.data() + 2, dst.step(), dst.roi()), ruxStatusOk);
    for (int i = 0; i < 4; i++) EXPECT_EQ(dst.get(i), i == 2 ? 7 : 9) << "channel " << i;
}

TEST_P(Set, mergesColumnOfOneByte)
{
    for (int height : {1, 63, 64, 65, 1000}) {
        const Image<uint8_t> dst(Shape{1, height}, 1);
        agree(RUX_OPERATION(ruxiSet_8u_C1R), 200, dst, Step{1}, ruxiSize{1, height});
    }
}

// Wide elements at odd addresses and odd strides keep the pattern's phase; overlapping rows are filled in order.
TEST_P(Set, keepsItsPhaseWhereRowsOverlap)
{
    for (int width : {40, 65, 200}) {
        for (int step : {1, 3, 7, 64, 75, width}) {
            const Image<int16_t> dst16(Shape{width, 7, 1, step}, 1);
            const Image<float> dst32(Shape{width, 7, 1, step}, 2);
            const Image<uint8_t> dst8(Shape{width, 7, 1, step}, 3);
            agree(RUX_OPERATION(ruxiSet_16s_C1R), 0x1234, dst16, dst16.step(), dst16.roi());
            agree(RUX_OPERATION(ruxiSet_32f_C1R), FloatBits{0x12345678}, dst32, dst32.step(), dst32.roi());
            agree(RUX_OPERATION(ruxiSet_8u_C1R), 5, dst8, dst8.step(), dst8.roi());
        }
    }
}

TEST_P(Set, refusesWrongArguments)
{
    const Image<uint8_t> dst8(Shape{20, 3, 4}, 1);
    const Image<int16_t> dst16(Shape{20, 3}, 2);
    const Image<float> dst32(Shape{20, 3}, 3);
    refuse(RUX_OPERATION(ruxiSet_8u_C1R), 5, dst8, dst8.step(), dst8.roi());
    refuse(RUX_OPERATION(ruxiSet_16s_C1R), -5, dst16, dst16.step(), dst16.roi());
    refuse(RUX_OPERATION(ruxiSet_32f_C1R), FloatBits{0x7FA00000}, dst32, dst32.step(), dst32.roi());
    refuse(RUX_OPERATION(ruxiSet_8u_C4CR), 5, dst8, dst8.step(), dst8.roi());
}

TEST_P(Set, looksAtThePointerThenSizeThenStride)
{
    const Image<uint8_t> dst(Shape{4, 4}, 2);
    uint8_t* const none = nullptr;
    EXPECT_EQ(call(::ruxiSet_8u_C1R, 1, none, 0, ruxiSize{0, 4}), -8);
    EXPECT_EQ(call(::ruxiSet_8u_C1R, 1, dst.data(), 0, ruxiSize{0, 4}), -6);
    EXPECT_EQ(call(::ruxiSet_8u_C1R, 1, dst.data(), 0, ruxiSize{4, 4}), -14);
}

TEST_P(Set, bearsEveryHostState)
{
    const Image<float> dst(Shape{50, 3}, 2);
    for (const HostState& state : hostStates()) {
        for (uint32_t bits : {0x7FA00000u, 0x00000001u, 0x3F800001u}) {
            agreeUnder(state, RUX_OPERATION(ruxiSet_32f_C1R), FloatBits{bits}, dst, dst.step(), dst.roi());
        }
    }
}

}
