// What the tests beside OpenCV share: real pictures, and images as both libraries see them.
#pragma once

#include <gtest/gtest.h>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "ruxlib.h"
#include "support/levels.h"

#define STB_IMAGE_IMPLEMENTATION
#include <stb/stb_image.h>

namespace rux::test {

// A photograph, in colour, in grey, and a second grey one: the first turned by a few pixels.
struct Pictures {
    cv::Mat colour, grey, other, floats;

    Pictures()
    {
        int width = 0, height = 0, channels = 0;
        uint8_t* const loaded = stbi_load(RUX_PICTURE, &width, &height, &channels, 3);
        if (!loaded) return;
        colour = cv::Mat(height, width, CV_8UC3, loaded).clone();
        stbi_image_free(loaded);
        cv::cvtColor(colour, grey, cv::COLOR_RGB2GRAY);
        other = grey.clone();
        grey.colRange(5, width).copyTo(other.colRange(0, width - 5));
        grey.convertTo(floats, CV_32F, 1.7, -60.25);
    }
};

class OpenCv : public LevelTest {
protected:
    static const Pictures& pictures()
    {
        static const Pictures all;
        return all;
    }
    void SetUp() override
    {
        LevelTest::SetUp();
        ASSERT_FALSE(pictures().colour.empty()) << "no picture at " RUX_PICTURE;
    }
};

inline ruxiSize sizeOf(const cv::Mat& image)
{
    return {image.cols, image.rows};
}

inline int32_t stepOf(const cv::Mat& image)
{
    return static_cast<int32_t>(image.step);
}

inline bool same(const cv::Mat& a, const cv::Mat& b)
{
    return a.size() == b.size() && a.type() == b.type() && cv::norm(a, b, cv::NORM_INF) == 0;
}

}
