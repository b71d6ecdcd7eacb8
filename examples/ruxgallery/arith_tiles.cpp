#include "tile.h"

namespace {

constexpr int shift = 6;   // pixels: enough for edges, not for a second picture

Tile difference(const Picture& picture)
{
    Picture result(picture.width - shift, picture.height);
    const double seconds = timed([&] {
        require(ruxiAbsDiff_8u_C1R(picture.at(0, 0), picture.step(), picture.at(shift, 0), picture.step(),
                                   result.pixels.data(), result.step(), bytesOf(result)));
    });
    return {"differs from itself moved aside", "ruxiAbsDiff_8u_C1R", "src2 = src1 + 6 pixels", seconds, result};
}

Tile topBits(const Picture& picture)
{
    Picture bits(picture.width, picture.height), result = bits;
    require(ruxiSet_8u_C1R(0xC0, bits.pixels.data(), bits.step(), bytesOf(bits)));
    const double seconds = timed([&] {
        require(ruxiAnd_8u_C1R(picture.pixels.data(), picture.step(), bits.pixels.data(), bits.step(),
                               result.pixels.data(), result.step(), bytesOf(picture)));
    });
    return {"only the top two bits", "ruxiAnd_8u_C1R", "src2 = 0xC0 everywhere", seconds, result};
}

// 1.25 in the middle, falling to 0 toward the corners, in steps of 1/4096 so that every build has the same weights.
FloatImage vignette(ruxiSize size)
{
    FloatImage result({size.width * 3, size.height});
    const int64_t acrossUnit = int64_t(size.width) * size.width, downUnit = int64_t(size.height) * size.height;
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x) {
            const int64_t across = 2 * x - size.width, down = 2 * y - size.height;
            const int64_t distance = 3072 * (across * across * downUnit + down * down * acrossUnit);
            const int64_t weight = std::max<int64_t>(0, 5120 - distance / (acrossUnit * downUnit));
            std::fill_n(result.at(3 * x, y), 3, float(weight) / 4096);
        }
    return result;
}

Tile product(const Picture& picture)
{
    const FloatImage weights = vignette(sizeOf(picture));
    FloatImage image;
    const double seconds = timed([&] { image = floats(picture); }, [&] {
        require(ruxiMul_32f_C3IR(weights.data(), weights.step(), image.data(), image.step(), sizeOf(picture)));
    });
    return {"darkened toward the corners", "ruxiMul_32f_C3IR", "src = weights from 1.25 to 0", seconds, rounded(image)};
}

Tile relief(const Picture& picture)
{
    const FloatImage image = floats(picture);
    const ruxiSize size = {(picture.width - shift) * 3, picture.height};
    FloatImage result(size);
    const double seconds = timed([&] {
        require(ruxiSet_32f_C1R(128, result.data(), result.step(), size));
        require(ruxiAdd_32f_C1IR(image.data() + shift * 3, image.step(), result.data(), result.step(), size));
        require(ruxiSub_32f_C1IR(image.data(), image.step(), result.data(), result.step(), size));
    });
    return {"a relief in float arithmetic", "ruxiSet, ruxiAdd, ruxiSub (32f)", "128 + src[x + 6] - src[x]", seconds,
            rounded(result)};
}

Tile quotient(const Picture& picture)
{
    FloatImage image;
    const double seconds = timed([&] { image = floats(picture); }, [&] {
        require(ruxiDivC_32f_C1IR(0.4f, image.data(), image.step(), image.size()));
    });
    return {"brighter: divided by 0.4", "ruxiDivC_32f_C1IR", "value = 0.4", seconds, rounded(image)};
}

Picture mirrored(Picture picture)
{
    require(ruxiMirror_8u_C3IR(picture.pixels.data(), picture.step(), sizeOf(picture), ruxAxsVertical));
    return picture;
}

Tile exposedTwice(const Picture& picture)
{
    const Picture other = mirrored(picture);
    FloatImage image;
    const double seconds = timed([&] { image = floats(picture); }, [&] {
        require(ruxiAddWeighted_8u32f_C1IR(other.pixels.data(), other.step(), image.data(), image.step(), image.size(),
                                           0.5f));
    });
    return {"exposed twice, with its mirror", "ruxiAddWeighted_8u32f_C1IR", "alpha = 0.5", seconds, rounded(image)};
}

Tile band(const Picture& picture)
{
    const Plane source = luma(picture);
    Plane result(source.size());
    const double seconds = timed([&] {
        require(ruxiThreshold_LTValGTVal_8u_C1R(source.data(), source.step(), result.data(), result.step(),
                                                source.size(), 64, 0, 128, 255));
    });
    return {"a band stays, others black, white", "ruxiThreshold_LTValGTVal_8u_C1R", "below 64: 0, above 128: 255",
            seconds, grey(result)};
}

Tile bandInEachChannel(const Picture& picture)
{
    const uint8_t low[] = {128, 96, 64}, below[] = {0, 0, 0}, high[] = {128, 96, 64}, above[] = {255, 255, 255};
    Picture result(picture.width, picture.height);
    const double seconds = timed([&] {
        require(ruxiThreshold_LTValGTVal_8u_C3R(picture.pixels.data(), picture.step(), result.pixels.data(),
                                                result.step(), sizeOf(picture), low, below, high, above));
    });
    return {"eight colours", "ruxiThreshold_LTValGTVal_8u_C3R", "0 or 255 at 128 R, 96 G, 64 B", seconds,
            result};
}

Tile brightPixels(const Picture& picture)
{
    const Plane source = luma(picture);
    Plane result(source.size());
    const double seconds = timed([&] {
        require(ruxiCompareC_8u_C1R(source.data(), source.step(), 96, result.data(), result.step(), source.size(),
                                    ruxCmpGreater));
    });
    int32_t count = 0;
    require(ruxiCountInRange_8u_C1R(source.data(), source.step(), source.size(), &count, 97, 255));
    return {std::to_string(count) + " pixels are bright", "ruxiCompareC_8u_C1R", "value = 96, ruxCmpGreater", seconds,
            grey(result)};
}

Tile brighterThanItsMirror(const Picture& picture)
{
    const FloatImage image = floats(picture), mirror = floats(mirrored(picture));
    Picture result(picture.width, picture.height);
    const double seconds = timed([&] {
        require(ruxiCompare_32f_C1R(image.data(), image.step(), mirror.data(), mirror.step(), result.pixels.data(),
                                    result.step(), image.size(), ruxCmpGreaterEq));
    });
    return {"where it outshines its mirror", "ruxiCompare_32f_C1R", "ruxCmpGreaterEq, in R, G and B", seconds, result};
}

}

Family arithTiles()
{
    return {"Arithmetic",
            {difference, topBits, product, relief, quotient, exposedTwice, band, bandInEachChannel, brightPixels,
             brighterThanItsMirror}};
}
