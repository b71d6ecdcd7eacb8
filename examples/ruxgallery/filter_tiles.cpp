#include "tile.h"

namespace {

// The filter reads around the region: there the picture's edges are repeated outward.
template <typename Filter>
double filter(const Plane& plane, int border, Plane& result, Filter call)
{
    const Plane source = bordered(plane, border);
    result = Plane(plane.size());
    return timed([&] {
        require(call(source.at(border, border), source.step(), result.data(), result.step(), result.size()));
    });
}

Tile box(const Picture& picture)
{
    Plane result;
    const double seconds = filter(luma(picture), 4, result, [](auto... image) {
        return ruxiFilterBox_8u_C1R(image..., {9, 9}, {4, 4});
    });
    return {"blurred: the mean of 9x9 pixels", "ruxiFilterBox_8u_C1R", "mask 9x9, anchor in its middle", seconds,
            grey(result)};
}

Tile boxInPlace(const Picture& picture)
{
    constexpr int side = 15, border = side / 2;
    const Plane source = bordered(luma(picture), border);
    const ruxiSize region = {picture.width / 2, picture.height / 2};
    Plane work;
    const double seconds = timed([&] { work = source; }, [&] {
        require(ruxiFilterBox_8u_C1IR(work.at(border + picture.width / 4, border + picture.height / 4), work.step(),
                                      region, {side, side}, {border, border}));
    });
    Plane result({picture.width, picture.height});
    require(ruxiCopy_8u_C1R(work.at(border, border), work.step(), result.data(), result.step(), result.size()));
    return {"the middle blurred in place", "ruxiFilterBox_8u_C1IR", "mask 15x15, anchor in its middle", seconds,
            grey(result)};
}

Tile lowpass(const Picture& picture)
{
    Plane result;
    const double seconds = filter(luma(picture), 2, result, [](auto... image) {
        return ruxiFilterLowpass_8u_C1R(image..., 55);
    });
    return {"softened: the mean of 5x5 pixels", "ruxiFilterLowpass_8u_C1R", "maskCode = 55", seconds, grey(result)};
}

Tile sharpened(const Picture& picture)
{
    const int32_t kernel[] = {-1, 4, -1};
    const Plane source = luma(picture);
    Plane result;
    const double seconds = filter(source, 1, result, [&](auto... image) {
        return ruxiFilterRow_8u_C1R(image..., kernel, 3, 1, 2);
    });
    return {"x2: before, sharpened along rows", "ruxiFilterRow_8u_C1R", "kernel {-1, 4, -1}, divisor 2", seconds,
            beforeAndAfter(grey(source), grey(result), 2)};
}

Tile maximum(const Picture& picture)
{
    Plane result;
    const double seconds = filter(luma(picture), 3, result, [](auto... image) {
        return ruxiFilterMax_8u_C1R(image..., {7, 7}, {3, 3});
    });
    return {"bright spots grow: the maximum", "ruxiFilterMax_8u_C1R", "mask 7x7, anchor in its middle", seconds,
            grey(result)};
}

// One pixel in eight becomes black or white.
Plane saltAndPepper(Plane plane)
{
    uint32_t random = 1;
    for (uint8_t& element : plane.elements) {
        random = random * 1664525u + 1013904223u;
        if (random >> 29 == 0) element = random >> 28 & 1 ? 255 : 0;
    }
    return plane;
}

using Median = ruxStatus(RUXCALL*)(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                   ruxiSize roiSize, int32_t maskCode);

Tile withoutNoise(const Picture& picture, const char* title, const char* operation, const char* arguments,
                  Median median, int32_t maskCode)
{
    const Plane source = saltAndPepper(luma(picture));
    Plane result;
    const double seconds = filter(source, 2, result, [&](auto... image) { return median(image..., maskCode); });
    return {title, operation, arguments, seconds, beforeAndAfter(grey(source), grey(result), 1)};
}

Tile medianHorizontal(const Picture& picture)
{
    return withoutNoise(picture, "salt and pepper: before, median", "ruxiFilterMedianHoriz_8u_C1R",
                        "maskCode = 51: 5 pixels of a row", ruxiFilterMedianHoriz_8u_C1R, 51);
}

Tile medianCross(const Picture& picture)
{
    return withoutNoise(picture, "salt and pepper: before, median", "ruxiFilterMedianCross_8u_C1R",
                        "maskCode = 55: a cross of 9 pixels", ruxiFilterMedianCross_8u_C1R, 55);
}

struct Gradients {
    Image<int16_t> dx, dy;

    explicit Gradients(ruxiSize size) : dx(size), dy(size) {}

    void measure(const Plane& plane)
    {
        require(ruxiSobel3x3_Dx_8u16s_C1R(plane.data(), plane.step(), dx.data(), dx.step(), plane.size()));
        require(ruxiSobel3x3_Dy_8u16s_C1R(plane.data(), plane.step(), dy.data(), dy.step(), 0, plane.size()));
    }
};

Tile slopes(const Picture& picture)
{
    const Plane source = luma(picture);
    Gradients gradients(source.size());
    const double seconds = timed([&] {
        require(ruxiSobel3x3_Dx_8u16s_C1R(source.data(), source.step(), gradients.dx.data(), gradients.dx.step(),
                                          source.size()));
    });
    Plane result(source.size());
    std::transform(gradients.dx.elements.begin(), gradients.dx.elements.end(), result.elements.begin(),
                   [](int value) { return uint8_t(std::clamp(128 + value / 2, 0, 255)); });
    return {"slopes along the rows, on grey", "ruxiSobel3x3_Dx_8u16s_C1R", "seen as 128 + dx / 2", seconds,
            grey(result)};
}

Tile steepness(const Picture& picture)
{
    const Plane source = luma(picture);
    Gradients gradients(source.size());
    const double seconds = timed([&] { gradients.measure(source); });
    Plane result(source.size());
    std::transform(gradients.dx.elements.begin(), gradients.dx.elements.end(), gradients.dy.elements.begin(),
                   result.elements.begin(),
                   [](int dx, int dy) { return uint8_t(std::min(std::abs(dx) + std::abs(dy), 255)); });
    return {"how steep: |dx| + |dy|", "ruxiSobel3x3_Dx and _Dy", "rowOrder = 0", seconds, grey(result)};
}

Tile edges(const Picture& picture)
{
    Plane smooth;
    filter(luma(picture), 2, smooth, [](auto... image) { return ruxiFilterLowpass_8u_C1R(image..., 55); });
    Gradients gradients(smooth.size());
    gradients.measure(smooth);
    int32_t bytes = 0;
    require(ruxiCannyGetSize(smooth.size(), &bytes));
    std::vector<uint8_t> buffer(size_t(bytes), uint8_t(0));
    for (Image<int16_t>* gradient : {&gradients.dx, &gradients.dy})   // up to 4 elements behind a row may be read
        gradient->elements.resize(gradient->elements.size() + 4);
    Plane result(smooth.size());
    const double seconds = timed([&] {
        require(ruxiCanny_16s8u_C1R(gradients.dx.data(), gradients.dx.step(), gradients.dy.data(), gradients.dy.step(),
                                    result.data(), result.step(), result.size(), 30, 90, buffer.data()));
    });
    return {"edges one pixel wide", "ruxiCanny_16s8u_C1R", "thresholds 30, 90; softened first", seconds,
            grey(result)};
}

}

Family filterTiles()
{
    return {"Filters",
            {box, boxInPlace, lowpass, maximum, sharpened, medianHorizontal, medianCross, slopes, steepness, edges}};
}
