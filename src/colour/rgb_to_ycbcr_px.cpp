// RGB to YCbCr, pixel by pixel.
#include "colour/rows_px.h"
#include "colour/rgb_to_ycbcr.h"

namespace rux::px {
namespace {

void rowPairTo420(RgbRows src, Planes420 dst, size_t pixels)
{
    for (size_t x = 0; x < pixels; x += 2, src = src.at(2), dst = dst.at(2)) {
        const RgbSum upperLeft = pixelAt(src.upper);
        const RgbSum upperRight = pixelAt(src.upper + 3);
        const RgbSum lowerLeft = pixelAt(src.lower);
        const RgbSum lowerRight = pixelAt(src.lower + 3);
        dst.luma[0] = component(roundedLuma, upperLeft);
        dst.luma[1] = component(roundedLuma, upperRight);
        dst.lowerLuma[0] = component(roundedLuma, lowerLeft);
        dst.lowerLuma[1] = component(roundedLuma, lowerRight);
        const RgbSum block = upperLeft + upperRight + lowerLeft + lowerRight;
        dst.cb[0] = component(cbOfBlock, block);
        dst.cr[0] = component(crOfBlock, block);
    }
}

void rowTo422(const uint8_t* src, uint8_t* dst, size_t width)
{
    for (; width >= 2; width -= 2, src += 6, dst += 4) pairTo422(roundedLuma, src, dst);
    if (width != 0) loneTo422(roundedLuma, cbOfOne, src, dst);
}

}
}
