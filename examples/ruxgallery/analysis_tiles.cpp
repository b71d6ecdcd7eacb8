#include <cmath>
#include <cstdio>
#include <memory>

#include "tile.h"
#include "wavelet.h"

namespace {

constexpr char forward[] = "ruxiWTFwd_32f_C1R", back[] = "ruxiWTInv_32f_C1R";

// Luma with even sides.
Plane evenLuma(const Picture& picture)
{
    return luma(part(picture, {0, 0, picture.width / 2 * 2, picture.height / 2 * 2}));
}

Plane roundedPlane(const FloatImage& image, const float* first, ruxiSize size)
{
    Plane result(size);
    require(ruxiConvert_32f8u_C1R(first, image.step(), result.data(), result.step(), size, 1));
    return result;
}

// Only the first band is a picture; the others hold small values of both signs, seen around grey.
Tile bands(const Picture& picture)
{
    const Plane source = evenLuma(picture);
    Bands bands(source.size());
    const double seconds = transform(source, bands);
    for (FloatImage* high : {&bands.highLow, &bands.lowHigh, &bands.highHigh})
        for (float& element : high->elements) element = 128 + 4 * element;
    const ruxiSize size = bands.size();
    Plane sheet(source.size());
    const auto put = [&](const FloatImage& band, int x, int y) {
        const Plane bytes = roundedPlane(band, band.at(Bands::border, Bands::border), size);
        require(ruxiCopy_8u_C1R(bytes.data(), bytes.step(), sheet.at(x, y), sheet.step(), size));
    };
    put(bands.lowLow, 0, 0);
    put(bands.lowHigh, size.width, 0);
    put(bands.highLow, 0, size.height);
    put(bands.highHigh, size.width, size.height);
    return {"four wavelet bands of the picture", forward, "5 and 3 taps; details x4 on grey", seconds,
            grey(sheet)};
}

std::string noiseRatio(const Plane& before, const Plane& after)
{
    double squares = 0;
    for (size_t index = 0; index < before.elements.size(); ++index) {
        const int difference = before.elements[index] - after.elements[index];
        squares += difference * difference;
    }
    if (squares == 0) return "PSNR infinite: no byte differs";
    char text[32];
    const double mean = squares / double(before.elements.size());
    std::snprintf(text, sizeof text, "PSNR %.1f dB", 10 * std::log10(255.0 * 255 / mean));
    return text;
}

// The picture that the bands give after those of detail have lost their values up to a threshold.
Tile rebuilt(const Picture& picture, const char* title, float threshold)
{
    const Plane source = evenLuma(picture);
    Bands bands(source.size());
    transform(source, bands);
    for (FloatImage* high : {&bands.highLow, &bands.lowHigh, &bands.highHigh})
        for (float& element : high->elements)
            if (std::abs(element) < threshold) element = 0;
    FloatImage image;
    const double seconds = transformBack(bands, image);
    const Plane result = roundedPlane(image, image.data(), image.size());
    return {title, back, noiseRatio(source, result), seconds, grey(result)};
}

Tile rebuiltFromAll(const Picture& picture)
{
    return rebuilt(picture, "rebuilt from the four bands", 0);
}

Tile rebuiltFromStrong(const Picture& picture)
{
    return rebuilt(picture, "rebuilt, details below 12 dropped", 12);
}

Tile rebuiltFromLow(const Picture& picture)
{
    return rebuilt(picture, "rebuilt from the low band alone", std::numeric_limits<float>::max());
}

// What an object looks like from afar: where it is, how large, and which way it lies.
struct Shape {
    double x, y;                       // the centroid
    double cosine, sine;               // of the longer axis
    double longer, shorter;            // half the axes of the ellipse with the same second moments
};

Shape shapeOf(const ruxMomentState* state)
{
    const auto moment = [&](int m, int n, ruxiPoint offset) {
        double value = 0;
        require(ruxiGetSpatialMoment_64f(state, m, n, 0, offset, &value));
        return value;
    };
    const double mass = moment(0, 0, {0, 0});
    if (mass == 0) return {};
    const double x = moment(1, 0, {0, 0}) / mass, y = moment(0, 1, {0, 0}) / mass;
    const double xx = moment(2, 0, {0, 0}) / mass - x * x, yy = moment(0, 2, {0, 0}) / mass - y * y;
    const double xy = moment(1, 1, {0, 0}) / mass - x * y;
    const double spread = std::sqrt((xx - yy) * (xx - yy) + 4 * xy * xy), angle = std::atan2(2 * xy, xx - yy) / 2;
    return {x, y, std::cos(angle), std::sin(angle), 2 * std::sqrt((xx + yy + spread) / 2),
            2 * std::sqrt(std::max(0.0, (xx + yy - spread) / 2))};
}

void dot(Picture& picture, double x, double y, const uint8_t (&colour)[3])
{
    constexpr int side = 3;
    const int left = int(std::lround(x)) - side / 2, top = int(std::lround(y)) - side / 2;
    if (left >= 0 && top >= 0 && left + side <= picture.width && top + side <= picture.height)
        for (int row = 0; row < side; ++row)
            for (int column = 0; column < side; ++column)
                std::copy_n(colour, 3, picture.at(left + column, top + row));
}

// The axes, the ellipse and, larger, the centroid.
void draw(Picture& picture, const Shape& shape)
{
    const uint8_t red[] = {255, 40, 40}, green[] = {40, 220, 40};
    const auto dotAt = [&](double along, double across, const uint8_t (&colour)[3]) {
        dot(picture, shape.x + along * shape.cosine - across * shape.sine,
            shape.y + along * shape.sine + across * shape.cosine, colour);
    };
    constexpr int steps = 720;
    for (int step = 0; step <= steps; ++step) {
        const double turn = 6.283185307179586 * step / steps, way = 2.0 * step / steps - 1;
        dotAt(shape.longer * std::cos(turn), shape.shorter * std::sin(turn), green);
        dotAt(shape.longer * way, 0, red);
        dotAt(0, shape.shorter * way, red);
    }
    for (int y = -3; y <= 3; y += 3)
        for (int x = -3; x <= 3; x += 3) dot(picture, shape.x + x, shape.y + y, red);
}

// What is yellow to orange has little Cb. Of the picture, the part in the lowest quarter of its Cb stays.
Plane orangePart(const Picture& picture)
{
    Planes420 planes = emptyPlanes(sizeOf(picture));
    toPlanes(picture, planes);
    const Plane& source = planes.planes[0];
    Plane cb(source.size()), mask = cb, object = cb;
    resize(planes.planes[1], cb, ruxInterpolationLinear);
    const auto [lowest, highest] = std::minmax_element(cb.elements.begin(), cb.elements.end());
    const uint8_t bound = uint8_t((3 * *lowest + *highest) / 4);
    require(ruxiCompareC_8u_C1R(cb.data(), cb.step(), bound, mask.data(), mask.step(), mask.size(), ruxCmpLessEq));
    require(ruxiCopy_8u_C1MR(source.data(), source.step(), object.data(), object.step(), object.size(), mask.data(),
                             mask.step()));
    return object;
}

Tile moments(const Picture& picture)
{
    const Plane object = orangePart(picture);
    FloatImage image(object.size());
    require(ruxiConvert_8u32f_C1R(object.data(), object.step(), image.data(), image.step(), image.size()));
    ruxMomentState* created = nullptr;
    require(ruxiMomentInitAlloc_64f(&created, ruxAlgHintAccurate));
    const std::shared_ptr<ruxMomentState> state(created, [](ruxMomentState* object) { ruxiMomentFree_64f(object); });
    const double seconds = timed([&] {
        require(ruxiMoments64f_32f_C1R(image.data(), image.step(), image.size(), state.get()));
    });
    Picture result = grey(object);
    draw(result, shapeOf(state.get()));
    return {"centre and axes of what is orange", "ruxiMoments64f_32f_C1R", "the rest black; moments to order 2",
            seconds, result};
}

}

Family analysisTiles()
{
    return {"Wavelets and moments", {bands, rebuiltFromAll, rebuiltFromStrong, rebuiltFromLow, moments}};
}
