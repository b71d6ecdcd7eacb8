// Packed 4:2:2 split and join, against the models and the contract's numbers.
#include "colour_images.h"
#include "model/split422.h"
#include "ruxlib.h"

namespace rux::test {

RUX_FAMILY(Split422, "split422");

// With an odd width the packed row need only hold the pairs, and its stride twice the width.
static Image<uint8_t> packedOf(Case& c)
{
    const Shape pairs{c.width / 2, c.height, 4};
    const int step = 2 * c.width + (c.random.oneIn(2) ? 0 : c.random.between(1, 40));
    if (c.random.oneIn(3)) return c.image<uint8_t>(Shape{c.width, c.height, 2});
    return c.image<uint8_t>(pairs.withStep(step));
}

static Planes<uint8_t> pairPlanes(Case& c)
{
    auto luma = c.image<uint8_t>(Shape{c.width, c.height});
    auto cb = c.image<uint8_t>(Shape{c.width / 2, c.height});
    auto cr = c.image<uint8_t>(Shape{c.width / 2, c.height});
    return Planes<uint8_t>(std::move(luma), std::move(cb), std::move(cr));
}

TEST_P(Split422, ruxiSplit422_8u_C2P3R)
{
    sweep(RUX_OPERATION(ruxiSplit422_8u_C2P3R), imageSweep(), [](Case& c, const auto& compare) {
        if (c.width < 2) return;
        const auto src = packedOf(c);
        const auto dst = pairPlanes(c);
        compare(src, src.step(), dst, dst.steps(), c.roi());
    });
}

TEST_P(Split422, ruxiJoin422_8u_P3C2R)
{
    sweep(RUX_OPERATION(ruxiJoin422_8u_P3C2R), imageSweep(), [](Case& c, const auto& compare) {
        if (c.width < 2) return;
        const auto src = pairPlanes(c);
        const auto dst = packedOf(c);
        compare(src, src.steps(), dst, dst.step(), c.roi());
    });
}

// The loops for rows on 16-byte boundaries.
TEST_P(Split422, alignedRows)
{
    for (int width = 2; width < 130; width++) {
        const int step = (2 * width + 15) & ~15;
        const Place start{Edge::start};
        const Image<uint8_t> packed(Shape{width, 3, 2}.withStep(step).at(start), 1);
        const Planes<uint8_t> planes(Image<uint8_t>(Shape{width, 3}.withStep(step).at(start), 2),
                                     Image<uint8_t>(Shape{width, 3}.at(start), 3),
                                     Image<uint8_t>(Shape{width, 3}.at(start), 4));
        agree(RUX_OPERATION(ruxiSplit422_8u_C2P3R), packed, packed.step(), planes, planes.steps(), packed.roi());
        agree(RUX_OPERATION(ruxiJoin422_8u_P3C2R), planes, planes.steps(), packed, packed.step(), packed.roi());
    }
}

TEST_P(Split422, refusesWrongArguments)
{
    const Image<uint8_t> packed(Shape{6, 2, 2}, 1);
    const Planes<uint8_t> planes(Image<uint8_t>(Shape{6, 2}, 2), Image<uint8_t>(Shape{3, 2}, 3),
                                 Image<uint8_t>(Shape{3, 2}, 4));
    refuse(RUX_OPERATION(ruxiSplit422_8u_C2P3R), packed, packed.step(), planes, planes.steps(), packed.roi());
    refuse(RUX_OPERATION(ruxiJoin422_8u_P3C2R), planes, planes.steps(), packed, packed.step(), packed.roi());
}

// Each stride one byte too short, and as short as it may be.
TEST_P(Split422, stridesShorterThanRows)
{
    for (const int width : {2, 4, 5, 17, 0x40000000, 0x7FFFFFFF}) {
        const Image<uint8_t> packed(Shape{64, 1}, 1);
        const Planes<uint8_t> planes(Image<uint8_t>(Shape{20, 1}, 2), Image<uint8_t>(Shape{10, 1}, 3),
                                     Image<uint8_t>(Shape{10, 1}, 4));
        const bool fits = width < 20;
        const ruxiSize size = {width, 1};
        const int32_t packedStep = fits ? 2 * width : 0x7FFFFFFF;
        for (int shorter = fits ? -1 : 0; shorter < 4; shorter++) {
            Steps steps = {{width, width / 2, width / 2}};
            if (shorter >= 0 && shorter < 3) steps.bytes[static_cast<size_t>(shorter)]--;
            const int32_t step = shorter == 3 && fits ? packedStep - 1 : packedStep;
            const bool none = steps.bytes[1] == 0 || steps.bytes[2] == 0;
            const ruxStatus expected = shorter < 0 ? ruxStatusOk : none ? ruxStatusStepError : ruxStatusStrideError;
            EXPECT_EQ(agree(RUX_OPERATION(ruxiSplit422_8u_C2P3R), packed, step, planes, steps, size), expected);
            EXPECT_EQ(agree(RUX_OPERATION(ruxiJoin422_8u_P3C2R), planes, steps, packed, step, size), expected);
        }
    }
}

TEST_P(Split422, oddWidth)
{
    Image<uint8_t> packed(Shape{10, 1}, 1), luma(Shape{5, 1}, 1, constant<uint8_t>(77));
    Image<uint8_t> cb(Shape{2, 1}, 2), cr(Shape{2, 1}, 3);
    uint8_t* planes[3] = {luma.data(), cb.data(), cr.data()};
    const int32_t steps[3] = {5, 2, 2};
    uint8_t* const* const dst = planes;
    const int32_t* const dstSteps = steps;
    EXPECT_EQ(call(ruxiSplit422_8u_C2P3R, packed.data(), 10, dst, dstSteps, ruxiSize{5, 1}), 0);
    for (int x = 0; x < 4; x++) EXPECT_EQ(luma.get(x), packed.get(2 * x));
    EXPECT_EQ(luma.get(4), 77);
    EXPECT_EQ(cr.get(1), packed.get(7));
}

}
