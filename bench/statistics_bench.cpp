// Conversion, logic, thresholds, comparison, reductions and norms.
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

// Work over two sources and a destination of the case's size.
template <typename A, typename B, typename C, typename Call>
MakeWork work(int32_t channels, size_t bytesPerPixel, Call call)
{
    return [=](Size size) {
        const Image<A> a(size, channels);
        const Image<B> b(size, channels);
        const Image<C> c(size, channels);
        return Work{bytesPerPixel * size.width * size.height, [=] { call(a, b, c, roi(size)); }};
    };
}

#define RUX_CALL(A, B, C, ...) [](const Image<A>& a, const Image<B>& b, const Image<C>& c, ruxiSize roi) { \
        (void)a, (void)b, (void)c; __VA_ARGS__; }
#define RUX_CV(...) [](const cv::Mat& a, const cv::Mat& b, cv::Mat& c) { (void)a, (void)b, (void)c; __VA_ARGS__; }

using u8 = uint8_t;
using s16 = int16_t;
double norm[4];
float maximum;
int32_t count;

void addConversions(Cases& cases)
{
    cases.push_back({"ruxiConvert_8u32f_C1R",
                     work<u8, u8, float>(1, 5, RUX_CALL(u8, u8, float, ruxiConvert_8u32f_C1R(a.data(), a.step(), c.data(), c.step(), roi))),
                     RUX_PEER(u8, u8, float, 1, RUX_CV(a.convertTo(c, CV_32F)))});
    cases.push_back({"ruxiConvert_32f8u_C1R",
                     work<float, u8, u8>(1, 5, RUX_CALL(float, u8, u8, ruxiConvert_32f8u_C1R(a.data(), a.step(), c.data(), c.step(), roi, 1))),
                     RUX_PEER(float, u8, u8, 1, RUX_CV(a.convertTo(c, CV_8U)))});
    cases.push_back({"ruxiAbsDiff_8u_C1R",
                     work<u8, u8, u8>(1, 3, RUX_CALL(u8, u8, u8, ruxiAbsDiff_8u_C1R(a.data(), a.step(), b.data(), b.step(), c.data(), c.step(), roi))),
                     RUX_PEER(u8, u8, u8, 1, RUX_CV(cv::absdiff(a, b, c)))});
    cases.push_back({"ruxiAnd_8u_C1R",
                     work<u8, u8, u8>(1, 3, RUX_CALL(u8, u8, u8, ruxiAnd_8u_C1R(a.data(), a.step(), b.data(), b.step(), c.data(), c.step(), roi))),
                     RUX_PEER(u8, u8, u8, 1, RUX_CV(cv::bitwise_and(a, b, c)))});
}

// The forms of a band in several channels, and in place: all channels have the same band.
template <typename Element, int32_t channels, typename Operation>
MakeWork bands(Operation operation)
{
    return work<Element, Element, Element>(
        channels, 2 * channels * sizeof(Element),
        [=](const Image<Element>& a, const Image<Element>&, const Image<Element>& c, ruxiSize roi) {
            const Element below[3] = {50, 50, 50}, above[3] = {100, 100, 100};
            operation(a.data(), a.step(), c.data(), c.step(), roi, below, below, above, above);
        });
}

template <typename Element, int32_t channels, typename Operation>
MakeWork bandsInPlace(Operation operation)
{
    return work<Element, Element, Element>(
        channels, 2 * channels * sizeof(Element),
        [=](const Image<Element>&, const Image<Element>&, const Image<Element>& c, ruxiSize roi) {
            const Element below[3] = {50, 50, 50}, above[3] = {100, 100, 100};
            operation(c.data(), c.step(), roi, below, below, above, above);
        });
}

template <typename Element, typename Operation>
MakeWork bandInPlace(Operation operation)
{
    return work<Element, Element, Element>(
        1, 2 * sizeof(Element),
        [=](const Image<Element>&, const Image<Element>&, const Image<Element>& c, ruxiSize roi) {
            operation(c.data(), c.step(), roi, Element(50), Element(50), Element(100), Element(100));
        });
}

