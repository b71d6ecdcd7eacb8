// Neighbourhood filters, read from a picture with pixels around its region: waves and a little noise, so that edges and
// medians have something to find. Masks are in the names; the box and the maximum are timed at several, since their
// cost should not grow with the mask. OpenCV's median is over the full square, where the library's cross and
// line take fewer pixels.
#include <cmath>

#include "bench.h"
#include "image.h"
#include "peers.h"
#include "ruxlib.h"

namespace rux::bench {
namespace {

constexpr int32_t margin = 32;

// A picture with a margin on all sides.
class Surrounded {
public:
    explicit Surrounded(Size size) : whole_({size.width + 2 * margin, size.height + 2 * margin}), image_(whole_)
    {
        for (int32_t y = 0; y < whole_.height; ++y)
            for (int32_t x = 0; x < whole_.width; ++x) {
                uint8_t& pixel = image_.data()[y * image_.step() + x];
                const double wave = 100 * std::sin(x / 17.0) * std::cos(y / 23.0);
                pixel = static_cast<uint8_t>(128 + wave + pixel % 16);
            }
    }

    const uint8_t* data() const { return image_.data() + margin * image_.step() + margin; }
    int32_t step() const { return image_.step(); }
#ifdef RUX_WITH_OPENCV
    cv::Mat matrix(Size size) const
    {
        return matrixOf(image_, whole_)(cv::Rect(margin, margin, size.width, size.height));
    }
#endif

private:
    Size whole_;
    Image<uint8_t> image_;
};

ruxiSize roi(Size size)
{
    return {size.width, size.height};
}

// operation(src, srcStep, dst, dstStep, size) from a picture to an image of elements.
template <typename Element, typename Operation>
MakeWork filtering(Operation operation)
{
    return [=](Size size) {
        const Surrounded src(size);
        const Image<Element> dst(size);
        const size_t bytes = static_cast<size_t>(size.width) * size.height + dst.bytes();
        return Work{bytes, [=] { operation(src.data(), src.step(), dst.data(), dst.step(), roi(size)); }};
    };
}

#ifdef RUX_WITH_OPENCV
constexpr const char* peer = "opencv";

// function(from, to) on OpenCV's views of the same.
template <typename Element, typename Function>
MakeWork opencvFiltering(Function function)
{
    return [=](Size size) {
        const Surrounded src(size);
        const Image<Element> dst(size);
        const size_t bytes = static_cast<size_t>(size.width) * size.height + dst.bytes();
        return Work{bytes, [=] {
                        cv::Mat to = matrixOf(dst, size);
                        function(src.matrix(size), to);
                    }};
    };
}
#define RUX_FILTER_PEER(Element, ...) peer, opencvFiltering<Element>([=](const cv::Mat& from, cv::Mat& to) { __VA_ARGS__; })
#else
#define RUX_FILTER_PEER(Element, ...) "", nullptr
#endif

std::string named(const char* operation, int32_t mask)
{
    return std::string(operation) + " " + std::to_string(mask);
}

void addBoxes(Cases& cases)
{
    for (const int32_t mask : {3, 5, 7, 9, 31}) {
        const ruxiSize size = {mask, mask};
        const ruxiPoint anchor = {mask / 2, mask / 2};
        cases.push_back({named("ruxiFilterBox_8u_C1R", mask),
                         filtering<uint8_t>([=](auto src, auto srcStep, auto dst, auto dstStep, ruxiSize roiSize) {
                             ruxiFilterBox_8u_C1R(src, srcStep, dst, dstStep, roiSize, size, anchor);
                         }),
                         RUX_FILTER_PEER(uint8_t, cv::boxFilter(from, to, -1, {mask, mask}))});
        const MakeWork inPlace = [=](Size roiSize) {
            const Surrounded image(roiSize);
            uint8_t* const pixels = const_cast<uint8_t*>(image.data());
            return Work{2 * static_cast<size_t>(roiSize.width) * roiSize.height, [=] {
                            ruxiFilterBox_8u_C1IR(pixels, image.step(), roi(roiSize), size, anchor);
                        }};
        };
        cases.push_back({named("ruxiFilterBox_8u_C1IR", mask), inPlace,
                         RUX_FILTER_PEER(uint8_t, cv::boxFilter(from, to, -1, {mask, mask}))});
    }
}

void addRows(Cases& cases)
{
    const std::vector<std::vector<int32_t>> kernels = {
        {1, 1}, {1, 2, 1}, {1, 4, 6, 4, 1}, {-1, -2, -3, 4, 20, 4, -3, -2, -1}};
    for (const auto& kernel : kernels) {
        const auto length = static_cast<int32_t>(kernel.size());
        int32_t divisor = 0;
        for (const int32_t coefficient : kernel) divisor += coefficient;
#ifdef RUX_WITH_OPENCV
        cv::Mat floats;
        cv::Mat(kernel, true).reshape(1, 1).convertTo(floats, CV_32F, 1.0 / divisor);
#endif
        cases.push_back({named("ruxiFilterRow_8u_C1R", length),
                         filtering<uint8_t>([=](auto src, auto srcStep, auto dst, auto dstStep, ruxiSize roiSize) {
                             ruxiFilterRow_8u_C1R(src, srcStep, dst, dstStep, roiSize, kernel.data(), length,
                                                  length / 2, divisor);
                         }),
                         RUX_FILTER_PEER(uint8_t, cv::filter2D(from, to, -1, floats))});
    }
}

void addLowpass(Cases& cases)
{
    for (const int32_t side : {3, 5})
        cases.push_back({named("ruxiFilterLowpass_8u_C1R", 11 * side),
                         filtering<uint8_t>([=](auto src, auto srcStep, auto dst, auto dstStep, ruxiSize roiSize) {
                             ruxiFilterLowpass_8u_C1R(src, srcStep, dst, dstStep, roiSize, 11 * side);
                         }),
                         RUX_FILTER_PEER(uint8_t, cv::boxFilter(from, to, -1, {side, side}))});
}

void addMaximum(Cases& cases)
{
    for (const int32_t mask : {3, 9, 31}) {
#ifdef RUX_WITH_OPENCV
        const cv::Mat rectangle = cv::getStructuringElement(cv::MORPH_RECT, {mask, mask});
#endif
        cases.push_back({named("ruxiFilterMax_8u_C1R", mask),
                         filtering<uint8_t>([=](auto src, auto srcStep, auto dst, auto dstStep, ruxiSize roiSize) {
                             ruxiFilterMax_8u_C1R(src, srcStep, dst, dstStep, roiSize, {mask, mask},
                                                  {mask / 2, mask / 2});
                         }),
                         RUX_FILTER_PEER(uint8_t, cv::dilate(from, to, rectangle))});
    }
}

template <typename Operation>
MakeWork median(Operation operation, int32_t maskCode)
{
    return filtering<uint8_t>([=](auto src, auto srcStep, auto dst, auto dstStep, ruxiSize roiSize) {
        operation(src, srcStep, dst, dstStep, roiSize, maskCode);
    });
}

void addMedians(Cases& cases)
{
    for (const int32_t side : {3, 5}) {
        cases.push_back({named("ruxiFilterMedianHoriz_8u_C1R", 10 * side + 1),
                         median(ruxiFilterMedianHoriz_8u_C1R, 10 * side + 1),
                         RUX_FILTER_PEER(uint8_t, cv::medianBlur(from, to, side))});
        cases.push_back({named("ruxiFilterMedianCross_8u_C1R", 11 * side),
                         median(ruxiFilterMedianCross_8u_C1R, 11 * side),
                         RUX_FILTER_PEER(uint8_t, cv::medianBlur(from, to, side))});
    }
}

void addSobel(Cases& cases)
{
    cases.push_back({"ruxiSobel3x3_Dx_8u16s_C1R", filtering<int16_t>(ruxiSobel3x3_Dx_8u16s_C1R),
                     RUX_FILTER_PEER(int16_t, cv::Sobel(from, to, CV_16S, 1, 0, 3, 1, 0,
                                                        cv::BORDER_REPLICATE | cv::BORDER_ISOLATED))});
    cases.push_back({"ruxiSobel3x3_Dy_8u16s_C1R",
                     filtering<int16_t>([](auto src, auto srcStep, auto dst, auto dstStep, ruxiSize roiSize) {
                         ruxiSobel3x3_Dy_8u16s_C1R(src, srcStep, dst, dstStep, 0, roiSize);
                     }),
                     RUX_FILTER_PEER(int16_t, cv::Sobel(from, to, CV_16S, 0, 1, 3, 1, 0,
                                                        cv::BORDER_REPLICATE | cv::BORDER_ISOLATED))});
}

// The gradients of a picture.
struct Gradients {
    explicit Gradients(Size size) : dx(size), dy(size)
    {
        const Surrounded picture(size);
        ruxiSobel3x3_Dx_8u16s_C1R(picture.data(), picture.step(), dx.data(), dx.step(), roi(size));
        ruxiSobel3x3_Dy_8u16s_C1R(picture.data(), picture.step(), dy.data(), dy.step(), 0, roi(size));
    }

