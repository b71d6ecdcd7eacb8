// What OpenCV defines the same way gives the same values on a real picture, at every level.
#include "opencv_pictures.h"

namespace rux::test {

RUX_AT_EACH_LEVEL(OpenCv);

TEST_P(OpenCv, flip)
{
    const struct {
        ruxAxis axis;
        int code;
    } axes[] = {{ruxAxsHorizontal, 0}, {ruxAxsVertical, 1}, {ruxAxsBoth, -1}};
    for (const auto& each : axes) {
        cv::Mat ours = pictures().colour.clone(), theirs;
        cv::flip(pictures().colour, theirs, each.code);
        EXPECT_EQ(ruxiMirror_8u_C3IR(ours.data, stepOf(ours), sizeOf(ours), each.axis), 0);
        EXPECT_TRUE(same(ours, theirs)) << each.axis;
    }
}

TEST_P(OpenCv, channelOrder)
{
    const int32_t order[3] = {2, 1, 0};
    const cv::Mat& src = pictures().colour;
    cv::Mat ours(src.size(), src.type()), theirs;
    cv::cvtColor(src, theirs, cv::COLOR_RGB2BGR);
    EXPECT_EQ(ruxiSwapChannels_8u_C3R(src.data, stepOf(src), ours.data, stepOf(ours), sizeOf(src), order), 0);
    EXPECT_TRUE(same(ours, theirs));
}

TEST_P(OpenCv, replicatedBorder)
{
    const cv::Mat& src = pictures().grey;
    cv::Mat theirs;
    cv::copyMakeBorder(src, theirs, 7, 11, 5, 23, cv::BORDER_REPLICATE);
    cv::Mat ours(theirs.size(), theirs.type());
    EXPECT_EQ(ruxiCopyReplicateBorder_8u_C1R(src.data, stepOf(src), sizeOf(src), ours.data, stepOf(ours), sizeOf(ours), 7, 5),
              0);
    EXPECT_TRUE(same(ours, theirs));
}

TEST_P(OpenCv, absoluteDifferenceAndLogic)
{
    const cv::Mat &a = pictures().grey, &b = pictures().other;
    cv::Mat ours(a.size(), a.type()), theirs;
    cv::absdiff(a, b, theirs);
    EXPECT_EQ(ruxiAbsDiff_8u_C1R(a.data, stepOf(a), b.data, stepOf(b), ours.data, stepOf(ours), sizeOf(a)), 0);
    EXPECT_TRUE(same(ours, theirs));
    cv::bitwise_and(a, b, theirs);
    EXPECT_EQ(ruxiAnd_8u_C1R(a.data, stepOf(a), b.data, stepOf(b), ours.data, stepOf(ours), sizeOf(a)), 0);
    EXPECT_TRUE(same(ours, theirs));
}

TEST_P(OpenCv, compare)
{
    const struct {
        ruxCmpOp op;
        int code;
    } operators[] = {{ruxCmpLess, cv::CMP_LT}, {ruxCmpLessEq, cv::CMP_LE}, {ruxCmpEq, cv::CMP_EQ},
                     {ruxCmpGreaterEq, cv::CMP_GE}, {ruxCmpGreater, cv::CMP_GT}};
    const cv::Mat &grey = pictures().grey, &floats = pictures().floats;
    for (const auto& each : operators) {
        cv::Mat ours(grey.size(), CV_8U), theirs;
        cv::compare(grey, 100, theirs, each.code);
        EXPECT_EQ(ruxiCompareC_8u_C1R(grey.data, stepOf(grey), 100, ours.data, stepOf(ours), sizeOf(grey), each.op), 0);
        EXPECT_TRUE(same(ours, theirs)) << each.op;
        const cv::Mat shifted = floats.clone();
        floats.colRange(3, floats.cols).copyTo(shifted.colRange(0, floats.cols - 3));
        cv::compare(floats, shifted, theirs, each.code);
        EXPECT_EQ(ruxiCompare_32f_C1R(floats.ptr<float>(), stepOf(floats), shifted.ptr<float>(), stepOf(shifted),
                                      ours.data, stepOf(ours), sizeOf(floats), each.op), 0);
        EXPECT_TRUE(same(ours, theirs)) << each.op;
    }
}

// A band is two of OpenCV's thresholds: what lies above 200 becomes 200, then what lies below 50 becomes 50.
TEST_P(OpenCv, threshold)
{
    const cv::Mat& src = pictures().grey;
    cv::Mat ours(src.size(), src.type()), theirs;
    cv::threshold(src, theirs, 200, 0, cv::THRESH_TRUNC);
    cv::max(theirs, 50, theirs);
    EXPECT_EQ(ruxiThreshold_LTValGTVal_8u_C1R(src.data, stepOf(src), ours.data, stepOf(ours), sizeOf(src), 50, 50, 200, 200),
              0);
    EXPECT_TRUE(same(ours, theirs));
}

TEST_P(OpenCv, reductions)
{
    const cv::Mat &a = pictures().grey, &b = pictures().other, &floats = pictures().floats;
    double ours = 0, lowest = 0, highest = 0;
    EXPECT_EQ(ruxiSum_8u_C1R(a.data, stepOf(a), sizeOf(a), &ours), 0);
    EXPECT_EQ(ours, cv::sum(a)[0]);
    float maximum = 0;
    cv::minMaxLoc(floats, &lowest, &highest);
    EXPECT_EQ(ruxiMax_32f_C1R(floats.ptr<float>(), stepOf(floats), sizeOf(floats), &maximum), 0);
    EXPECT_EQ(maximum, highest);
    EXPECT_EQ(ruxiNormDiff_L1_8u_C1R(a.data, stepOf(a), b.data, stepOf(b), sizeOf(a), &ours), 0);
    EXPECT_EQ(ours, cv::norm(a, b, cv::NORM_L1));
    cv::Mat words1, words2;
    a.convertTo(words1, CV_16S, 100, -9000);
    b.convertTo(words2, CV_16S, 90, -8000);
    EXPECT_EQ(ruxiNormDiff_L1_16s_C1R(words1.ptr<int16_t>(), stepOf(words1), words2.ptr<int16_t>(), stepOf(words2),
                                      sizeOf(words1), &ours), 0);
    EXPECT_EQ(ours, cv::norm(words1, words2, cv::NORM_L1));
}

TEST_P(OpenCv, conversions)
{
    const cv::Mat &grey = pictures().grey, &floats = pictures().floats;
    cv::Mat widened(grey.size(), CV_32F), theirs;
    grey.convertTo(theirs, CV_32F);
    EXPECT_EQ(ruxiConvert_8u32f_C1R(grey.data, stepOf(grey), widened.ptr<float>(), stepOf(widened), sizeOf(grey)), 0);
    EXPECT_TRUE(same(widened, theirs));
    cv::Mat rounded(grey.size(), CV_8U);
    floats.convertTo(theirs, CV_8U);
    EXPECT_EQ(ruxiConvert_32f8u_C1R(floats.ptr<float>(), stepOf(floats), rounded.data, stepOf(rounded), sizeOf(floats), 1), 0);
    EXPECT_TRUE(same(rounded, theirs));
}

}
