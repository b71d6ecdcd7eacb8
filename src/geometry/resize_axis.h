// Resize: how each axis of the destination lies on the source.
#pragma once

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

// Added before every truncation, so that what fell just below a whole number still lands on it.
constexpr double resizeEpsilon = 1e-07;

// Toward zero; what has no place in 32 bits gives the smallest number, as the processor's conversion does.
inline int32_t truncated(double value)
{
    return value > -2147483649.0 && value < 2147483648.0 ? static_cast<int32_t>(value) : INT32_MIN;
}

struct Axis {
    int32_t length;        // destination pixels to produce
    int32_t imageStart;    // where the rectangle begins in the source image
    int32_t imageLength;   // source image from edge to edge
    double start;          // source position of destination pixel 0, from the rectangle's first pixel
    double step;           // source distance between neighbouring destination pixels
};

// The part of a source rectangle's side that lies in the image.
inline int32_t trimmedLength(int32_t start, int32_t length, int32_t imageLength)
{
    const int32_t end = static_cast<int32_t>(static_cast<uint32_t>(start) + static_cast<uint32_t>(length));
    return end > imageLength ? imageLength - start : length;
}

// The destination pixels that a side of that many source pixels gives; a smaller region crops them.
inline int32_t producedLength(int32_t sourceLength, double factor, int32_t regionLength)
{
    const int32_t length = truncated(sourceLength * factor + resizeEpsilon);
    if (length >= regionLength) return regionLength;
    return length < 1 ? 1 : length;
}

inline bool isWholeRatio(double factor)
{
    const double ratio = factor >= 1.0 ? factor : 1.0 / factor;
    return ratio - truncated(ratio) == 0.0;
}

// Corner-aligned: the first and the last pixels of source and destination coincide. Nearest starts half a pixel on, so
// that truncation rounds; at a whole ratio it repeats or skips pixels without that shift.
inline Axis layAxis(int32_t imageStart, int32_t imageLength, int32_t length, int32_t regionLength, double factor,
                    bool isNearest)
{
    const int32_t sourceLength = trimmedLength(imageStart, length, imageLength);
    Axis axis = {producedLength(sourceLength, factor, regionLength), imageStart, imageLength, 0.0, 0.0};
    if (isNearest && isWholeRatio(factor)) {
        axis.step = 1.0 / factor;
    } else {
        // The reciprocal is formed first: (n - 1) * (1 / (span - 1)) and (n - 1) / (span - 1) differ in the last bit.
        const double span = sourceLength * factor;
        axis.step = span > 1.0 ? (sourceLength - 1) * (1.0 / (span - 1.0)) : 0.0;
        axis.start = isNearest ? 0.5 : 0.0;
    }
    return axis;
}

// Calls visit(entry, position, index) for each destination pixel. Positions are a running sum, rounded at each step.
template <typename Visit>
inline void forEachPosition(const Axis& axis, Visit visit)
{
    double position = axis.start;
    for (int32_t entry = 0; entry < axis.length; ++entry, position += axis.step)
        visit(entry, position, truncated(position + resizeEpsilon));
}

// Vector bodies work up to the next whole vector: tables of columns end in copies of their last entry, which are as
// safe to follow, and row buffers in room for as many elements.
constexpr int32_t spareColumns = 4;

template <typename Element>
inline void repeatLast(Element* entries, int32_t count)
{
    for (int32_t i = 0; i < spareColumns; ++i) entries[count + i] = entries[count - 1];
}

}
}
