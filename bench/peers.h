// OpenCV's view of a benchmark image, which the work must hold on to (a view does not).
#pragma once

#ifdef RUX_WITH_OPENCV
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "image.h"

namespace rux::bench {

template <typename Element>
cv::Mat matrixOf(const Image<Element>& image, Size size, int32_t channels = 1)
{
    return cv::Mat(size.height, size.width, CV_MAKETYPE(cv::DataType<Element>::depth, channels), image.data(),
                   static_cast<size_t>(image.step()));
}

}
#endif
