// Canny as px and m6 have it: a map of float magnitudes and a map of direction codes.
//
// The buffer holds, from its start and at any address: the direction map, a byte a pixel; the magnitude map, in a frame
// of zeros one pixel wide; the stack. The stack holds 32-bit numbers of map elements. Suppression pushes a pixel once,
// and a pixel on the stack is marked in dst, so that the search does not push it again: of
// 12 * (width + 2) * (height + 2) bytes the maps leave more than 7 * width * height, and the stack takes no more than
// 4 * width * height.
//
// Magnitudes are whole numbers up to 65536, exact as floats. Floats that are not negative stand in the order of their
// bits, and a negated one is below all of them: they are compared as integers.
#pragma once

#include "filter/canny.h"
#include "frame/float_environment.h"

namespace rux::RUX_LEVEL {
namespace {

// The level's: |dx| + |dy| of a row as integers, 0 where it is not above the limit.
void magnitudeRow(const uint8_t* dx, const uint8_t* dy, uint8_t* magnitudes, int32_t width, int32_t limit);

constexpr int32_t largestMagnitude = 2 * 32768;

// A whole number is above the threshold when it is above this one.
inline int32_t wholeThreshold(float threshold)
{
    if (!(threshold < largestMagnitude)) return largestMagnitude;
    return threshold > 0 ? static_cast<int32_t>(threshold) : 0;
}

inline void magnitudePixel(const uint8_t* dx, const uint8_t* dy, uint8_t* magnitudes, ptrdiff_t x, int32_t limit)
{
    const int32_t across = load<int16_t>(dx + 2 * x);
    const int32_t down = load<int16_t>(dy + 2 * x);
    const int32_t magnitude = (across < 0 ? -across : across) + (down < 0 ? -down : down);
    store(magnitudes + 4 * x, magnitude > limit ? magnitude : 0);
}

inline void clear(uint8_t* at, size_t bytes)
{
    for (; bytes >= 4; bytes -= 4, at += 4) store<uint32_t>(at, 0);
    for (; bytes > 0; --bytes) *at++ = 0;
}

enum Direction : uint8_t { horizontal = 1, falling, vertical, rising };

// With c = 0xD41206 / 2^25, the float nearest to 0.4142: vertical where 2|dx| + c|dx| < |dy|, horizontal where
// |dy| < c|dx|. Times 2^25 all terms are whole numbers below 2^42: the integer test is the exact one, and so is the
// test in double precision.
inline Direction directionOf(int32_t dx, int32_t dy)
{
    const uint64_t across = static_cast<uint32_t>(dx < 0 ? -dx : dx);
    const uint64_t scaledDy = static_cast<uint64_t>(static_cast<uint32_t>(dy < 0 ? -dy : dy)) << 25;
    const uint64_t bound = across * 0xD41206;
    if ((across << 26) + bound < scaledDy) return vertical;
    if (scaledDy < bound) return horizontal;
    return (dx ^ dy) < 0 ? rising : falling;
}

class DirectionCanny {
public:
    DirectionCanny(const CannyImages& images, int32_t low, int32_t high)
        : images(images), low(low), high(high), directions(images.buffer),
          stride(4 * (static_cast<ptrdiff_t>(images.width) + 2)),
          magnitudes(directions + static_cast<ptrdiff_t>(images.width) * images.height),
          stack(magnitudes + stride * (static_cast<ptrdiff_t>(images.height) + 2))
    {
    }

    // A row is suppressed as soon as the row below it has its magnitudes. dst may overlap the gradients: it is written
    // when they have been read.
    void run()
    {
        clear(magnitudes, static_cast<size_t>(stride));
        gradientRow(0);
        for (int32_t y = 0; y < images.height; ++y) {
            if (y + 1 < images.height)
                gradientRow(y + 1);
            else
                clear(mapRow(y + 1) - 4, static_cast<size_t>(stride));
            suppressRow(y);
        }
        for (int32_t y = 0; y < images.height; ++y) clear(dstRow(y), static_cast<size_t>(images.width));
        markPushed();
        followEdges();
    }

private:
    uint8_t* mapRow(int32_t y) const { return magnitudes + stride * (ptrdiff_t{y} + 1) + 4; }
    uint8_t* dstRow(int32_t y) const { return images.dst + images.dstStep * y; }
    uint8_t* directionRow(int32_t y) const { return directions + static_cast<ptrdiff_t>(images.width) * y; }

