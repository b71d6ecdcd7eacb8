// Peers of the colour conversions, where they are installed. A macro gives a peer's name and work, or nothing.
#pragma once

#include "colour_picture.h"

#ifdef RUX_WITH_LIBYUV
#include <libyuv.h>

// `function` takes planes and strides in the order of its arguments: source, destination, width, height.
#define RUX_LIBYUV(from, to, ...)                                                                          \
    "libyuv", conversion(Layout::from, Layout::to, [](const Picture& source, const Picture& destination) { \
        rux::bench::callLibyuv(__VA_ARGS__, source, destination);                                          \
    })

namespace rux::bench {

inline void callLibyuv(int (*planarToPacked)(const uint8_t*, int, const uint8_t*, int, const uint8_t*, int, uint8_t*,
                                             int, int, int),
                       const Picture& source, const Picture& destination)
{
    planarToPacked(source.planes()[0], source.steps()[0], source.planes()[1], source.steps()[1], source.planes()[2],
                   source.steps()[2], destination.planes()[0], destination.steps()[0], source.size().width,
                   source.size().height);
}

inline void callLibyuv(int (*packedToPlanar)(const uint8_t*, int, uint8_t*, int, uint8_t*, int, uint8_t*, int, int,
                                             int),
                       const Picture& source, const Picture& destination)
{
    packedToPlanar(source.planes()[0], source.steps()[0], destination.planes()[0], destination.steps()[0],
                   destination.planes()[1], destination.steps()[1], destination.planes()[2], destination.steps()[2],
                   source.size().width, source.size().height);
}

}
#else
#define RUX_LIBYUV(from, to, ...) "", nullptr
#endif

#ifdef RUX_WITH_SWSCALE
extern "C" {
#include <libavutil/log.h>
#include <libswscale/swscale.h>
}

namespace rux::bench {

// To RGB a chroma sample is repeated, as here; from RGB it is a mean over its pixels.
inline MakeWork swscaleWork(Layout from, AVPixelFormat source, Layout to, AVPixelFormat destination)
{
    const bool toRgb = to == Layout::rgb24 || to == Layout::rgb32 || to == Layout::rgb16;
    return [=](Size size) {
        av_log_set_level(AV_LOG_ERROR);   // no warnings of the full-range formats
        const std::shared_ptr<SwsContext> context(
            sws_getContext(size.width, size.height, source, size.width, size.height, destination,
                           toRgb ? SWS_POINT : SWS_BILINEAR, nullptr, nullptr, nullptr),
            sws_freeContext);
        return conversion(from, to, [=](const Picture& a, const Picture& b) {
            sws_scale(context.get(), a.planes(), a.steps(), 0, a.size().height, b.planes(), b.steps());
        })(size);
    };
}

}
#define RUX_SWSCALE(from, source, to, destination) \
    "swscale", swscaleWork(Layout::from, AV_PIX_FMT_##source, Layout::to, AV_PIX_FMT_##destination)
#else
#define RUX_SWSCALE(from, source, to, destination) "", nullptr
#endif

#ifdef RUX_WITH_OPENCV
#include "peers.h"

namespace rux::bench {

// OpenCV's planes of 4:2:0 stand one below the other in one image of one channel. Rows and channels of both sides are
// given in halves of the picture's height, and in bytes a pixel.
inline MakeWork opencvColour(int sourceHalves, int sourceChannels, int destinationHalves, int destinationChannels,
                             int code)
{
    return [=](Size size) {
        const Size from = {size.width, size.height * sourceHalves / 2};
        const Size to = {size.width, size.height * destinationHalves / 2};
        const Image<uint8_t> source(from, sourceChannels), destination(to, destinationChannels);
        return Work{source.bytes() + destination.bytes(), [=] {
                        cv::Mat result = matrixOf(destination, to, destinationChannels);
                        cv::cvtColor(matrixOf(source, from, sourceChannels), result, code);
                    }};
    };
}

}
#define RUX_OPENCV(...) "opencv", opencvColour(__VA_ARGS__)
#else
#define RUX_OPENCV(...) "", nullptr
#endif
