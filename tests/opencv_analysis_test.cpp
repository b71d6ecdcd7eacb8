// Moments, the colour twist and the wavelet transform on a real picture, beside OpenCV's or the picture itself, at
// every level.
#include <cmath>
#include <cstdio>
#include <memory>
#include <vector>

#include "opencv_pictures.h"

namespace rux::test {

class OpenCvAnalysis : public OpenCv {};
RUX_AT_EACH_LEVEL(OpenCvAnalysis);

// Relative difference of the raw moments: the levels that sum in double agree to 1e-9, a6's fast form is of floats.
static double worstMoment(const cv::Mat& image, ruxAlgHint hint)
{
    ruxMomentState* state = nullptr;
    EXPECT_EQ(ruxiMomentInitAlloc_64f(&state, hint), 0);
    const std::unique_ptr<ruxMomentState, decltype(&ruxiMomentFree_64f)> owner(state, ruxiMomentFree_64f);
    EXPECT_EQ(ruxiMoments64f_32f_C1R(image.ptr<float>(), stepOf(image), sizeOf(image), state), 0);
    const cv::Moments m = cv::moments(image);
    const struct {
        int x, y;
        double value;
    } theirs[] = {{0, 0, m.m00}, {1, 0, m.m10}, {0, 1, m.m01}, {2, 0, m.m20}, {1, 1, m.m11},
                  {0, 2, m.m02}, {3, 0, m.m30}, {2, 1, m.m21}, {1, 2, m.m12}, {0, 3, m.m03}};
    double worst = 0;
    for (const auto& moment : theirs) {
        double value = 0;
        EXPECT_EQ(ruxiGetSpatialMoment_64f(state, moment.x, moment.y, 0, {0, 0}, &value), 0);
        worst = std::fmax(worst, std::fabs(value / moment.value - 1));
    }
    return worst;
}

TEST_P(OpenCvAnalysis, moments)
{
    cv::Mat image;
    pictures().grey.convertTo(image, CV_32F);
    const double accurate = worstMoment(image, ruxAlgHintAccurate), fast = worstMoment(image, 0);
    std::printf("    raw moments differ by %.1e, with the fast hint by %.1e\n", accurate, fast);
    EXPECT_LT(accurate, 1e-9);
    EXPECT_LT(fast, level() == a6 ? 1e-5 : 1e-9);
}

// OpenCV rounds its coefficients: results may differ by one.
TEST_P(OpenCvAnalysis, colourTwist)
{
    const float sepia[12] = {0.393f, 0.769f, 0.189f, 0, 0.349f, 0.686f, 0.168f, 0, 0.272f, 0.534f, 0.131f, 0};
    const cv::Mat& src = pictures().colour;
    cv::Mat ours(src.size(), src.type()), theirs;
    cv::transform(src, theirs, cv::Mat(3, 4, CV_32F, const_cast<float*>(sepia)));
    EXPECT_EQ(ruxiColorTwist32f_8u_C3R(src.data, stepOf(src), ours.data, stepOf(ours), sizeOf(src), sepia), 0);
    cv::Mat difference;
    cv::absdiff(ours, theirs, difference);
    std::printf("    %.2f %% of the samples differ, by one\n",
                100.0 * cv::countNonZero(difference.reshape(1)) / static_cast<double>(3 * src.total()));
    EXPECT_LE(cv::norm(difference, cv::NORM_INF), 1);
}

struct Filter {
    std::vector<float> taps;
    int32_t anchor;

