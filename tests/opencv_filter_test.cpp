// The filters beside OpenCV's on a real picture, at every level.
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "opencv_pictures.h"

#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image_write.h>

namespace rux::test {

class OpenCvFilters : public OpenCv {};
RUX_AT_EACH_LEVEL(OpenCvFilters);

// The filters that read around their region run on all of the picture but a frame.
constexpr int frame = 16;

static cv::Mat inside(const cv::Mat& image)
{
    return image(cv::Rect(frame, frame, image.cols - 2 * frame, image.rows - 2 * frame));
}

static cv::Mat destinationFor(const cv::Mat& src)
{
    return cv::Mat(src.size(), src.type(), cv::Scalar(0));
}

static cv::Mat derivative(const cv::Mat& src, int rowOrder)
{
    cv::Mat dst(src.size(), CV_16S);
    const ruxStatus status =
        rowOrder < 0 ? ruxiSobel3x3_Dx_8u16s_C1R(src.data, stepOf(src), dst.ptr<int16_t>(), stepOf(dst), sizeOf(src))
                     : ruxiSobel3x3_Dy_8u16s_C1R(src.data, stepOf(src), dst.ptr<int16_t>(), stepOf(dst), rowOrder,
                                                 sizeOf(src));
    EXPECT_EQ(status, 0);
    return dst;
}

TEST_P(OpenCvFilters, sobel)
{
    const cv::Mat& src = pictures().grey;
    cv::Mat dx, dy;
    cv::Sobel(src, dx, CV_16S, 1, 0, 3, 1, 0, cv::BORDER_REPLICATE);
    cv::Sobel(src, dy, CV_16S, 0, 1, 3, 1, 0, cv::BORDER_REPLICATE);
    EXPECT_TRUE(same(derivative(src, -1), dx));
    EXPECT_TRUE(same(derivative(src, 0), dy));
    EXPECT_TRUE(same(derivative(src, 1), -dy));
}

TEST_P(OpenCvFilters, dilation)
{
    const cv::Mat& picture = pictures().grey;
    const cv::Mat src = inside(picture);
    for (const ruxiSize mask : {ruxiSize{3, 3}, ruxiSize{7, 2}, ruxiSize{1, 9}, ruxiSize{15, 11}}) {
        for (const ruxiPoint anchor : {ruxiPoint{0, 0}, ruxiPoint{mask.width / 2, mask.height - 1}}) {
            cv::Mat theirs, ours = destinationFor(src);
            cv::dilate(picture, theirs, cv::Mat::ones(mask.height, mask.width, CV_8U), {anchor.x, anchor.y});
            EXPECT_EQ(ruxiFilterMax_8u_C1R(src.data, stepOf(src), ours.data, stepOf(ours), sizeOf(src), mask, anchor),
                      0);
            EXPECT_TRUE(same(ours, inside(theirs))) << mask.width << "x" << mask.height;
        }
    }
}

// OpenCV's windows are square: where each row stands so many times, the square holds so many times the row's window.
TEST_P(OpenCvFilters, mediansOfRows)
{
    const cv::Mat& picture = pictures().grey;
    const cv::Mat src = inside(picture);
    for (const int side : {3, 5}) {
        cv::Mat repeated, filtered, theirs = picture.clone(), ours = destinationFor(src);
        cv::resize(picture, repeated, cv::Size(), 1, side, cv::INTER_NEAREST);
        cv::medianBlur(repeated, filtered, side);
        for (int y = 0; y < picture.rows; y++) filtered.row(side * y + side / 2).copyTo(theirs.row(y));
        EXPECT_EQ(ruxiFilterMedianHoriz_8u_C1R(src.data, stepOf(src), ours.data, stepOf(ours), sizeOf(src),
                                               10 * side + 1), 0);
        EXPECT_TRUE(same(ours, inside(theirs))) << side;
    }
}

// A mean of an odd number of pixels has no ties: rounded it is one value.
TEST_P(OpenCvFilters, roundedMeans)
{
    const cv::Mat& picture = pictures().grey;
    const cv::Mat src = inside(picture);
    for (const int side : {3, 5}) {
        cv::Mat theirs, ours = destinationFor(src);
        cv::blur(picture, theirs, cv::Size(side, side));
        EXPECT_EQ(ruxiFilterLowpass_8u_C1R(src.data, stepOf(src), ours.data, stepOf(ours), sizeOf(src), 11 * side), 0);
        EXPECT_TRUE(same(ours, inside(theirs))) << side;
    }
}

// OpenCV applies its kernel from left to right: it is given ours turned round.
TEST_P(OpenCvFilters, convolutionOfRows)
{
    const cv::Mat& picture = pictures().grey;
    const cv::Mat src = inside(picture);
    const int32_t kernel[] = {-3, 1, 7, -5, 2};
    for (const int size : {1, 3, 5}) {
        cv::Mat theirs, flipped(1, size, CV_32F), ours = destinationFor(src);
        for (int j = 0; j < size; j++) flipped.at<float>(size - 1 - j) = static_cast<float>(kernel[j]);
        cv::filter2D(picture, theirs, CV_8U, flipped, {0, 0});
        EXPECT_EQ(ruxiFilterRow_8u_C1R(src.data, stepOf(src), ours.data, stepOf(ours), sizeOf(src), kernel, size,
                                       size - 1, 1), 0);
        EXPECT_TRUE(same(ours, inside(theirs))) << size;
    }
}

// Where the area is a power of two the reciprocal is exact, and the mean is the cut quotient of OpenCV's sum.
TEST_P(OpenCvFilters, box)
{
    const cv::Mat& picture = pictures().grey;
    const cv::Mat src = inside(picture);
    for (const ruxiSize mask : {ruxiSize{2, 2}, ruxiSize{4, 4}, ruxiSize{8, 2}}) {
        cv::Mat sums, theirs(picture.size(), CV_8U), ours = destinationFor(src);
        cv::boxFilter(picture, sums, CV_32S, {mask.width, mask.height}, {0, 0}, false);
        for (int y = 0; y < sums.rows; y++) {
            for (int x = 0; x < sums.cols; x++) {
                theirs.at<uint8_t>(y, x) = static_cast<uint8_t>(sums.at<int>(y, x) / (mask.width * mask.height));
            }
        }
        EXPECT_EQ(ruxiFilterBox_8u_C1R(src.data, stepOf(src), ours.data, stepOf(ours), sizeOf(src), mask, {0, 0}), 0);
        EXPECT_TRUE(same(ours, inside(theirs))) << mask.width << "x" << mask.height;
    }
}

static cv::Mat edgesOf(const cv::Mat& dx, const cv::Mat& dy, float low, float high)
{
    int32_t size = 0;
    EXPECT_EQ(ruxiCannyGetSize(sizeOf(dx), &size), 0);
    // a6 and w7 may read up to 4 elements behind a row: the last row has them too.
    cv::Mat wideDx, wideDy, dst(dx.size(), CV_8U), buffer(1, size, CV_8U);
    cv::copyMakeBorder(dx, wideDx, 0, 0, 0, 4, cv::BORDER_CONSTANT);
    cv::copyMakeBorder(dy, wideDy, 0, 0, 0, 4, cv::BORDER_CONSTANT);
    EXPECT_EQ(ruxiCanny_16s8u_C1R(wideDx.ptr<int16_t>(), stepOf(wideDx), wideDy.ptr<int16_t>(), stepOf(wideDy),
                                  dst.data, stepOf(dst), sizeOf(dst), low, high, buffer.data), 0);
    return dst;
}

// Whether the magnitude is also that of a neighbour along the gradient.
static bool isTied(const cv::Mat& dx, const cv::Mat& dy, int x, int y)
{
    const auto magnitude = [&](int column, int row) {
        if (column < 0 || row < 0 || column >= dx.cols || row >= dx.rows) return 0;
        return std::abs(dx.at<int16_t>(row, column)) + std::abs(dy.at<int16_t>(row, column));
    };
    const int horizontal = dx.at<int16_t>(y, x), vertical = dy.at<int16_t>(y, x);
    const double slope = std::abs(static_cast<double>(vertical) / horizontal);
    int toX = (horizontal < 0) == (vertical < 0) ? 1 : -1, toY = 1;
    if (slope < 0.41421356) toX = 1, toY = 0;
    if (slope > 2.41421356) toX = 0, toY = 1;
    const int own = magnitude(x, y);
    return own == magnitude(x + toX, y + toY) || own == magnitude(x - toX, y - toY);
}

// Edge pixels of ours that OpenCV has not, and OpenCV's that ours has not: those where two magnitudes tie, those that
// such a pixel leads to, and the others.
struct Differences {
    int onlyOurs, tied, led, others;
};

static Differences differencesOf(const cv::Mat& ours, const cv::Mat& theirs, const cv::Mat& dx, const cv::Mat& dy)
{
    Differences found = {cv::countNonZero(ours & ~theirs), 0, 0, 0};
    cv::Mat lines;
    const int count = cv::connectedComponents(theirs & ~ours, lines, 8, CV_32S);
    std::vector<int> tied(static_cast<size_t>(count)), pixels(static_cast<size_t>(count));
    for (int y = 0; y < lines.rows; y++) {
        for (int x = 0; x < lines.cols; x++) {
            const auto line = static_cast<size_t>(lines.at<int>(y, x));
            pixels[line]++;
            tied[line] += isTied(dx, dy, x, y);
        }
    }
    for (size_t line = 1; line < pixels.size(); line++) {
        found.tied += tied[line];
        (tied[line] ? found.led : found.others) += pixels[line] - tied[line];
    }
    return found;
}

static cv::Mat captioned(const cv::Mat& image, const std::string& caption)
{
    cv::Mat panel;
    cv::copyMakeBorder(image, panel, 24, 8, 4, 4, cv::BORDER_CONSTANT, cv::Scalar(32, 32, 32));
    cv::putText(panel, caption, {6, 17}, cv::FONT_HERSHEY_SIMPLEX, 0.42, cv::Scalar(230, 230, 230), 1, cv::LINE_AA);
    return panel;
}

// Both edge images, and where they differ: red where OpenCV has an edge alone, cyan where ours does.
static cv::Mat besideEachOther(const cv::Mat& ours, const cv::Mat& theirs, const std::string& picture, double share)
{
    cv::Mat panels[3];
    cv::cvtColor(ours, panels[0], cv::COLOR_GRAY2RGB);
    cv::cvtColor(theirs, panels[1], cv::COLOR_GRAY2RGB);
    panels[2] = panels[0] / 3;
    panels[2].setTo(cv::Scalar(255, 60, 60), theirs & ~ours);
    panels[2].setTo(cv::Scalar(60, 255, 255), ours & ~theirs);
    const cv::String percent = cv::format("red: %.3f %% differ, by ties of magnitude", share);
    cv::Mat row;
    cv::hconcat(std::vector<cv::Mat>{captioned(panels[0], picture + " picture: ruxiCanny_16s8u_C1R"),
                                     captioned(panels[1], "OpenCV's Canny on the same gradients"),
                                     captioned(panels[2], percent)}, row);
    return row;
}

// A tie along the gradient suppresses both pixels in ours and one of them in OpenCV. Nothing else tells the two apart
// but the bounds between the directions, in their fourth digit.
TEST_P(OpenCvFilters, canny)
{
    cv::Mat smooth;
    cv::GaussianBlur(pictures().grey, smooth, cv::Size(5, 5), 1.2);
    std::vector<cv::Mat> rows;
    for (const cv::Mat& src : {pictures().grey, smooth}) {
        const cv::Mat dx = derivative(src, -1), dy = derivative(src, 0), ours = edgesOf(dx, dy, 60, 150);
        cv::Mat theirs;
        cv::Canny(dx, dy, theirs, 60, 150, false);
        const Differences found = differencesOf(ours, theirs, dx, dy);
        const int all = found.onlyOurs + found.tied + found.led + found.others;
        const double share = 100.0 * all / static_cast<double>(src.total());
        const char* const picture = src.data == smooth.data ? "smoothed" : "plain";
        std::printf("%s, %s picture: %d edge pixels, OpenCV %d; %.3f %% of all pixels differ: %d only ours, %d where "
                    "two magnitudes tie, %d that such a pixel leads to, %d others\n",
                    nameOf(level()), picture, cv::countNonZero(ours), cv::countNonZero(theirs), share, found.onlyOurs,
                    found.tied, found.led, found.others);
        rows.push_back(besideEachOther(ours, theirs, picture, share));
        EXPECT_GT(cv::countNonZero(ours), 2000);
        EXPECT_EQ(found.onlyOurs, 0);
        EXPECT_EQ(found.others, 0);
    }
    cv::Mat sheet;
    cv::vconcat(rows, sheet);
    const std::string file = std::string(RUX_SHEETS "/canny_beside_opencv_") + nameOf(level()) + ".png";
    EXPECT_TRUE(stbi_write_png(file.c_str(), sheet.cols, sheet.rows, 3, sheet.data, stepOf(sheet))) << file;
}

}
