// Chroma down-sampling, against the model and the contract's numbers.
#include "model/sample_down.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(SampleDown, "sample_down");

TEST_P(SampleDown, ruxiSampleDownH2V2_JPEG_8u_C1R)
{
    sweep(RUX_OPERATION(ruxiSampleDownH2V2_JPEG_8u_C1R), imageSweep(), [](Case& c, const auto& compare) {
        const auto src = c.image<uint8_t>(Shape{2 * c.width, 2 * c.height});
        const auto dst = c.image<uint8_t>();
        const ruxiSize any = c.random.oneIn(2) ? ruxiSize{1, 1} : src.roi();
        compare(src, src.step(), any, dst, dst.step(), c.roi());
    });
}

TEST_P(SampleDown, refusesWrongArguments)
{
    const Image<uint8_t> src(Shape{6, 4}, 1), dst(Shape{3, 2}, 2);
    refuse(RUX_OPERATION(ruxiSampleDownH2V2_JPEG_8u_C1R), src, src.step(), src.roi(), dst, dst.step(), dst.roi());
}

// Everywhere in a row that is long enough for every kind of step.
TEST_P(SampleDown, meanIsRoundedUp)
{
    struct { uint8_t above[2], below[2]; int mean; } numbers[] = {
        {{255, 255}, {255, 255}, 255}, {{0, 0}, {0, 1}, 1}, {{0, 0}, {0, 0}, 0}, {{0, 1}, {0, 0}, 1},
        {{1, 1}, {1, 1}, 1},           {{4, 0}, {0, 0}, 1}, {{4, 0}, {1, 0}, 2}, {{255, 255}, {255, 254}, 255}};
    for (const auto& number : numbers) {
        for (const int start : {0, 1}) {   // an even address, and an odd one
            Image<uint8_t> src(Shape{140, 2}.at({Edge::start, start}), 1), dst(Shape{70, 1}, 2);
            for (int x = 0; x < 140; x++) {
                src.set(x, 0, number.above[x & 1]);
                src.set(x, 1, number.below[x & 1]);
            }
            ASSERT_EQ(call(ruxiSampleDownH2V2_JPEG_8u_C1R, src.data(), 140, src.roi(), dst.data(), 70, dst.roi()), 0);
            for (int x = 0; x < 70; x++) ASSERT_EQ(dst.get(x), number.mean) << x;
        }
    }
}

}