    void gradientRow(int32_t y) const
    {
        const uint8_t* const dx = images.dx + images.dxStep * y;
        const uint8_t* const dy = images.dy + images.dyStep * y;
        uint8_t* const map = mapRow(y);
        uint8_t* const direction = directionRow(y);
        const ptrdiff_t width = images.width;
        magnitudeRow(dx, dy, map, images.width, low);
        for (ptrdiff_t x = 0; x < width; ++x) {
            const int32_t magnitude = load<int32_t>(map + 4 * x);
            if (magnitude == 0) continue;
            store<float>(map + 4 * x, static_cast<float>(magnitude));
            direction[x] = directionOf(load<int16_t>(dx + 2 * x), load<int16_t>(dy + 2 * x));
        }
        store<int32_t>(map - 4, 0);
        store<int32_t>(map + 4 * width, 0);
    }

    // Pixels before this one may be negated already, those after it are not.
    void suppressRow(int32_t y)
    {
        const ptrdiff_t offsets[] = {4, stride + 4, stride, stride - 4};
        const uint8_t* const direction = directionRow(y);
        uint8_t* const map = mapRow(y);
        const ptrdiff_t width = images.width;
        for (ptrdiff_t x = 0; x < width; ++x) {
            uint8_t* const at = map + 4 * x;
            const int32_t magnitude = load<int32_t>(at);
            if (magnitude == 0) continue;
            const ptrdiff_t offset = offsets[direction[x] - horizontal];
            const int32_t next = load<int32_t>(at + offset);
            const int32_t previous = load<int32_t>(at - offset) & INT32_MAX;
            if (magnitude <= next || previous >= magnitude)
                store(at, magnitude | INT32_MIN);
            else if (magnitude > high)
                push(static_cast<uint32_t>((at - magnitudes) / 4));
        }
    }

    void push(uint32_t element) { store(stack + 4 * depth++, element); }

    // The pixel of an element of the magnitude map that is not of the frame.
    uint8_t* dstPixel(uint32_t element) const
    {
        const uint32_t width = static_cast<uint32_t>(images.width) + 2;
        return dstRow(static_cast<int32_t>(element / width) - 1) + element % width - 1;
    }

    void markPushed() const
    {
        for (size_t i = 0; i < depth; ++i) *dstPixel(load<uint32_t>(stack + 4 * i)) = 255;
    }

    // Survivors are above the low threshold; what is suppressed and the frame are not above 0.
    void followEdges()
    {
        const uint32_t width = static_cast<uint32_t>(images.width) + 2;
        while (depth > 0) {
            const uint32_t element = load<uint32_t>(stack + 4 * --depth);
            const uint8_t* const at = magnitudes + 4 * static_cast<size_t>(element);
            uint8_t* const pixel = dstPixel(element);
            for (int32_t y = -1; y <= 1; ++y) {
                for (int32_t x = -1; x <= 1; ++x) {
                    uint8_t* const mark = pixel + y * images.dstStep + x;
                    if (load<int32_t>(at + y * stride + 4 * x) <= 0 || *mark != 0) continue;
                    *mark = 255;
                    push(element + y * width + x);
                }
            }
        }
    }

    const CannyImages& images;
    const int32_t low;    // whole
    const int32_t high;   // the bits of a float
    uint8_t* const directions;
    const ptrdiff_t stride;
    uint8_t* const magnitudes;
    uint8_t* const stack;
    size_t depth = 0;
};

void cannyEdges(const CannyImages& images, float lowThresh, float highThresh)
{
    const float high = static_cast<float>(wholeThreshold(highThresh));
    DirectionCanny(images, wholeThreshold(lowThresh), static_cast<int32_t>(bitsOf(high))).run();
}

}
}
