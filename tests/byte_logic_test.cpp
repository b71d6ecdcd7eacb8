// Absolute difference and AND of two byte images.
#include "model/byte_logic.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(ByteLogic, "byte_logic");

static void pairs(Case& c, const std::function<void(const Image<uint8_t>&, const Image<uint8_t>&,
                                                    const Image<uint8_t>&)>& compare)
{
    const auto src1 = c.image<uint8_t>();
    const auto dst = c.image<uint8_t>();
    const auto src2 = c.image<uint8_t>();
    compare(src1, src2, dst);
}

TEST_P(ByteLogic, ruxiAbsDiff_8u_C1R)
{
    sweep(RUX_OPERATION(ruxiAbsDiff_8u_C1R), imageSweep(), [](Case& c, const auto& compare) {
        pairs(c, [&](const auto& src1, const auto& src2, const auto& dst) {
            compare(src1, src1.step(), src2, src2.step(), dst, dst.step(), c.roi());
        });
    });
}

TEST_P(ByteLogic, ruxiAnd_8u_C1R)
{
    sweep(RUX_OPERATION(ruxiAnd_8u_C1R), imageSweep(), [](Case& c, const auto& compare) {
        pairs(c, [&](const auto& src1, const auto& src2, const auto& dst) {
            compare(src1, src1.step(), src2, src2.step(), dst, dst.step(), c.roi());
        });
    });
}

// Three images that reach 16-byte boundaries together, and not.
TEST_P(ByteLogic, everyCommonAlignment)
{
    for (int offset = 0; offset < 16; offset++) {
        for (int apart : {0, 1, 8}) {
            for (int width : {1, 15, 16, 17, 31, 47, 64, 100}) {
                const Shape rows = Shape{width, 3}.withStep((width + 31) / 16 * 16);
                const Image<uint8_t> src1(rows.at({Edge::start, offset}), 1);
                const Image<uint8_t> src2(rows.at({Edge::start, (offset + apart) % 16}), 2);
                const Image<uint8_t> dst(rows.at({Edge::start, offset + 16}), 3);
                agree(RUX_OPERATION(ruxiAbsDiff_8u_C1R), src1, rows.step, src2, rows.step, dst, rows.step, dst.roi());
                agree(RUX_OPERATION(ruxiAnd_8u_C1R), src1, rows.step, src2, rows.step, dst, rows.step, dst.roi());
            }
        }
    }
}

TEST_P(ByteLogic, everyPairOfBytes)
{
    const Image<uint8_t> src1(Shape{256, 256}), src2(Shape{256, 256}), dst(Shape{256, 256});
    for (int y = 0; y < 256; y++) {
        for (int x = 0; x < 256; x++) {
            src1.row(y)[x] = static_cast<uint8_t>(x);
            src2.row(y)[x] = static_cast<uint8_t>(y);
        }
    }
    agree(RUX_OPERATION(ruxiAbsDiff_8u_C1R), src1, Step{256}, src2, Step{256}, dst, Step{256}, dst.roi());
    EXPECT_EQ(dst.get(0, 255), 255);
    EXPECT_EQ(dst.get(255, 0), 255);
    agree(RUX_OPERATION(ruxiAnd_8u_C1R), src1, Step{256}, src2, Step{256}, dst, Step{256}, dst.roi());
    EXPECT_EQ(dst.get(0xF3, 0x3C), 0x30);
}

// The result may take the place of a source.
TEST_P(ByteLogic, inPlace)
{
    for (int width : {7, 16, 50, 133}) {
        const Image<uint8_t> first(Shape{width, 3}, 1), second(Shape{width, 3}, 2);
        const auto step = first.step();
        agree(RUX_OPERATION(ruxiAbsDiff_8u_C1R), first, step, second, step, first, step, first.roi());
        agree(RUX_OPERATION(ruxiAbsDiff_8u_C1R), first, step, second, step, second, step, first.roi());
        agree(RUX_OPERATION(ruxiAnd_8u_C1R), first, step, second, step, first, step, first.roi());
        agree(RUX_OPERATION(ruxiAnd_8u_C1R), first, step, second, step, second, step, first.roi());
    }
}

TEST_P(ByteLogic, refusesWrongArguments)
{
    const Image<uint8_t> src1(Shape{19, 3}, 1), src2(Shape{19, 3}, 2), dst(Shape{19, 3}, 3);
    const auto step = dst.step();
    refuse(RUX_OPERATION(ruxiAbsDiff_8u_C1R), src1, step, src2, step, dst, step, dst.roi());
    refuse(RUX_OPERATION(ruxiAnd_8u_C1R), src1, step, src2, step, dst, step, dst.roi());
}

TEST_P(ByteLogic, looksAtStridesBeforeSize)
{
    const Image<uint8_t> image(Shape{8, 1});
    uint8_t* const none = nullptr;
    for (const auto operation : {ruxiAbsDiff_8u_C1R, ruxiAnd_8u_C1R}) {
        EXPECT_EQ(call(operation, image.data(), 8, image.data(), 8, none, 0, image.roi()), -8);
        EXPECT_EQ(call(operation, image.data(), 0, image.data(), 8, image.data(), 8, ruxiSize{0, 1}), -14);
        EXPECT_EQ(call(operation, image.data(), 8, image.data(), 0, image.data(), 8, ruxiSize{0, 1}), -14);
        EXPECT_EQ(call(operation, image.data(), 8, image.data(), 8, image.data(), 0, ruxiSize{0, 1}), -14);
        EXPECT_EQ(call(operation, image.data(), 8, image.data(), 8, image.data(), 8, ruxiSize{0, 1}), -6);
    }
}

}
