// Which colour conversions store past the caches: no byte shows it, so the executed instructions are counted.
#include "colour_images.h"
#include "ruxlib.h"
#include "support/levels.h"
#include "support/trace.h"

namespace rux::test {

class ColourStreaming : public LevelTest {
protected:
    static constexpr ruxiSize size{64, 4};

    template <class... Arguments>
    static void expectStores(bool streaming, const Arguments&... arguments)
    {
        Trace trace;
        EXPECT_EQ(call(arguments...), ruxStatusOk);
        if (!trace.works()) GTEST_SKIP() << "no single steps here";
        EXPECT_EQ(trace.streaming8 + trace.streaming16 > 0, streaming);
        if (streaming) {
            EXPECT_EQ(trace.fences, 1) << "one fence, after the last row";
        }
    }

    const Image<uint8_t> interleaved{Shape{size.width, size.height, 2}, 1};
    const Planes<uint8_t> half = planesOfColour(size, 0, 1, 2, 3), quarter = planesOfColour(size, 1, 1, 2, 3);
    const Steps halfSteps = half.steps(), quarterSteps = quarter.steps();
    const Image<uint8_t> rgb{Shape{size.width, size.height, 4}, 2};
};

RUX_AT_EACH_LEVEL(ColourStreaming);

TEST_P(ColourStreaming, ruxiRGBToYCbCr422_8u_C3C2R)
{
    expectStores(level() == a6, ruxiRGBToYCbCr422_8u_C3C2R, rgb.data(), 192, interleaved.data(), 128, size);
}

TEST_P(ColourStreaming, ruxiYCbCr422ToRGB_8u_P3C3R)
{
    expectStores(level() == a6, ruxiYCbCr422ToRGB_8u_P3C3R, half.data(), halfSteps.bytes.data(), rgb.data(), 192, size);
}

TEST_P(ColourStreaming, ruxiYUV422ToRGB_8u_C2C3R)
{
    expectStores(level() == a6, ruxiYUV422ToRGB_8u_C2C3R, interleaved.data(), 128, rgb.data(), 192, size);
}

TEST_P(ColourStreaming, ruxiYUV422ToRGB_8u_P3AC4R)
{
    expectStores(level() == a6, ruxiYUV422ToRGB_8u_P3AC4R, half.data(), halfSteps.bytes.data(), rgb.data(), 256, size);
}

TEST_P(ColourStreaming, ruxiYUV420ToRGB_8u_P3C3)
{
    expectStores(level() == a6, ruxiYUV420ToRGB_8u_P3C3, quarter.data(), rgb.data(), size);
}

TEST_P(ColourStreaming, isNotForTheOthers)
{
    expectStores(false, ruxiYCbCr422ToRGB_8u_C2C3R, interleaved.data(), 128, rgb.data(), 192, size);
    expectStores(false, ruxiYUV422ToRGB_8u_P3C3R, half.data(), halfSteps.bytes.data(), rgb.data(), 192, size);
    expectStores(false, ruxiYCbCr420ToRGB_8u_P3C3R, quarter.data(), quarterSteps.bytes.data(), rgb.data(), 192, size);
    expectStores(false, ruxiRGBToYCbCr420_8u_C3P3R, rgb.data(), 192, quarter.data(), quarterSteps.bytes.data(), size);
}

}
