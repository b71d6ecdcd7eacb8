#include "model/canny.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "model/wrapping.h"

namespace rux::model {
namespace {

ruxStatus checked(bool null, int32_t srcDxStep, int32_t srcDyStep, int32_t dstStep, ruxiSize roi, float low, float high)
{
    if (null) return ruxStatusNullPointer;
    if (srcDxStep < 1 || srcDyStep < 1 || dstStep < 1) return ruxStatusStepError;
    if (roi.width < 1 || roi.height < 1) return ruxStatusSizeError;
    if (srcDxStep % 2 != 0 || srcDyStep % 2 != 0) return ruxStatusStepNotPixelMultiple;
    if (low < 0 || low > high) return ruxStatusBadArgument;
    return ruxStatusOk;
}

struct Gradients {
    const int16_t* dx;
    int32_t dxStep;
    const int16_t* dy;
    int32_t dyStep;
    ruxiSize roi;

    int16_t x(int column, int row) const { return load<int16_t>(at(dx, dxStep, column, row)); }
    int16_t y(int column, int row) const { return load<int16_t>(at(dy, dyStep, column, row)); }
};

// One value for each pixel of the region, 0 around it.
template <class T>
class Map {
public:
    explicit Map(ruxiSize roi) : roi(roi), values(static_cast<size_t>(roi.width + 2) * (roi.height + 2)) {}

    bool isInside(int x, int y) const { return x >= 0 && y >= 0 && x < roi.width && y < roi.height; }
    T& operator()(int x, int y) { return values[static_cast<size_t>(y + 1) * (roi.width + 2) + x + 1]; }
    const T& operator()(int x, int y) const { return const_cast<Map&>(*this)(x, y); }

