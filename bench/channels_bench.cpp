// Channel order, mirror and border.
#include "bench.h"
#include "image.h"
#include "opencv_work.h"
#include "ruxlib.h"

namespace rux::bench {
namespace {

ruxiSize roi(Size size)
{
    return {size.width, size.height};
}

MakeWork swap(int32_t first, int32_t second, int32_t third)
{
    return [=](Size size) {
        const Image<uint8_t> src(size, 3), dst(size, 3);
        return Work{2 * src.bytes(), [=] {
                        const int32_t order[3] = {first, second, third};
                        ruxiSwapChannels_8u_C3R(src.data(), src.step(), dst.data(), dst.step(), roi(size), order);
                    }};
    };
}

Work swapInPlace(Size size)
{
    const Image<uint8_t> image(size, 3);
    return {2 * image.bytes(), [=] {
                const int32_t order[3] = {2, 1, 0};
                ruxiSwapChannels_8u_C3IR(image.data(), image.step(), roi(size), order);
            }};
}

template <typename Element, typename Operation>
MakeWork mirror(Operation operation, int32_t channels, ruxAxis axis)
{
    return [=](Size size) {
        const Image<Element> image(size, channels);
        return Work{2 * image.bytes(), [=] { operation(image.data(), image.step(), roi(size), axis); }};
    };
}

template <typename Element, typename Operation>
MakeWork border(Operation operation)
{
    return [=](Size size) {
        const Image<Element> src(size), dst({size.width + 16, size.height + 16});
        return Work{src.bytes() + dst.bytes(), [=] {
                        operation(src.data(), src.step(), roi(size), dst.data(), dst.step(),
                                  {size.width + 16, size.height + 16}, 8, 8);
                    }};
    };
}

#ifdef RUX_WITH_OPENCV
template <typename Element>
MakeWork opencvFlip(int32_t channels, int code)
{
    return opencvWork<Element, uint8_t, uint8_t>(channels, [=](const cv::Mat& a, const cv::Mat&, cv::Mat&) {
        cv::Mat image = a;
        cv::flip(image, image, code);
    });
}
const auto reorder = [](const cv::Mat& a, const cv::Mat&, cv::Mat& c) { cv::cvtColor(a, c, cv::COLOR_RGB2BGR); };
const auto pad = [](const cv::Mat& a, const cv::Mat&, cv::Mat&) {
    static thread_local cv::Mat padded;
    cv::copyMakeBorder(a, padded, 8, 8, 8, 8, cv::BORDER_REPLICATE);
};
#define RUX_FLIP(Element, channels, code) "opencv", opencvFlip<Element>(channels, code)
#else
#define RUX_FLIP(Element, channels, code) "", nullptr
#endif

}

void addChannels(Cases& cases)
{
    cases.push_back({"ruxiSwapChannels_8u_C3R 2,1,0", swap(2, 1, 0), RUX_PEER(uint8_t, uint8_t, uint8_t, 3, reorder)});
    cases.push_back({"ruxiSwapChannels_8u_C3R 1,2,0", swap(1, 2, 0), "", nullptr});
    cases.push_back({"ruxiSwapChannels_8u_C3IR 2,1,0", swapInPlace, RUX_PEER(uint8_t, uint8_t, uint8_t, 3, reorder)});
#define RUX_MIRROR(name, Element, channels, axis, code) \
    cases.push_back({#name " " #axis, mirror<Element>(name, channels, axis), RUX_FLIP(Element, channels, code)});
#define RUX_MIRRORS(name, Element, channels)                      \
    RUX_MIRROR(name, Element, channels, ruxAxsHorizontal, 0)      \
    RUX_MIRROR(name, Element, channels, ruxAxsVertical, 1)        \
    RUX_MIRROR(name, Element, channels, ruxAxsBoth, -1)
    RUX_MIRRORS(ruxiMirror_8u_C3IR, uint8_t, 3)
    RUX_MIRRORS(ruxiMirror_8u_AC4IR, uint8_t, 4)
    RUX_MIRRORS(ruxiMirror_16u_C1IR, uint16_t, 1)
    cases.push_back({"ruxiCopyReplicateBorder_8u_C1R", border<uint8_t>(ruxiCopyReplicateBorder_8u_C1R), RUX_PEER(uint8_t, uint8_t, uint8_t, 1, pad)});
    cases.push_back({"ruxiCopyReplicateBorder_32s_C1R", border<int32_t>(ruxiCopyReplicateBorder_32s_C1R), RUX_PEER(int32_t, uint8_t, uint8_t, 1, pad)});
}

}