#define RUX_BANDS(type, Element)                                                                                        \
    cases.push_back({"ruxiThreshold_LTValGTVal_" #type "_C3R", bands<Element, 3>(ruxiThreshold_LTValGTVal_##type##_C3R), "", nullptr}); \
    cases.push_back({"ruxiThreshold_LTValGTVal_" #type "_AC4R", bands<Element, 4>(ruxiThreshold_LTValGTVal_##type##_AC4R), "", nullptr}); \
    cases.push_back({"ruxiThreshold_LTValGTVal_" #type "_C1IR", bandInPlace<Element>(ruxiThreshold_LTValGTVal_##type##_C1IR), "", nullptr}); \
    cases.push_back({"ruxiThreshold_LTValGTVal_" #type "_C3IR", bandsInPlace<Element, 3>(ruxiThreshold_LTValGTVal_##type##_C3IR), "", nullptr}); \
    cases.push_back({"ruxiThreshold_LTValGTVal_" #type "_AC4IR", bandsInPlace<Element, 4>(ruxiThreshold_LTValGTVal_##type##_AC4IR), "", nullptr});

// OpenCV's peer of a band is two passes: what lies above, then what lies below.
void addThresholds(Cases& cases)
{
    RUX_BANDS(8u, uint8_t)
    RUX_BANDS(16s, int16_t)
    RUX_BANDS(32f, float)
    cases.push_back({"ruxiThreshold_LTValGTVal_8u_C1R",
                     work<u8, u8, u8>(1, 2, RUX_CALL(u8, u8, u8, ruxiThreshold_LTValGTVal_8u_C1R(a.data(), a.step(), c.data(), c.step(), roi, 50, 50, 200, 200))),
                     RUX_PEER(u8, u8, u8, 1, RUX_CV(cv::min(a, 200, c); cv::max(c, 50, c)))});
    cases.push_back({"ruxiThreshold_LTValGTVal_16s_C1R",
                     work<s16, s16, s16>(1, 4, RUX_CALL(s16, s16, s16, ruxiThreshold_LTValGTVal_16s_C1R(a.data(), a.step(), c.data(), c.step(), roi, -50, -50, 200, 200))),
                     RUX_PEER(s16, s16, s16, 1, RUX_CV(cv::min(a, 200, c); cv::max(c, -50, c)))});
    cases.push_back({"ruxiThreshold_LTValGTVal_32f_C1R",
                     work<float, float, float>(1, 8, RUX_CALL(float, float, float, ruxiThreshold_LTValGTVal_32f_C1R(a.data(), a.step(), c.data(), c.step(), roi, -50, -50, 200, 200))),
                     RUX_PEER(float, float, float, 1, RUX_CV(cv::min(a, 200, c); cv::max(c, -50, c)))});
    cases.push_back({"ruxiThreshold_LTVal_32f_C1IR",
                     work<float, float, float>(1, 8, RUX_CALL(float, float, float, ruxiThreshold_LTVal_32f_C1IR(c.data(), c.step(), roi, -50, -50))),
                     RUX_PEER(float, float, float, 1, RUX_CV(cv::max(c, -50, c)))});
}

void addComparisons(Cases& cases)
{
    cases.push_back({"ruxiCompare_32f_C1R",
                     work<float, float, u8>(1, 9, RUX_CALL(float, float, u8, ruxiCompare_32f_C1R(a.data(), a.step(), b.data(), b.step(), c.data(), c.step(), roi, ruxCmpLess))),
                     RUX_PEER(float, float, u8, 1, RUX_CV(cv::compare(a, b, c, cv::CMP_LT)))});
    cases.push_back({"ruxiCompareC_32f_C1R",
                     work<float, float, u8>(1, 5, RUX_CALL(float, float, u8, ruxiCompareC_32f_C1R(a.data(), a.step(), 1.5f, c.data(), c.step(), roi, ruxCmpLess))),
                     RUX_PEER(float, float, u8, 1, RUX_CV(cv::compare(a, 1.5, c, cv::CMP_LT)))});
    cases.push_back({"ruxiCompareC_8u_C1R",
                     work<u8, u8, u8>(1, 2, RUX_CALL(u8, u8, u8, ruxiCompareC_8u_C1R(a.data(), a.step(), 100, c.data(), c.step(), roi, ruxCmpLess))),
                     RUX_PEER(u8, u8, u8, 1, RUX_CV(cv::compare(a, 100, c, cv::CMP_LT)))});
    cases.push_back({"ruxiCountInRange_8u_C1R",
                     work<u8, u8, u8>(1, 1, RUX_CALL(u8, u8, u8, ruxiCountInRange_8u_C1R(a.data(), a.step(), roi, &count, 50, 200))),
                     RUX_PEER(u8, u8, u8, 1, RUX_CV(cv::inRange(a, 50, 200, c); count = cv::countNonZero(c)))});
    cases.push_back({"ruxiCountInRange_32f_C1R",
                     work<float, u8, u8>(1, 4, RUX_CALL(float, u8, u8, ruxiCountInRange_32f_C1R(a.data(), a.step(), roi, &count, 0.5f, 1.5f))),
                     RUX_PEER(float, u8, u8, 1, RUX_CV(cv::inRange(a, 0.5, 1.5, c); count = cv::countNonZero(c)))});
    cases.push_back({"ruxiMax_32f_C1R",
                     work<float, u8, u8>(1, 4, RUX_CALL(float, u8, u8, ruxiMax_32f_C1R(a.data(), a.step(), roi, &maximum))),
                     RUX_PEER(float, u8, u8, 1, RUX_CV(cv::minMaxLoc(a, norm, norm + 1)))});
    cases.push_back({"ruxiSum_8u_C1R",
                     work<u8, u8, u8>(1, 1, RUX_CALL(u8, u8, u8, ruxiSum_8u_C1R(a.data(), a.step(), roi, norm))),
                     RUX_PEER(u8, u8, u8, 1, RUX_CV(norm[0] = cv::sum(a)[0]))});
}

#define RUX_NORM(type, Element, layout, channels, bytes)                                                         \
    cases.push_back({"ruxiNormDiff_L1_" #type "_" #layout,                                                       \
                     work<Element, Element, u8>(channels, bytes * channels,                                     \
                                                RUX_CALL(Element, Element, u8,                                  \
                                                         ruxiNormDiff_L1_##type##_##layout(                     \
                                                             a.data(), a.step(), b.data(), b.step(), roi, norm))), \
                     "", nullptr});
#define RUX_NORMS(type, Element, bytes)          \
    RUX_NORM(type, Element, C3R, 3, bytes)       \
    RUX_NORM(type, Element, C4R, 4, bytes)       \
    RUX_NORM(type, Element, AC4R, 4, bytes)
#define RUX_FLOAT_NORM(layout, channels)                                                                         \
    cases.push_back({"ruxiNormDiff_L1_32f_" #layout " fast",                                                     \
                     work<float, float, u8>(channels, 8 * channels,                                              \
                                            RUX_CALL(float, float, u8,                                           \
                                                     ruxiNormDiff_L1_32f_##layout(a.data(), a.step(), b.data(),  \
                                                                                  b.step(), roi, norm, 0))),     \
                     "", nullptr});

void addNorms(Cases& cases)
{
    cases.push_back({"ruxiNormDiff_L1_8u_C1R",
                     work<u8, u8, u8>(1, 2, RUX_CALL(u8, u8, u8, ruxiNormDiff_L1_8u_C1R(a.data(), a.step(), b.data(), b.step(), roi, norm))),
                     RUX_PEER(u8, u8, u8, 1, RUX_CV(norm[0] = cv::norm(a, b, cv::NORM_L1)))});
    RUX_NORMS(8u, u8, 2)
    RUX_NORMS(16s, s16, 4)
    RUX_FLOAT_NORM(C3R, 3)
    RUX_FLOAT_NORM(C4R, 4)
    RUX_FLOAT_NORM(AC4R, 4)
    cases.push_back({"ruxiNormDiff_L1_16s_C1R",
                     work<s16, s16, u8>(1, 4, RUX_CALL(s16, s16, u8, ruxiNormDiff_L1_16s_C1R(a.data(), a.step(), b.data(), b.step(), roi, norm))),
                     RUX_PEER(s16, s16, u8, 1, RUX_CV(norm[0] = cv::norm(a, b, cv::NORM_L1)))});
    cases.push_back({"ruxiNormDiff_L1_32f_C1R fast",
                     work<float, float, u8>(1, 8, RUX_CALL(float, float, u8, ruxiNormDiff_L1_32f_C1R(a.data(), a.step(), b.data(), b.step(), roi, norm, 0))),
                     RUX_PEER(float, float, u8, 1, RUX_CV(norm[0] = cv::norm(a, b, cv::NORM_L1)))});
    cases.push_back({"ruxiNormDiff_L1_32f_C1R accurate",
                     work<float, float, u8>(1, 8, RUX_CALL(float, float, u8, ruxiNormDiff_L1_32f_C1R(a.data(), a.step(), b.data(), b.step(), roi, norm, ruxAlgHintAccurate))),
                     RUX_PEER(float, float, u8, 1, RUX_CV(norm[0] = cv::norm(a, b, cv::NORM_L1)))});
    cases.push_back({"ruxiNormDiff_L1_8u_C1MR",
                     work<u8, u8, u8>(1, 3, RUX_CALL(u8, u8, u8, ruxiNormDiff_L1_8u_C1MR(a.data(), a.step(), b.data(), b.step(), c.data(), c.step(), roi, norm))),
                     RUX_PEER(u8, u8, u8, 1, RUX_CV(norm[0] = cv::norm(a, b, cv::NORM_L1, c)))});
    cases.push_back({"ruxiNormDiff_L1_32f_C1MR",
                     work<float, float, u8>(1, 9, RUX_CALL(float, float, u8, ruxiNormDiff_L1_32f_C1MR(a.data(), a.step(), b.data(), b.step(), c.data(), c.step(), roi, norm))),
                     RUX_PEER(float, float, u8, 1, RUX_CV(norm[0] = cv::norm(a, b, cv::NORM_L1, c)))});
}

}

void addStatistics(Cases& cases)
{
    addConversions(cases);
    addThresholds(cases);
    addComparisons(cases);
    addNorms(cases);
}

}
