// Images in the forms that the operations take, and the roads between them, all through the library.
#pragma once

#include <stdexcept>
#include <vector>

#include "picture.h"
#include "ruxlib.h"

template <typename Element>
struct Image {
    int width = 0;     // in elements
    int height = 0;
    std::vector<Element> elements;

    Image() = default;
    explicit Image(ruxiSize size)
        : width(size.width), height(size.height), elements(size_t(size.width) * size_t(size.height))
    {
    }

    ruxiSize size() const { return {width, height}; }
    int step() const { return width * int(sizeof(Element)); }
    Element* data() { return elements.data(); }
    const Element* data() const { return elements.data(); }
};

using Plane = Image<uint8_t>;
using FloatImage = Image<float>;

// Y, Cb, Cr; the chroma planes have half the size, rounded up.
struct Planes420 {
    Plane planes[3];
};

inline void require(ruxStatus status)
{
    if (status < ruxStatusOk) throw std::runtime_error(ruxGetStatusString(status));
}

inline ruxiSize sizeOf(const Picture& picture) { return {picture.width, picture.height}; }
inline ruxiSize half(ruxiSize size) { return {(size.width + 1) / 2, (size.height + 1) / 2}; }

// The picture as one channel, three times as wide, for operations that treat all bytes alike.
inline ruxiSize bytesOf(const Picture& picture) { return {picture.width * 3, picture.height}; }

Planes420 emptyPlanes(ruxiSize size);
void toPlanes(const Picture& picture, Planes420& planes);
void toPicture(const Planes420& planes, Picture& picture);

Plane luma(const Picture& picture);
Picture grey(const Plane& plane);                         // R = G = B = the plane
FloatImage floats(const Picture& picture);                // three channels, interleaved
Picture rounded(const FloatImage& image);                 // the way back, saturated
Picture part(const Picture& picture, ruxiRect place);

// Red and blue exchanged in place in every other row of the upper half and every other column of the lower half.
void stripe(Picture& picture);

void resize(const Plane& plane, Plane& result, ruxInterpolation interpolation);
void resize(const Planes420& planes, Planes420& result, ruxInterpolation interpolation);

// Each pixel as a square of so many pixels: to look at, no picture work.
Picture magnified(const Picture& picture, int times);