    template <class Action>
    void eachPixel(const Action& action) const
    {
        for (int y = 0; y < roi.height; y++) {
            for (int x = 0; x < roi.width; x++) action(x, y);
        }
    }

private:
    ruxiSize roi;
    std::vector<T> values;
};

struct Pixel {
    int x, y;
};
using Stack = std::vector<Pixel>;

// From the pixels on the stack to all that can be reached. `accept` tells whether the pixel is new and marks it;
// `continues` whether a neighbour goes on the stack.
template <class T, class Accept, class Continues>
void followEdges(const Map<T>& map, Stack stack, const Accept& accept, const Continues& continues)
{
    while (!stack.empty()) {
        const Pixel pixel = stack.back();
        stack.pop_back();
        if (!accept(pixel.x, pixel.y)) continue;
        for (int y = pixel.y - 1; y <= pixel.y + 1; y++) {
            for (int x = pixel.x - 1; x <= pixel.x + 1; x++) {
                const bool neighbour = x != pixel.x || y != pixel.y;
                if (neighbour && map.isInside(x, y) && continues(x, y)) stack.push_back({x, y});
            }
        }
    }
}

// The neighbour that comes later in raster order; the other one lies on the opposite side.
Pixel directionInDouble(int16_t dx, int16_t dy)
{
    const uint32_t bits = 0x3ED41206;
    const double tangent = static_cast<double>(load<float>(&bits));
    const double ax = std::abs(int(dx)), ay = std::abs(int(dy));
    if (2 * ax + tangent * ax < ay) return {0, 1};
    if (ay < tangent * ax) return {1, 0};
    return (dx < 0) == (dy < 0) ? Pixel{1, 1} : Pixel{-1, 1};
}

void cannyInFloat(const Gradients& gradients, uint8_t* dst, int32_t dstStep, float low, float high)
{
    Map<float> map(gradients.roi);
    map.eachPixel([&](int x, int y) {
        const auto sum = static_cast<float>(std::abs(int(gradients.x(x, y))) + std::abs(int(gradients.y(x, y))));
        map(x, y) = sum > low ? sum : 0;
    });
    Stack stack;
    map.eachPixel([&](int x, int y) {
        *at(dst, dstStep, x, y) = 0;
        float& magnitude = map(x, y);
        if (magnitude == 0) return;
        const Pixel to = directionInDouble(gradients.x(x, y), gradients.y(x, y));
        const float next = map(x + to.x, y + to.y), previous = map(x - to.x, y - to.y);
        if (magnitude <= next || std::abs(previous) >= magnitude) magnitude = -magnitude;
        else if (magnitude > high) stack.push_back({x, y});
    });
    const auto isNew = [&](int x, int y) { return *at(dst, dstStep, x, y) == 0; };
    followEdges(
        map, stack,
        [&](int x, int y) {
            const bool accepted = isNew(x, y);
            *at(dst, dstStep, x, y) = 255;
            return accepted;
        },
        [&](int x, int y) { return map(x, y) > low && isNew(x, y); });
}

// What 32 bits do not hold becomes 0x80000000.
int16_t lowHalf(float threshold)
{
    const bool fits = threshold < 2147483648.0f;
    return Wrapping(fits ? static_cast<int32_t>(threshold) : INT32_MIN).low16();
}

int16_t negated(int16_t value)
{
    return (Wrapping(0) - Wrapping(value)).low16();
}

// -32768 stays.
int16_t magnitudeOf(int16_t value)
{
    return value < 0 ? negated(value) : value;
}

int16_t saturatedSum(int16_t a, int16_t b)
{
    return static_cast<int16_t>(std::clamp(a + b, INT16_MIN, INT16_MAX));
}

// The greater of the two neighbours along the gradient.
int16_t greaterNeighbour(const Map<int16_t>& map, const Gradients& gradients, int x, int y)
{
    const int16_t dx = gradients.x(x, y), dy = gradients.y(x, y);
    const int64_t ax = magnitudeOf(dx), ay = magnitudeOf(dy);
    Pixel to = (dx < 0) == (dy < 0) ? Pixel{1, 1} : Pixel{-1, 1};
    if (ax * 1697 > ay * 4096) to = {1, 0};
    if (!(ax * 9889 > ay * 4096)) to = {0, 1};
    return std::max(magnitudeOf(map(x - to.x, y - to.y)), map(x + to.x, y + to.y));
}

constexpr int16_t acceptedEdge = -1;

void cannyInWords(const Gradients& gradients, uint8_t* dst, int32_t dstStep, int16_t low, int16_t high)
{
    Map<int16_t> map(gradients.roi);
    map.eachPixel([&](int x, int y) {
        const int16_t sum = saturatedSum(magnitudeOf(gradients.x(x, y)), magnitudeOf(gradients.y(x, y)));
        map(x, y) = sum > low ? sum : 0;
    });
    const auto intact = map;
    Stack stack;
    map.eachPixel([&](int x, int y) {
        const int block = x / 4 * 4;
        bool positive = false;
        for (int i = block; i < std::min(block + 4, gradients.roi.width); i++) positive |= intact(i, y) > 0;
        if (!positive) return;
        int16_t& magnitude = map(x, y);
        if (magnitude <= greaterNeighbour(map, gradients, x, y)) magnitude = negated(magnitude);
        if (magnitude > high) stack.push_back({x, y});
    });
    followEdges(
        map, stack,
        [&](int x, int y) {
            const bool accepted = map(x, y) != acceptedEdge;
            map(x, y) = acceptedEdge;
            return accepted;
        },
        [&](int x, int y) { return map(x, y) > low; });
    map.eachPixel([&](int x, int y) { *at(dst, dstStep, x, y) = map(x, y) == acceptedEdge ? 255 : 0; });
}

}

ruxStatus ruxiCannyGetSize(Level, ruxiSize roiSize, int32_t* bufferSize)
{
    if (roiSize.width < 1 || roiSize.height < 1) return ruxStatusSizeError;
    if (!bufferSize) return ruxStatusNullPointer;
    store(bufferSize, 12 * (roiSize.width + 2) * (roiSize.height + 2));
    return ruxStatusOk;
}

ruxStatus ruxiCanny_16s8u_C1R(Level level, const int16_t* srcDx, int32_t srcDxStep, const int16_t* srcDy,
                              int32_t srcDyStep, uint8_t* dst, int32_t dstStep, ruxiSize roiSize, float lowThresh,
                              float highThresh, uint8_t* buffer)
{
    const ruxStatus status = checked(!srcDx || !srcDy || !dst || !buffer, srcDxStep, srcDyStep, dstStep, roiSize,
                                     lowThresh, highThresh);
    if (status != ruxStatusOk) return status;
    const Gradients gradients = {srcDx, srcDxStep, srcDy, srcDyStep, roiSize};
    if (level == px || level == m6) cannyInFloat(gradients, dst, dstStep, lowThresh, highThresh);
    else cannyInWords(gradients, dst, dstStep, lowHalf(lowThresh), lowHalf(highThresh));
    return ruxStatusOk;
}

}
