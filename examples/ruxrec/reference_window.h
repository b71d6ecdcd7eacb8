// A block of a reference in rows of 32 bytes. Some of the library's measures find the row below only in rows of up to
// 255 bytes: half-sample modes are measured in a window.
#pragma once

#include "prediction.h"

class ReferenceWindow {
public:
    static constexpr int step = 32, largest = 18;

    // The block of whole samples from (x, y) on, as far as it lies in the plane.
    void load(const Plane& plane, int x, int y)
    {
        left_ = x;
        top_ = y;
        const int firstX = x < 0 ? 0 : x, firstY = y < 0 ? 0 : y;
        const int endX = x + largest > plane.width ? plane.width : x + largest;
        const int endY = y + largest > plane.height ? plane.height : y + largest;
        ruxiCopy_8u_C1R(plane.samples + int64_t(firstY) * plane.step + firstX, plane.step, at(firstX, firstY), step,
                        {endX - firstX, endY - firstY});
    }

    uint8_t* at(int x, int y) { return samples_ + (y - top_) * step + x - left_; }

private:
    int left_ = 0;
    int top_ = 0;
    alignas(16) uint8_t samples_[largest * step];
};
