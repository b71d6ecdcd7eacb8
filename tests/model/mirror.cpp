#include "model/mirror.h"

#include <utility>

namespace rux::model {
namespace {

// Pixels of `pixel` bytes, of which the first `moved` change places.
ruxStatus mirror(void* srcDst, int32_t step, int pixel, int moved, ruxiSize size, ruxAxis flip)
{
    if (!srcDst) return ruxStatusNullPointer;
    if (step < 1) return ruxStatusStepError;
    if (size.width < 1 || size.height < 1) return ruxStatusSizeError;
    if (flip < ruxAxsHorizontal || flip > ruxAxsBoth) return ruxStatusFlipMode;

    const auto exchange = [&](int x, int y, int otherX, int otherY) {
        auto* const image = static_cast<uint8_t*>(srcDst);
        for (int byte = 0; byte < moved; byte++) {
            std::swap(*at(image, step, x * pixel + byte, y), *at(image, step, otherX * pixel + byte, otherY));
        }
    };
    const int lastX = size.width - 1, lastY = size.height - 1;
    const auto reverse = [&](int y) {
        for (int x = 0; x < size.width / 2; x++) exchange(x, y, lastX - x, y);
    };
    if (flip == ruxAxsVertical) {
        for (int y = 0; y < size.height; y++) reverse(y);
        return ruxStatusOk;
    }
    for (int y = 0; y < size.height / 2; y++) {
        for (int x = 0; x < size.width; x++) exchange(x, y, flip == ruxAxsBoth ? lastX - x : x, lastY - y);
    }
    if (flip == ruxAxsBoth && size.height % 2 == 1) reverse(size.height / 2);
    return ruxStatusOk;
}

}

ruxStatus ruxiMirror_8u_C3IR(Level, uint8_t* srcDst, int32_t srcDstStep, ruxiSize roiSize, ruxAxis flip)
{
    return mirror(srcDst, srcDstStep, 3, 3, roiSize, flip);
}

ruxStatus ruxiMirror_8u_AC4IR(Level, uint8_t* srcDst, int32_t srcDstStep, ruxiSize roiSize, ruxAxis flip)
{
    return mirror(srcDst, srcDstStep, 4, 3, roiSize, flip);
}

ruxStatus ruxiMirror_16u_C1IR(Level, uint16_t* srcDst, int32_t srcDstStep, ruxiSize roiSize, ruxAxis flip)
{
    return mirror(srcDst, srcDstStep, 2, 2, roiSize, flip);
}

}
