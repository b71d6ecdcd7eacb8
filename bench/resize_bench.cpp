// Resize at factors of 2, 2/3 and 1/2; a place's size is the source's. Area means are for reductions alone.
// At 1/2 OpenCV's linear is its area mean of four pixels, which are weighed alike there.
#include "bench.h"
#include "image.h"
#include "peers.h"
#include "ruxlib.h"

#ifdef RUX_WITH_SWSCALE
extern "C" {
#include <libswscale/swscale.h>
}
#endif

namespace rux::bench {
namespace {

struct Factor {
    const char* name;
    double value;
};

struct Mode {
    const char* name;
    ruxInterpolation interpolation;
    int opencv;
    int swscale;
};

#ifdef RUX_WITH_SWSCALE
constexpr int point = SWS_POINT, bilinear = SWS_BILINEAR, bicubic = SWS_BICUBIC, mean = SWS_AREA;
#else
constexpr int point = 0, bilinear = 0, bicubic = 0, mean = 0;
#endif

#ifdef RUX_WITH_OPENCV
constexpr int nearest = cv::INTER_NEAREST, linear = cv::INTER_LINEAR, cubic = cv::INTER_CUBIC, area = cv::INTER_AREA;
constexpr const char* peer = "opencv";
#else
constexpr int nearest = 0, linear = 0, cubic = 0, area = 0;
constexpr const char* peer = "";
#endif

constexpr Factor factors[] = {{"x2", 2}, {"x2/3", 2.0 / 3}, {"x1/2", 0.5}};
constexpr Mode modes[] = {{"nearest", ruxInterpolationNearest, nearest, point},
                          {"linear", ruxInterpolationLinear, linear, bilinear},
                          {"cubic", ruxInterpolationCubic, cubic, bicubic},
                          {"area", ruxInterpolationSuperSample, area, mean}};

Size scaled(Size size, double factor)
{
    return {static_cast<int32_t>(size.width * factor + 1e-7), static_cast<int32_t>(size.height * factor + 1e-7)};
}

MakeWork resizing(double factor, ruxInterpolation interpolation)
{
    return [=](Size size) {
        const Size result = scaled(size, factor);
        const Image<uint8_t> source(size), destination(result);
        return Work{source.bytes() + destination.bytes(), [=] {
                        ruxiResize_8u_C1R(source.data(), {size.width, size.height}, source.step(),
                                          {0, 0, size.width, size.height}, destination.data(), destination.step(),
                                          {result.width, result.height}, factor, factor, interpolation);
                    }};
    };
}

MakeWork peerResizing([[maybe_unused]] double factor, [[maybe_unused]] int mode)
{
#ifdef RUX_WITH_OPENCV
    return [=](Size size) {
        const Size result = scaled(size, factor);
        const Image<uint8_t> source(size), destination(result);
        return Work{source.bytes() + destination.bytes(), [=] {
                        const cv::Mat from = matrixOf(source, size);
                        cv::Mat to = matrixOf(destination, result);
                        cv::resize(from, to, to.size(), 0, 0, mode);
                    }};
    };
#else
    return nullptr;
#endif
}

#ifdef RUX_WITH_SWSCALE
MakeWork swscaleResizing(double factor, int mode)
{
    return [=](Size size) {
        const Size result = scaled(size, factor);
        const Image<uint8_t> source(size), destination(result);
        const std::shared_ptr<SwsContext> context(
            sws_getContext(size.width, size.height, AV_PIX_FMT_GRAY8, result.width, result.height, AV_PIX_FMT_GRAY8,
                           mode, nullptr, nullptr, nullptr),
            sws_freeContext);
        return Work{source.bytes() + destination.bytes(), [=] {
                        const uint8_t* const from[4] = {source.data()};
                        uint8_t* const to[4] = {destination.data()};
                        const int fromStep[4] = {source.step()}, toStep[4] = {destination.step()};
                        sws_scale(context.get(), from, fromStep, 0, size.height, to, toStep);
                    }};
    };
}
#endif

}

void addResize(Cases& cases)
{
    for (const Mode& mode : modes)
        for (const Factor& factor : factors) {
            if (mode.interpolation == ruxInterpolationSuperSample && factor.value >= 1) continue;
            cases.push_back({std::string("ruxiResize_8u_C1R ") + mode.name + " " + factor.name,
                             resizing(factor.value, mode.interpolation), peer,
                             peerResizing(factor.value, mode.opencv)});
#ifdef RUX_WITH_SWSCALE
            cases.push_back({std::string("ruxiResize_8u_C1R ") + mode.name + " " + factor.name,
                             resizing(factor.value, mode.interpolation), "swscale",
                             swscaleResizing(factor.value, mode.swscale)});
#endif
        }
}

}
