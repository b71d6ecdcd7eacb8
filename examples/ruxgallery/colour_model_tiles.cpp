#include <cmath>

#include "tile.h"

namespace {

// Y, Cb, Cr at full height; the chroma planes have half the width. An odd last column is left out.
struct Planes422 {
    Plane planes[3];

    explicit Planes422(ruxiSize size) : planes{Plane(size), Plane(halfOf(size)), Plane(halfOf(size))} {}

    void split(const Plane& interleaved)
    {
        uint8_t* const dst[] = {planes[0].data(), planes[1].data(), planes[2].data()};
        const int32_t steps[] = {planes[0].step(), planes[1].step(), planes[2].step()};
        require(ruxiSplit422_8u_C2P3R(interleaved.data(), interleaved.step(), dst, steps, planes[0].size()));
    }

    void joinWithChromaExchanged(Plane& interleaved) const
    {
        const uint8_t* const src[] = {planes[0].data(), planes[2].data(), planes[1].data()};
        const int32_t steps[] = {planes[0].step(), planes[2].step(), planes[1].step()};
        require(ruxiJoin422_8u_P3C2R(src, steps, interleaved.data(), interleaved.step(), planes[0].size()));
    }

private:
    static ruxiSize halfOf(ruxiSize size) { return {size.width / 2, size.height}; }
};

// The middle half of the picture, so that all three planes stand side by side pixel by pixel.
Tile split(const Picture& picture)
{
    const int width = picture.width / 4 * 2;
    const Picture middle = part(picture, {picture.width / 4, 0, width, picture.height});
    const Plane source = interleaved422(middle);
    Planes422 planes(sizeOf(middle));
    const double seconds = timed([&] { planes.split(source); });
    Plane sheet({2 * width, picture.height});
    int x = 0;
    for (const Plane& plane : planes.planes) {
        require(ruxiCopy_8u_C1R(plane.data(), plane.step(), sheet.at(x, 0), sheet.step(), plane.size()));
        x += plane.width;
    }
    return {"packed 4:2:2 split into Y, Cb, Cr", "ruxiSplit422_8u_C2P3R", "from Y0 Cb Y1 Cr to three planes", seconds,
            grey(sheet)};
}

Tile join(const Picture& picture)
{
    const ruxiSize size = {picture.width / 2 * 2, picture.height};
    const Plane source = interleaved422(part(picture, {0, 0, size.width, size.height}));
    Planes422 planes(size);
    planes.split(source);
    Plane joined(source.size());
    const double seconds = timed([&] { planes.joinWithChromaExchanged(joined); });
    Picture result(size.width, size.height);
    require(ruxiYCbCr422ToRGB_8u_C2C3R(joined.data(), joined.step(), result.pixels.data(), result.step(), size));
    return {"joined with Cb and Cr exchanged", "ruxiJoin422_8u_P3C2R", "src = {Y, Cr, Cb}", seconds, result};
}

Tile sepia(const Picture& picture)
{
    const float twist[] = {0.393f, 0.769f, 0.189f, 0, 0.349f, 0.686f, 0.168f, 0, 0.272f, 0.534f, 0.131f, 0};
    Picture result(picture.width, picture.height);
    const double seconds = timed([&] {
        require(ruxiColorTwist32f_8u_C3R(picture.pixels.data(), picture.step(), result.pixels.data(), result.step(),
                                         sizeOf(picture), twist));
    });
    return {"sepia: an old photograph", "ruxiColorTwist32f_8u_C3R", "each of R, G, B from all three", seconds, result};
}

struct HuePlanes {
    Plane hue, lightness, saturation;

    explicit HuePlanes(ruxiSize size) : hue(size), lightness(size), saturation(size) {}
};

double toPicture(const HuePlanes& planes, Picture& picture)
{
    const uint8_t* const src[] = {planes.hue.data(), planes.lightness.data(), planes.saturation.data()};
    picture = Picture(planes.hue.width, planes.hue.height);
    const double seconds = timed([&] {
        require(ruxiHLSToBGR_8u_P3C3R(src, planes.hue.step(), picture.pixels.data(), picture.step(), sizeOf(picture)));
    });
    const int32_t blueForRed[] = {2, 1, 0};
    require(ruxiSwapChannels_8u_C3IR(picture.pixels.data(), picture.step(), sizeOf(picture), blueForRed));
    return seconds;
}

Tile hueWheel(const Picture& picture)
{
    const int side = std::min(picture.width, picture.height);
    const double radius = side / 2.0, turn = 6.283185307179586;
    HuePlanes planes({side, side});
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            const double right = x + 0.5 - radius, up = radius - y - 0.25;
            const double distance = std::sqrt(right * right + up * up) / radius;
            const bool isInside = distance < 1;
            *planes.hue.at(x, y) = uint8_t((std::atan2(up, right) / turn + 1) * 255 + 0.3);
            *planes.lightness.at(x, y) = isInside ? uint8_t(255 * (1 - distance)) : 24;
            *planes.saturation.at(x, y) = isInside ? 255 : 0;
        }
    Picture result;
    const double seconds = toPicture(planes, result);
    return {"hue around, lightness outward", "ruxiHLSToBGR_8u_P3C3R", "H: the angle; L: 255 to 0; S = 255", seconds,
            result};
}

// The hue of a pixel in 255ths of a turn, red at 0.
int hueOf(const uint8_t* pixel, int highest, int range)
{
    if (range == 0) return 0;
    const int red = pixel[0], green = pixel[1], blue = pixel[2];
    const int sixths = highest == red     ? green - blue
                       : highest == green ? blue - red + 2 * range
                                          : red - green + 4 * range;
    return ((sixths + 6 * range) * 85 + range) / (2 * range) % 255;
}

Tile hueTurned(const Picture& picture)
{
    HuePlanes planes(sizeOf(picture));
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x) {
            const uint8_t* pixel = picture.at(x, y);
            const auto [lowest, highest] = std::minmax({pixel[0], pixel[1], pixel[2]});
            const int sum = highest + lowest, range = highest - lowest;
            *planes.hue.at(x, y) = uint8_t((hueOf(pixel, highest, range) + 85) % 255);
            *planes.lightness.at(x, y) = uint8_t((sum + 1) / 2);
            *planes.saturation.at(x, y) = uint8_t(range == 0 ? 0 : range * 255 / std::min(sum, 510 - sum));
        }
    Picture result;
    const double seconds = toPicture(planes, result);
    return {"every hue turned by 120 degrees", "ruxiHLSToBGR_8u_P3C3R", "H + 85; L and S as they were", seconds,
            result};
}

}

Family colourModelTiles()
{
    return {"Colour models", {split, join, sepia, hueWheel, hueTurned}};
}
