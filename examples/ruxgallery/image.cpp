#include "image.h"

#include <algorithm>

namespace {

struct PlaneArguments {
    uint8_t* data[3];
    const uint8_t* constData[3];
    int32_t steps[3];

    explicit PlaneArguments(const Planes420& planes)
    {
        for (int index = 0; index < 3; ++index) {
            constData[index] = planes.planes[index].data();
            data[index] = const_cast<uint8_t*>(constData[index]);
            steps[index] = planes.planes[index].step();
        }
    }
};

Picture beside(const Picture& left, const Picture& right)
{
    Picture result(left.width + right.width, left.height);
    require(ruxiCopy_8u_C3R(left.pixels.data(), left.step(), result.at(0, 0), result.step(), sizeOf(left)));
    require(ruxiCopy_8u_C3R(right.pixels.data(), right.step(), result.at(left.width, 0), result.step(), sizeOf(right)));
    return result;
}

}

Planes420 emptyPlanes(ruxiSize size)
{
    return {{Plane(size), Plane(half(size)), Plane(half(size))}};
}

void toPlanes(const Picture& picture, Planes420& planes)
{
    const PlaneArguments dst(planes);
    require(ruxiRGBToYCbCr420_8u_C3P3R(picture.pixels.data(), picture.step(), dst.data, dst.steps, sizeOf(picture)));
}

void toPicture(const Planes420& planes, Picture& picture)
{
    const PlaneArguments src(planes);
    require(ruxiYCbCr420ToRGB_8u_P3C3R(src.constData, src.steps, picture.pixels.data(), picture.step(),
                                       sizeOf(picture)));
}

Plane interleaved422(const Picture& picture)
{
    Plane result({picture.width * 2, picture.height});
    require(ruxiRGBToYCbCr422_8u_C3C2R(picture.pixels.data(), picture.step(), result.data(), result.step(),
                                       sizeOf(picture)));
    return result;
}

Plane luma(const Picture& picture)
{
    Planes420 planes = emptyPlanes(sizeOf(picture));
    toPlanes(picture, planes);
    return std::move(planes.planes[0]);
}

// YUV has the full range of luma, so that with chroma at 128 all three channels are the plane's byte.
Picture grey(const Plane& plane)
{
    Plane neutral(half(plane.size()));
    require(ruxiSet_8u_C1R(128, neutral.data(), neutral.step(), neutral.size()));
    const uint8_t* const src[] = {plane.data(), neutral.data(), neutral.data()};
    Picture result(plane.width, plane.height);
    require(ruxiYUV420ToRGB_8u_P3C3(src, result.pixels.data(), plane.size()));
    return result;
}

FloatImage floats(const Picture& picture)
{
    FloatImage result(bytesOf(picture));
    require(ruxiConvert_8u32f_C1R(picture.pixels.data(), picture.step(), result.data(), result.step(), result.size()));
    return result;
}

Picture rounded(const FloatImage& image)
{
    Picture result(image.width / 3, image.height);
    require(ruxiConvert_32f8u_C1R(image.data(), image.step(), result.pixels.data(), result.step(), image.size(), 1));
    return result;
}

Picture part(const Picture& picture, ruxiRect place)
{
    Picture result(place.width, place.height);
    require(ruxiCopy_8u_C3R(picture.at(place.x, place.y), picture.step(), result.pixels.data(), result.step(),
                            sizeOf(result)));
    return result;
}

Plane bordered(const Plane& plane, int border)
{
    Plane result({plane.width + 2 * border, plane.height + 2 * border});
    require(ruxiCopyReplicateBorder_8u_C1R(plane.data(), plane.step(), plane.size(), result.data(), result.step(),
                                           result.size(), border, border));
    return result;
}

// Every other row is an image of twice the stride. Every other pixel of rows without gaps is an image one pixel wide
// with a stride of two pixels, which begins anew in each row where the width is odd.
void stripe(Picture& picture)
{
    const int32_t order[] = {2, 1, 0};
    const int above = picture.height / 4 * 2, below = picture.height - above;
    require(ruxiSwapChannels_8u_C3IR(picture.at(0, 0), 2 * picture.step(), {picture.width, above / 2}, order));
    const int rows = picture.width % 2 ? 1 : below;
    for (int y = above; y < picture.height; y += rows)
        require(ruxiSwapChannels_8u_C3IR(picture.at(0, y), 6, {1, (picture.width + 1) / 2 * rows}, order));
}

void resize(const Plane& plane, Plane& result, ruxInterpolation interpolation)
{
    require(ruxiResize_8u_C1R(plane.data(), plane.size(), plane.step(), {0, 0, plane.width, plane.height},
                              result.data(), result.step(), result.size(), double(result.width) / plane.width,
                              double(result.height) / plane.height, interpolation));
}

void resize(const Planes420& planes, Planes420& result, ruxInterpolation interpolation)
{
    for (int index = 0; index < 3; ++index) resize(planes.planes[index], result.planes[index], interpolation);
}

Picture magnified(const Picture& picture, int times)
{
    Picture result(picture.width * times, picture.height * times);
    for (int y = 0; y < result.height; ++y)
        for (int x = 0; x < result.width; ++x) std::copy_n(picture.at(x / times, y / times), 3, result.at(x, y));
    return result;
}

Picture beforeAndAfter(const Picture& before, const Picture& after, int times)
{
    const ruxiSize size = {before.width / 2 / times, before.height / times};
    const ruxiRect place = {before.width / 4, (before.height - size.height) / 2, size.width, size.height};
    return magnified(beside(part(before, place), part(after, place)), times);
}
