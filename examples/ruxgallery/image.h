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
    Element* at(int x, int y) { return data() + size_t(y) * size_t(width) + size_t(x); }
    const Element* at(int x, int y) const { return data() + size_t(y) * size_t(width) + size_t(x); }
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

Plane interleaved422(const Picture& picture);             // Y0 Cb Y1 Cr, two bytes a pixel

Plane luma(const Picture& picture);
Picture grey(const Plane& plane);                         // R = G = B = the plane
FloatImage floats(const Picture& picture);                // three channels, interleaved
Picture rounded(const FloatImage& image);                 // the way back, saturated
Picture part(const Picture& picture, ruxiRect place);
Plane bordered(const Plane& plane, int border);           // its edges repeated outward on all sides

// Red and blue exchanged in place in every other row of the upper half and every other column of the lower half.
void stripe(Picture& picture);

void resize(const Plane& plane, Plane& result, ruxInterpolation interpolation);
void resize(const Planes420& planes, Planes420& result, ruxInterpolation interpolation);

// Each pixel as a square of so many pixels: to look at, no picture work.
Picture magnified(const Picture& picture, int times);

// A detail from the middle height of a picture and, to the right of it, of what became of the picture. Together they
// are as large as the picture.
Picture beforeAndAfter(const Picture& before, const Picture& after, int times);
