#include "tile.h"

namespace {

uint8_t widened(int value, int bits)
{
    return uint8_t(value << (8 - bits) | value >> (2 * bits - 8));
}

// Words with blue in the low bits, green above it and red on top, 5 bits each but green's.
Picture fromWords(const Image<uint16_t>& words, int greenBits)
{
    Picture result(words.width, words.height);
    for (int y = 0; y < words.height; ++y)
        for (int x = 0; x < words.width; ++x) {
            const int word = *words.at(x, y);
            uint8_t* pixel = result.at(x, y);
            pixel[0] = widened(word >> (5 + greenBits) & 31, 5);
            pixel[1] = widened(word >> 5 & ((1 << greenBits) - 1), greenBits);
            pixel[2] = widened(word & 31, 5);
        }
    return result;
}

Tile words565(const Picture& picture)
{
    const Plane source = interleaved422(picture);
    Image<uint16_t> words(sizeOf(picture));
    const double seconds = timed([&] {
        require(ruxiYCbCr422ToBGR565_8u16u_C2C3R(source.data(), source.step(), words.data(), words.step(),
                                                 words.size()));
    });
    return {"a frame in 16 bits a pixel", "ruxiYCbCr422ToBGR565_8u16u_C2C3R", "5 bits of R, 6 of G, 5 of B", seconds,
            fromWords(words, 6)};
}

Tile words555(const Picture& picture)
{
    const Plane source = interleaved422(picture);
    Image<uint16_t> words(sizeOf(picture));
    const double seconds = timed([&] {
        require(ruxiYCbCr422ToBGR555_8u16u_C2C3R(source.data(), source.step(), words.data(), words.step(),
                                                 words.size()));
    });
    return {"x4: 24 bits a pixel, 15 bits", "ruxiYCbCr422ToBGR555_8u16u_C2C3R", "5 bits each of R, G, B", seconds,
            beforeAndAfter(picture, fromWords(words, 5), 4)};
}

// The same part of the picture twice: without noise in the thresholds and, to the right of it, with noise.
Tile dithered(const Picture& picture, const char* method, ruxDitherType type, int32_t levels)
{
    constexpr int32_t noise = 25;
    const auto reduce = [&](int32_t percent, Picture& result) {
        require(ruxiReduceBits_8u_C3R(picture.pixels.data(), picture.step(), result.pixels.data(), result.step(),
                                      sizeOf(picture), percent, type, levels));
    };
    Picture plain(picture.width, picture.height), noisy = plain;
    const double seconds = timed([&] { reduce(0, plain); });
    reduce(noise, noisy);
    return {std::to_string(levels) + " levels: " + method, "ruxiReduceBits_8u_C3R",
            "noise = 0 left, " + std::to_string(noise) + " right", seconds, beforeAndAfter(plain, noisy, 1)};
}

template <int32_t levels>
Tile floydSteinberg(const Picture& picture)
{
    return dithered(picture, "Floyd, Steinberg", ruxDitherFS, levels);
}

template <int32_t levels>
Tile jarvisJudiceNinke(const Picture& picture)
{
    return dithered(picture, "Jarvis, Judice, Ninke", ruxDitherJJN, levels);
}

template <int32_t levels>
Tile stucki(const Picture& picture)
{
    return dithered(picture, "Stucki", ruxDitherStucki, levels);
}

template <int32_t levels>
Tile bayer(const Picture& picture)
{
    return dithered(picture, "ordered, Bayer", ruxDitherBayer, levels);
}

}

Family fewerColoursTiles()
{
    return {"Fewer colours",
            {words565, floydSteinberg<2>, jarvisJudiceNinke<2>, stucki<2>, bayer<2>, words555, floydSteinberg<4>,
             jarvisJudiceNinke<4>, stucki<4>, bayer<4>}};
}
