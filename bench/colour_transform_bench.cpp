// Packed 4:2:2 split and join, HLS, the colour twist, bit-depth reduction.
//
// OpenCV's HLS is interleaved; libswscale's error diffusion writes 8 bits a pixel, of 8, 8 and 4 levels.
#include "bench.h"
#include "colour_peers.h"

#ifdef RUX_WITH_SWSCALE
extern "C" {
#include <libavutil/opt.h>
}
#endif

namespace rux::bench {
namespace {

#ifdef RUX_WITH_OPENCV
template <typename Function>
MakeWork opencvPixels(Function function)
{
    return [=](Size size) {
        const Image<uint8_t> source(size, 3), destination(size, 3);
        return Work{source.bytes() + destination.bytes(), [=] {
                        cv::Mat result = matrixOf(destination, size, 3);
                        function(matrixOf(source, size, 3), result);
                    }};
    };
}
#define RUX_PIXEL_PEER(...) \
    "opencv", opencvPixels([=](const cv::Mat& from, cv::Mat& to) { __VA_ARGS__; })
#else
#define RUX_PIXEL_PEER(...) "", nullptr
#endif

void addPacked422(Cases& cases)
{
    cases.push_back({"ruxiSplit422_8u_C2P3R",
                     conversion(Layout::packed422, Layout::planar422,
                                [](const Picture& from, const Picture& to) {
                                    ruxiSplit422_8u_C2P3R(from.planes()[0], from.steps()[0], to.planes(), to.steps(),
                                                          from.size());
                                }),
                     RUX_LIBYUV(packed422, planar422, libyuv::YUY2ToI422)});
    cases.push_back({"ruxiJoin422_8u_P3C2R",
                     conversion(Layout::planar422, Layout::packed422,
                                [](const Picture& from, const Picture& to) {
                                    ruxiJoin422_8u_P3C2R(from.planes(), from.steps(), to.planes()[0], to.steps()[0],
                                                         from.size());
                                }),
                     RUX_LIBYUV(planar422, packed422, libyuv::I422ToYUY2)});
}

void addHls(Cases& cases)
{
    const MakeWork make = [](Size size) {
        const Image<uint8_t> h(size), l(size), s(size), bgr(size, 3);
        return Work{2 * bgr.bytes(), [=] {
                        const uint8_t* const planes[3] = {h.data(), l.data(), s.data()};
                        ruxiHLSToBGR_8u_P3C3R(planes, h.step(), bgr.data(), bgr.step(), {size.width, size.height});
                    }};
    };
    cases.push_back({"ruxiHLSToBGR_8u_P3C3R", make, RUX_PIXEL_PEER(cv::cvtColor(from, to, cv::COLOR_HLS2BGR_FULL))});
}

constexpr float sepia[12] = {0.393f, 0.769f, 0.189f, 4, 0.349f, 0.686f, 0.168f, 2, 0.272f, 0.534f, 0.131f, -3};

void addTwist(Cases& cases)
{
    const MakeWork make = conversion(Layout::rgb24, Layout::rgb24, [](const Picture& from, const Picture& to) {
        ruxiColorTwist32f_8u_C3R(from.planes()[0], from.steps()[0], to.planes()[0], to.steps()[0], from.size(), sepia);
    });
#ifdef RUX_WITH_OPENCV
    const cv::Mat matrix = cv::Mat(3, 4, CV_32F, const_cast<float*>(sepia)).clone();
#endif
    cases.push_back({"ruxiColorTwist32f_8u_C3R", make, RUX_PIXEL_PEER(cv::transform(from, to, matrix))});
}

#ifdef RUX_WITH_SWSCALE
Work diffuseWithSwscale(Size size, const char* dither)
{
    const std::shared_ptr<SwsContext> context(sws_alloc_context(), sws_freeContext);
    av_opt_set_int(context.get(), "srcw", size.width, 0);
    av_opt_set_int(context.get(), "srch", size.height, 0);
    av_opt_set_int(context.get(), "dstw", size.width, 0);
    av_opt_set_int(context.get(), "dsth", size.height, 0);
    av_opt_set_int(context.get(), "src_format", AV_PIX_FMT_RGB24, 0);
    av_opt_set_int(context.get(), "dst_format", AV_PIX_FMT_RGB8, 0);
    av_opt_set(context.get(), "sws_dither", dither, 0);
    if (sws_init_context(context.get(), nullptr, nullptr) < 0) return {0, nullptr};
    const Image<uint8_t> source(size, 3), destination(size, 1);
    return {2 * source.bytes(), [=] {
                const uint8_t* const from[4] = {source.data()};
                uint8_t* const to[4] = {destination.data()};
                const int fromStep[4] = {source.step()}, toStep[4] = {destination.step()};
                sws_scale(context.get(), from, fromStep, 0, size.height, to, toStep);
            }};
}
#endif

MakeWork reducing(ruxDitherType type, int32_t noise)
{
    return conversion(Layout::rgb24, Layout::rgb24, [=](const Picture& from, const Picture& to) {
        ruxiReduceBits_8u_C3R(from.planes()[0], from.steps()[0], to.planes()[0], to.steps()[0], from.size(), noise, type,
                              8);
    });
}

void addReduction(Cases& cases)
{
    const struct {
        const char* name;
        ruxDitherType type;
        int32_t noise;
        const char* swscale;   // its dither of the same kind
    } methods[] = {{"copy", ruxDitherNone, 0, nullptr},      {"FS", ruxDitherFS, 0, "ed"},
                   {"FS noise", ruxDitherFS, 20, nullptr},   {"JJN", ruxDitherJJN, 0, nullptr},
                   {"Stucki", ruxDitherStucki, 0, nullptr},  {"Bayer", ruxDitherBayer, 0, "bayer"},
                   {"Bayer noise", ruxDitherBayer, 20, nullptr}};
    for (const auto& method : methods) {
        Case entry{std::string("ruxiReduceBits_8u_C3R ") + method.name, reducing(method.type, method.noise), "",
                   nullptr};
#ifdef RUX_WITH_SWSCALE
        if (method.swscale) {
            entry.peer = "swscale";
            entry.makePeer = [dither = method.swscale](Size size) { return diffuseWithSwscale(size, dither); };
        }
#endif
        cases.push_back(entry);
    }
}

}

void addColourTransforms(Cases& cases)
{
    addPacked422(cases);
    addHls(cases);
    addTwist(cases);
    addReduction(cases);
}

}
