#include "bench.h"
#include "image.h"
#include "peers.h"
#include "ruxlib.h"

namespace rux::bench {
namespace {

ruxiSize roi(Size size)
{
    return {size.width, size.height};
}

template <typename Operation>
MakeWork inPlace(Operation operation, int32_t channels)
{
    return [=](Size size) {
        const Image<float> src(size, channels), srcDst(size, channels);
        return Work{3 * src.bytes(),
                    [=] { operation(src.data(), src.step(), srcDst.data(), srcDst.step(), roi(size)); }};
    };
}

Work accumulate(Size size)
{
    const Image<uint8_t> src(size);
    const Image<float> srcDst(size);
    return {src.bytes() + 2 * srcDst.bytes(),
            [=] { ruxiAdd_8u32f_C1IR(src.data(), src.step(), srcDst.data(), srcDst.step(), roi(size)); }};
}

Work accumulateWeighted(Size size)
{
    const Image<uint8_t> src(size);
    const Image<float> srcDst(size);
    return {src.bytes() + 2 * srcDst.bytes(), [=] {
                ruxiAddWeighted_8u32f_C1IR(src.data(), src.step(), srcDst.data(), srcDst.step(), roi(size), 0.1f);
            }};
}

Work divide(Size size)
{
    const Image<float> srcDst(size);
    return {2 * srcDst.bytes(),
            [=] { ruxiDivC_32f_C1IR(1.0000001f, srcDst.data(), srcDst.step(), roi(size)); }};
}

#ifdef RUX_WITH_OPENCV
template <typename Function>
MakeWork opencvInPlace(Function function, int32_t channels)
{
    return [=](Size size) {
        const Image<float> src(size, channels), srcDst(size, channels);
        const cv::Mat a = matrixOf(srcDst, size, channels), b = matrixOf(src, size, channels);
        return Work{3 * src.bytes(), [=, keepSrc = src, keepSrcDst = srcDst] {
                        cv::Mat result = a;
                        function(a, b, result);
                    }};
    };
}

const auto addPeer = [](const cv::Mat& a, const cv::Mat& b, cv::Mat& c) { cv::add(a, b, c); };
const auto subtractPeer = [](const cv::Mat& a, const cv::Mat& b, cv::Mat& c) { cv::subtract(a, b, c); };
const auto multiplyPeer = [](const cv::Mat& a, const cv::Mat& b, cv::Mat& c) { cv::multiply(a, b, c); };
#define PEER(function, channels) "opencv", opencvInPlace(function, channels)
#else
#define PEER(function, channels) "", nullptr
#endif

}

void addArith(Cases& cases)
{
    cases.push_back({"ruxiAdd_32f_C1IR", inPlace(ruxiAdd_32f_C1IR, 1), PEER(addPeer, 1)});
    cases.push_back({"ruxiAdd_32f_C3IR", inPlace(ruxiAdd_32f_C3IR, 3), PEER(addPeer, 3)});
    cases.push_back({"ruxiAdd_32f_C4IR", inPlace(ruxiAdd_32f_C4IR, 4), PEER(addPeer, 4)});
    cases.push_back({"ruxiAdd_32f_AC4IR", inPlace(ruxiAdd_32f_AC4IR, 4), "", nullptr});
    cases.push_back({"ruxiSub_32f_C1IR", inPlace(ruxiSub_32f_C1IR, 1), PEER(subtractPeer, 1)});
    cases.push_back({"ruxiSub_32f_C3IR", inPlace(ruxiSub_32f_C3IR, 3), PEER(subtractPeer, 3)});
    cases.push_back({"ruxiSub_32f_C4IR", inPlace(ruxiSub_32f_C4IR, 4), PEER(subtractPeer, 4)});
    cases.push_back({"ruxiSub_32f_AC4IR", inPlace(ruxiSub_32f_AC4IR, 4), "", nullptr});
    cases.push_back({"ruxiMul_32f_C1IR", inPlace(ruxiMul_32f_C1IR, 1), PEER(multiplyPeer, 1)});
    cases.push_back({"ruxiMul_32f_C3IR", inPlace(ruxiMul_32f_C3IR, 3), PEER(multiplyPeer, 3)});
    cases.push_back({"ruxiMul_32f_C4IR", inPlace(ruxiMul_32f_C4IR, 4), PEER(multiplyPeer, 4)});
    cases.push_back({"ruxiMul_32f_AC4IR", inPlace(ruxiMul_32f_AC4IR, 4), "", nullptr});
    cases.push_back({"ruxiAdd_8u32f_C1IR", accumulate, "", nullptr});
    cases.push_back({"ruxiAddWeighted_8u32f_C1IR", accumulateWeighted, "", nullptr});
    cases.push_back({"ruxiDivC_32f_C1IR", divide, "", nullptr});
}

}
