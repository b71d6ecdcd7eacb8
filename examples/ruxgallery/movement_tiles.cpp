#include "tile.h"

namespace {

Tile copy(const Picture& picture)
{
    Picture result(picture.width, picture.height);
    const double seconds = timed([&] {
        require(ruxiCopy_8u_C3R(picture.pixels.data(), picture.step(), result.pixels.data(), result.step(),
                                sizeOf(picture)));
    });
    return {"the picture, copied", "ruxiCopy_8u_C3R", "every byte as it was", seconds, result};
}

// An ellipse of 255 in each byte of its pixels.
Picture ellipse(ruxiSize size)
{
    Picture mask(size.width, size.height);
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x) {
            const double across = 2.2 * (x + 0.5) / size.width - 1.1, down = 2.2 * (y + 0.5) / size.height - 1.1;
            if (across * across + down * down <= 1) std::fill_n(mask.at(x, y), 3, uint8_t(255));
        }
    return mask;
}

Tile copyWithMask(const Picture& picture)
{
    const Picture mask = ellipse(sizeOf(picture));
    Picture result = grey(luma(picture));
    const double seconds = timed([&] {
        require(ruxiCopy_8u_C1MR(picture.pixels.data(), picture.step(), result.pixels.data(), result.step(),
                                 bytesOf(picture), mask.pixels.data(), mask.step()));
    });
    return {"colour copied through a mask", "ruxiCopy_8u_C1MR", "mask: an ellipse; around it, grey", seconds, result};
}

Tile fill(const Picture& picture)
{
    Picture result = picture;
    const ruxiSize bar = {picture.width * 3, picture.height / 4};
    const double seconds = timed([&] {
        require(ruxiSet_8u_C1R(128, result.at(0, picture.height / 3), result.step(), bar));
    });
    return {"a bar set to one value", "ruxiSet_8u_C1R", "value = 128", seconds, result};
}

Tile swapped(const Picture& picture, const char* title, const char* arguments, const int32_t (&order)[3])
{
    Picture result(picture.width, picture.height);
    const double seconds = timed([&] {
        require(ruxiSwapChannels_8u_C3R(picture.pixels.data(), picture.step(), result.pixels.data(), result.step(),
                                        sizeOf(picture), order));
    });
    return {title, "ruxiSwapChannels_8u_C3R", arguments, seconds, result};
}

Tile redAndBlue(const Picture& picture)
{
    return swapped(picture, "red and blue change places", "dstOrder = {2, 1, 0}", {2, 1, 0});
}

Tile greenAlone(const Picture& picture)
{
    return swapped(picture, "the green channel alone", "dstOrder = {1, 1, 1}", {1, 1, 1});
}

Tile stripes(const Picture& picture)
{
    Picture result;
    const double seconds = timed([&] { result = picture; }, [&] { stripe(result); });
    const ruxiRect middle = {result.width / 4, result.height * 3 / 8, result.width / 4, result.height / 4};
    return {"red, blue swapped in stripes; x4", "ruxiSwapChannels_8u_C3IR", "every 2nd row above, column below",
            seconds, magnified(part(result, middle), 4)};
}

Tile mirrored(const Picture& picture, const char* title, const char* arguments, ruxAxis axis)
{
    Picture result;
    const double seconds = timed([&] { result = picture; }, [&] {
        require(ruxiMirror_8u_C3IR(result.pixels.data(), result.step(), sizeOf(result), axis));
    });
    return {title, "ruxiMirror_8u_C3IR", arguments, seconds, result};
}

Tile upsideDown(const Picture& picture)
{
    return mirrored(picture, "upside down", "flip = ruxAxsHorizontal", ruxAxsHorizontal);
}

Tile leftForRight(const Picture& picture)
{
    return mirrored(picture, "left for right", "flip = ruxAxsVertical", ruxAxsVertical);
}

Tile turned(const Picture& picture)
{
    return mirrored(picture, "turned by 180 degrees", "flip = ruxAxsBoth", ruxAxsBoth);
}

Tile replicatedBorder(const Picture& picture)
{
    const int border = std::min(picture.width, picture.height) / 6;
    const Plane source = luma(picture);
    const ruxiSize middle = {picture.width - 2 * border, picture.height - 2 * border};
    Plane result(source.size());
    const double seconds = timed([&] {
        require(ruxiCopyReplicateBorder_8u_C1R(source.at(border, border), source.step(), middle,
                                               result.data(), result.step(), result.size(), border, border));
    });
    const std::string width = std::to_string(border);
    return {"edges repeated outward", "ruxiCopyReplicateBorder_8u_C1R", "borders of " + width + " around the middle",
            seconds, grey(result)};
}

}

Family movementTiles()
{
    return {"Movement",
            {copy, copyWithMask, fill, replicatedBorder, redAndBlue, stripes, greenAlone, upsideDown, leftForRight,
             turned}};
}