    const float* data() const { return taps.data(); }
    int32_t length() const { return static_cast<int32_t>(taps.size()); }
};

constexpr int border = 16;

static cv::Mat withPeriodicBorder(const cv::Mat& image)
{
    cv::Mat whole;
    cv::copyMakeBorder(image, whole, border, border, border, border, cv::BORDER_WRAP);
    return whole(cv::Rect(border, border, image.cols, image.rows));
}

static cv::Mat reconstructed(const cv::Mat& picture, const Filter& low, const Filter& high, const Filter& synthesisLow,
                             const Filter& synthesisHigh)
{
    const cv::Mat image = withPeriodicBorder(picture);
    cv::Mat band[4];
    for (cv::Mat& each : band) each = cv::Mat(picture.rows / 2, picture.cols / 2, CV_32F);
    ruxWTFwdSpec* forward = nullptr;
    EXPECT_EQ(ruxiWTFwdInitAlloc_32f_C1R(&forward, low.data(), low.length(), low.anchor, high.data(), high.length(),
                                         high.anchor), 0);
    int32_t bytes = 0;
    EXPECT_EQ(ruxiWTFwdGetBufSize_C1R(forward, &bytes), 0);
    std::vector<uint8_t> buffer(static_cast<size_t>(bytes));
    EXPECT_EQ(ruxiWTFwd_32f_C1R(image.ptr<float>(), stepOf(image), band[0].ptr<float>(), stepOf(band[0]),
                                band[1].ptr<float>(), stepOf(band[1]), band[2].ptr<float>(), stepOf(band[2]),
                                band[3].ptr<float>(), stepOf(band[3]), sizeOf(band[0]), forward, buffer.data()), 0);
    EXPECT_EQ(ruxiWTFwdFree_32f_C1R(forward), 0);

    for (cv::Mat& each : band) each = withPeriodicBorder(each);
    cv::Mat result(picture.size(), CV_32F);
    ruxWTInvSpec* inverse = nullptr;
    EXPECT_EQ(ruxiWTInvInitAlloc_32f_C1R(&inverse, synthesisLow.data(), synthesisLow.length(), synthesisLow.anchor,
                                         synthesisHigh.data(), synthesisHigh.length(), synthesisHigh.anchor), 0);
    EXPECT_EQ(ruxiWTInvGetBufSize_C1R(inverse, &bytes), 0);
    buffer.resize(static_cast<size_t>(bytes));
    EXPECT_EQ(ruxiWTInv_32f_C1R(band[0].ptr<float>(), stepOf(band[0]), band[1].ptr<float>(), stepOf(band[1]),
                                band[2].ptr<float>(), stepOf(band[2]), band[3].ptr<float>(), stepOf(band[3]),
                                sizeOf(band[0]), result.ptr<float>(), stepOf(result), inverse, buffer.data()), 0);
    EXPECT_EQ(ruxiWTInvFree_32f_C1R(inverse), 0);
    return result;
}

// Of two taps, and of nine and seven (ISO/IEC 15444-1): the picture comes back.
TEST_P(OpenCvAnalysis, waveletReconstruction)
{
    const Filter sums = {{0.5f, 0.5f}, 1}, differences = {{-0.5f, 0.5f}, 1}, even = {{1, 1}, 0}, odd = {{1, -1}, 0};
    const Filter analysisLow = {{0.026748757f, -0.016864118f, -0.078223267f, 0.266864118f, 0.602949018f, 0.266864118f,
                                 -0.078223267f, -0.016864118f, 0.026748757f}, 4};
    const Filter analysisHigh = {{0.091271763f, -0.057543526f, -0.591271763f, 1.115087052f, -0.591271763f,
                                  -0.057543526f, 0.091271763f}, 4};
    const Filter synthesisLow = {{-0.091271763f, -0.057543526f, 0.591271763f, 1.115087052f, 0.591271763f,
                                  -0.057543526f, -0.091271763f}, 3};
    const Filter synthesisHigh = {{0.026748757f, 0.016864118f, -0.078223267f, -0.266864118f, 0.602949018f,
                                   -0.266864118f, -0.078223267f, 0.016864118f, 0.026748757f}, 3};
    cv::Mat picture;
    const cv::Mat& grey = pictures().grey;
    grey(cv::Rect(0, 0, grey.cols & ~1, grey.rows & ~1)).convertTo(picture, CV_32F);
    const double two = cv::norm(reconstructed(picture, sums, differences, even, odd), picture, cv::NORM_INF);
    const double nine = cv::norm(reconstructed(picture, analysisLow, analysisHigh, synthesisLow, synthesisHigh),
                                 picture, cv::NORM_INF);
    std::printf("    greatest error of a grey level of 255: %.1e with 2 taps, %.1e with 9 and 7\n", two, nine);
    EXPECT_LT(two, 1e-4);
    EXPECT_LT(nine, 1e-3);
}

}
