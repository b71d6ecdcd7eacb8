#include <cstdio>

#include "tile.h"

namespace {

constexpr int magnification = 4;

std::string meanDifference(const Picture& before, const Picture& after)
{
    double norm[3] = {};
    require(ruxiNormDiff_L1_8u_C3R(before.pixels.data(), before.step(), after.pixels.data(), after.step(),
                                   sizeOf(before), norm));
    char text[64];
    std::snprintf(text, sizeof text, "mean change of a byte: %.2f",
                  (norm[0] + norm[1] + norm[2]) / (3.0 * before.width * before.height));
    return text;
}

Picture changes(const Picture& before, const Picture& after)
{
    Picture result(before.width, before.height);
    require(ruxiAbsDiff_8u_C1R(before.pixels.data(), before.step(), after.pixels.data(), after.step(),
                               result.pixels.data(), result.step(), bytesOf(before)));
    return result;
}

double road420(const Picture& picture, Picture& result)
{
    Planes420 planes = emptyPlanes(sizeOf(picture));
    result = Picture(picture.width, picture.height);
    return timed([&] {
        toPlanes(picture, planes);
        toPicture(planes, result);
    });
}

double road422(const Picture& picture, Picture& result)
{
    Plane interleaved({picture.width * 2, picture.height});
    result = Picture(picture.width, picture.height);
    return timed([&] {
        require(ruxiRGBToYCbCr422_8u_C3C2R(picture.pixels.data(), picture.step(), interleaved.data(),
                                           interleaved.step(), sizeOf(picture)));
        require(ruxiYCbCr422ToRGB_8u_C2C3R(interleaved.data(), interleaved.step(), result.pixels.data(), result.step(),
                                           sizeOf(picture)));
    });
}

// Luma on the left at half its size, and the two chroma planes one above the other on the right.
Tile planes(const Picture& picture)
{
    Planes420 split = emptyPlanes(sizeOf(picture));
    const double seconds = timed([&] { toPlanes(picture, split); });
    const ruxiSize chroma = split.planes[1].size();
    Plane small(chroma), sheet({chroma.width * 2, chroma.height * 2});
    resize(split.planes[0], small, ruxInterpolationSuperSample);
    require(ruxiSet_8u_C1R(24, sheet.data(), sheet.step(), sheet.size()));
    const auto put = [&](const Plane& plane, int x, int y) {
        require(ruxiCopy_8u_C1R(plane.data(), plane.step(), sheet.at(x, y), sheet.step(), chroma));
    };
    put(small, 0, chroma.height / 2);
    put(split.planes[1], chroma.width, 0);
    put(split.planes[2], chroma.width, chroma.height);
    return {"Y left, Cb above, Cr below", "ruxiRGBToYCbCr420_8u_C3P3R", "chroma at half width and height", seconds,
            grey(sheet)};
}

// The stripes show what shared chroma costs: 4:2:2 keeps those of rows and mixes those of columns, 4:2:0 mixes both.
using Road = double (*)(const Picture& picture, Picture& result);

Tile detailOf(Road road, const char* title, const char* operations, const Picture& picture)
{
    Picture before = picture, after;
    stripe(before);
    const double seconds = road(before, after);
    return {title, operations, meanDifference(before, after), seconds,
            beforeAndAfter(before, after, magnification)};
}

Tile changesOf(Road road, const char* title, const char* operations, const Picture& picture)
{
    Picture before = picture, after;
    stripe(before);
    const double seconds = road(before, after);
    return {title, operations, "black where nothing changed", seconds, changes(before, after)};
}

constexpr char both420[] = "ruxiRGBToYCbCr420, ..420ToRGB", both422[] = "ruxiRGBToYCbCr422, ..422ToRGB";

Tile detailOf420(const Picture& picture)
{
    return detailOf(road420, "stripes x4: before, after 4:2:0", both420, picture);
}

Tile changesOf420(const Picture& picture)
{
    return changesOf(road420, "what 4:2:0 does to the stripes", both420, picture);
}

Tile detailOf422(const Picture& picture)
{
    return detailOf(road422, "stripes x4: before, after 4:2:2", both422, picture);
}

Tile changesOf422(const Picture& picture)
{
    return changesOf(road422, "what 4:2:2 does to the stripes", both422, picture);
}

}

Family colourTiles()
{
    return {"Colour", {planes, detailOf420, changesOf420, detailOf422, changesOf422}};
}
