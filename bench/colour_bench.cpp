// Luma/chroma to and from 8-bit RGB, and to packed 16-bit RGB.
//
// A peer has the same layouts and the same kind of matrix (studio or full range where it knows both), not the same
// bits. With two peers an operation has two cases.
#include "bench.h"
#include "colour_peers.h"

namespace rux::bench {
namespace {

using Planes = const uint8_t* const*;
using Steps = const int32_t*;

// Each form of argument list, called on two pictures.
void call(ruxStatus(RUXCALL* packed)(const uint8_t*, int32_t, uint8_t*, int32_t, ruxiSize), const Picture& from,
          const Picture& to)
{
    packed(from.planes()[0], from.steps()[0], to.planes()[0], to.steps()[0], from.size());
}

void call(ruxStatus(RUXCALL* packed)(const uint8_t*, int32_t, uint16_t*, int32_t, ruxiSize), const Picture& from,
          const Picture& to)
{
    packed(from.planes()[0], from.steps()[0], reinterpret_cast<uint16_t*>(to.planes()[0]), to.steps()[0], from.size());
}

void call(ruxStatus(RUXCALL* planar)(Planes, Steps, uint8_t*, int32_t, ruxiSize), const Picture& from,
          const Picture& to)
{
    planar(from.planes(), from.steps(), to.planes()[0], to.steps()[0], from.size());
}

void call(ruxStatus(RUXCALL* planar)(Planes, Steps, uint16_t*, int32_t, ruxiSize), const Picture& from,
          const Picture& to)
{
    planar(from.planes(), from.steps(), reinterpret_cast<uint16_t*>(to.planes()[0]), to.steps()[0], from.size());
}

void call(ruxStatus(RUXCALL* tight)(Planes, uint8_t*, ruxiSize), const Picture& from, const Picture& to)
{
    tight(from.planes(), to.planes()[0], from.size());
}

void call(ruxStatus(RUXCALL* toPlanes)(const uint8_t*, int32_t, uint8_t* const*, Steps, ruxiSize), const Picture& from,
          const Picture& to)
{
    toPlanes(from.planes()[0], from.steps()[0], to.planes(), to.steps(), from.size());
}

struct Peer {
    std::string name;   // empty where it is not installed
    MakeWork make;
};

// One case for each peer that is installed, or one without a peer.
template <typename Operation>
void add(Cases& cases, const char* name, Operation operation, Layout from, Layout to, const std::vector<Peer>& peers)
{
    const MakeWork make = conversion(
        from, to, [=](const Picture& source, const Picture& destination) { call(operation, source, destination); });
    const size_t before = cases.size();
    for (const Peer& peer : peers)
        if (!peer.name.empty()) cases.push_back({name, make, peer.name, peer.make});
    if (cases.size() == before) cases.push_back({name, make, "", nullptr});
}

#define RUX_ADD(operation, from, to, ...) add(cases, #operation, operation, Layout::from, Layout::to, {__VA_ARGS__})

void addFromRgb(Cases& cases)
{
    RUX_ADD(ruxiRGBToYCbCr420_8u_C3P3R, rgb24, planar420, {RUX_LIBYUV(rgb24, planar420, libyuv::RAWToI420)},
            {RUX_SWSCALE(rgb24, RGB24, planar420, YUV420P)}, {RUX_OPENCV(2, 3, 3, 1, cv::COLOR_RGB2YUV_I420)});
    RUX_ADD(ruxiRGBToYCbCr422_8u_C3C2R, rgb24, packed422, {RUX_SWSCALE(rgb24, RGB24, packed422, YUYV422)});
}

void addToRgb(Cases& cases)
{
    RUX_ADD(ruxiYCbCr420ToRGB_8u_P3C3R, planar420, rgb24, {RUX_LIBYUV(planar420, rgb24, libyuv::I420ToRAW)},
            {RUX_SWSCALE(planar420, YUV420P, rgb24, RGB24)}, {RUX_OPENCV(3, 1, 2, 3, cv::COLOR_YUV2RGB_I420)});
    RUX_ADD(ruxiYCbCr422ToRGB_8u_C2C3R, packed422, rgb24, {RUX_SWSCALE(packed422, YUYV422, rgb24, RGB24)},
            {RUX_OPENCV(2, 2, 2, 3, cv::COLOR_YUV2RGB_YUY2)});
    RUX_ADD(ruxiYCbCr422ToRGB_8u_P3C3R, planar422, rgb24, {RUX_LIBYUV(planar422, rgb24, libyuv::I422ToRAW)},
            {RUX_SWSCALE(planar422, YUV422P, rgb24, RGB24)});
    RUX_ADD(ruxiYUV420ToRGB_8u_P3C3, planar420, rgb24, {RUX_LIBYUV(planar420, rgb24, libyuv::J420ToRAW)},
            {RUX_SWSCALE(planar420, YUVJ420P, rgb24, RGB24)});
    RUX_ADD(ruxiYUV422ToRGB_8u_C2C3R, packed422, rgb24, {RUX_SWSCALE(packed422, YUYV422, rgb24, RGB24)});
    RUX_ADD(ruxiYUV422ToRGB_8u_P3C3R, planar422, rgb24, {RUX_LIBYUV(planar422, rgb24, libyuv::I422ToRAW)},
            {RUX_SWSCALE(planar422, YUVJ422P, rgb24, RGB24)});
    RUX_ADD(ruxiYUV422ToRGB_8u_P3AC4R, planar422, rgb32, {RUX_LIBYUV(planar422, rgb32, libyuv::J422ToABGR)},
            {RUX_SWSCALE(planar422, YUVJ422P, rgb32, RGB0)});
}

// The peers name the components from the high bits down.
void addToRgb16(Cases& cases)
{
    RUX_ADD(ruxiYCbCr422ToRGB555_8u16u_C2C3R, packed422, rgb16, {RUX_SWSCALE(packed422, YUYV422, rgb16, BGR555LE)});
    RUX_ADD(ruxiYCbCr422ToRGB565_8u16u_C2C3R, packed422, rgb16, {RUX_SWSCALE(packed422, YUYV422, rgb16, BGR565LE)});
    RUX_ADD(ruxiYCbCr422ToBGR555_8u16u_C2C3R, packed422, rgb16, {RUX_SWSCALE(packed422, YUYV422, rgb16, RGB555LE)});
    RUX_ADD(ruxiYCbCr422ToBGR565_8u16u_C2C3R, packed422, rgb16, {RUX_SWSCALE(packed422, YUYV422, rgb16, RGB565LE)});
    RUX_ADD(ruxiYUV420ToBGR555_8u16u_P3C3R, planar420, rgb16, {RUX_LIBYUV(planar420, rgb16, libyuv::I420ToARGB1555)},
            {RUX_SWSCALE(planar420, YUVJ420P, rgb16, RGB555LE)});
    RUX_ADD(ruxiYUV420ToBGR565_8u16u_P3C3R, planar420, rgb16, {RUX_LIBYUV(planar420, rgb16, libyuv::J420ToRGB565)},
            {RUX_SWSCALE(planar420, YUVJ420P, rgb16, RGB565LE)});
}

}

void addColour(Cases& cases)
{
    addFromRgb(cases);
    addToRgb(cases);
    addToRgb16(cases);
}

}