    Image<int16_t> dx, dy;
};

constexpr float lowThreshold = 40, highThreshold = 60;

MakeWork cannyEdges()
{
    return [](Size size) {
        const Gradients gradients(size);
        const Image<uint8_t> edges(size);
        int32_t bytes = 0;
        ruxiCannyGetSize(roi(size), &bytes);
        const Image<uint8_t> buffer({bytes, 1});
        return Work{gradients.dx.bytes() + gradients.dy.bytes() + edges.bytes(), [=] {
                        ruxiCanny_16s8u_C1R(gradients.dx.data(), gradients.dx.step(), gradients.dy.data(),
                                            gradients.dy.step(), edges.data(), edges.step(), roi(size), lowThreshold,
                                            highThreshold, buffer.data());
                    }};
    };
}

void addCanny(Cases& cases)
{
    cases.push_back({"ruxiCannyGetSize", [](Size size) {
                         return Work{1, [=] {
                                         int32_t bytes;
                                         ruxiCannyGetSize(roi(size), &bytes);
                                     }};
                     }, "", nullptr});
#ifdef RUX_WITH_OPENCV
    const MakeWork opencvEdges = [](Size size) {
        const Gradients gradients(size);
        const Image<uint8_t> edges(size);
        return Work{gradients.dx.bytes() + gradients.dy.bytes() + edges.bytes(), [=] {
                        cv::Mat to = matrixOf(edges, size);
                        cv::Canny(matrixOf(gradients.dx, size), matrixOf(gradients.dy, size), to, lowThreshold,
                                  highThreshold);
                    }};
    };
    cases.push_back({"ruxiCanny_16s8u_C1R", cannyEdges(), peer, opencvEdges});
#else
    cases.push_back({"ruxiCanny_16s8u_C1R", cannyEdges(), "", nullptr});
#endif
}

}

void addFilter(Cases& cases)
{
    addBoxes(cases);
    addRows(cases);
    addLowpass(cases);
    addMaximum(cases);
    addMedians(cases);
    addSobel(cases);
    addCanny(cases);
}

}
