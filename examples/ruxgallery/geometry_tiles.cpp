#include "tile.h"

namespace {

constexpr int zoom = 4;

// A detail whose sides are even, so that its chroma planes are exactly half.
Picture detail(const Picture& picture)
{
    const ruxiSize size = {picture.width / zoom / 2 * 2, picture.height / zoom / 2 * 2};
    return part(picture, {picture.width * 5 / 8, picture.height * 5 / 8, size.width, size.height});
}

Tile enlarged(const Picture& picture, const char* title, const char* arguments, ruxInterpolation interpolation)
{
    const Picture source = detail(picture);
    Picture result(source.width * zoom, source.height * zoom);
    Planes420 small = emptyPlanes(sizeOf(source)), large = emptyPlanes(sizeOf(result));
    toPlanes(source, small);
    const double seconds = timed([&] { resize(small, large, interpolation); });
    toPicture(large, result);
    return {title, "ruxiResize_8u_C1R", arguments, seconds, result};
}

Tile nearest(const Picture& picture)
{
    return enlarged(picture, "a detail at 400%: nearest", "ruxInterpolationNearest", ruxInterpolationNearest);
}

Tile linear(const Picture& picture)
{
    return enlarged(picture, "a detail at 400%: linear", "ruxInterpolationLinear", ruxInterpolationLinear);
}

Tile cubic(const Picture& picture)
{
    return enlarged(picture, "a detail at 400%: cubic", "ruxInterpolationCubic", ruxInterpolationCubic);
}

Tile reduced(const Picture& picture, const char* title, const char* arguments, ruxInterpolation interpolation)
{
    Picture result(picture.width / zoom, picture.height / zoom);
    Planes420 large = emptyPlanes(sizeOf(picture)), small = emptyPlanes(sizeOf(result));
    toPlanes(picture, large);
    const double seconds = timed([&] { resize(large, small, interpolation); });
    toPicture(small, result);
    return {title, "ruxiResize_8u_C1R", arguments, seconds, magnified(result, zoom)};
}

Tile reducedByNearest(const Picture& picture)
{
    return reduced(picture, "to 25%, seen x4: nearest", "ruxInterpolationNearest", ruxInterpolationNearest);
}

Tile reducedBySupersampling(const Picture& picture)
{
    return reduced(picture, "to 25%, seen x4: supersampling", "ruxInterpolationSuperSample",
                   ruxInterpolationSuperSample);
}

}

Family geometryTiles()
{
    return {"Geometry", {nearest, linear, cubic, reducedByNearest, reducedBySupersampling}};
}
