#include "model/ycbcr.h"
#include "model/ycbcr_formulas.h"

namespace rux::model {
namespace {

// Components of one pixel, or their sums over several.
struct Sum {
    int32_t r = 0, g = 0, b = 0;

    Sum operator+(const Sum& other) const { return {r + other.r, g + other.g, b + other.b}; }
};

Sum pixelAt(const uint8_t* src, int32_t srcStep, int x, int y)
{
    const uint8_t* const pixel = at(src, srcStep, 3 * x, y);
    return {pixel[0], pixel[1], pixel[2]};
}

uint8_t shiftedLuma(const Sum& p, int32_t addend)
{
    return static_cast<uint8_t>((p.r * 16843 + p.g * 33030 + p.b * 6423 + addend) >> 16);
}

uint8_t luma(const Sum& p)
{
    return shiftedLuma(p, 0x108000);
}

struct Chroma {
    uint8_t cb, cr;
};

Chroma shiftedChroma(const Sum& s, int32_t addend, int shift)
{
    return {static_cast<uint8_t>((s.r * -9699 + s.g * -19071 + s.b * 28770 + addend) >> shift),
            static_cast<uint8_t>((s.r * 28770 + s.g * -24117 + s.b * -4653 + addend) >> shift)};
}

Chroma chromaOfFour(const Sum& s)
{
    return shiftedChroma(s, 33587200, 18);
}

Chroma chromaOfTwo(const Sum& s)
{
    return shiftedChroma(s, 16793600, 17);
}

Chroma chromaOfOne(const Sum& s)
{
    return shiftedChroma(s, 0x808000, 16);
}

uint8_t vectorLuma(const Sum& p)
{
    return saturated((hi(p.r * 128, 1052) + hi(p.g * 128, 2064) + hi(p.b * 128, 401) + 128) >> 3);
}

Chroma vectorChromaOfFour(const Sum& s)
{
    const int32_t r = s.r * 32, g = s.g * 32, b = s.b * 32;
    return {saturated((hi(r, -607) + hi(g, -1192) + hi(b, 1798) + 1024) >> 3),
            saturated((hi(r, 1798) + hi(g, -1508) + hi(b, -291) + 1024) >> 3)};
}

}

ruxStatus ruxiRGBToYCbCr420_8u_C3P3R(Level level, const uint8_t* src, int32_t srcStep, uint8_t* const dst[3],
                                     const int32_t dstStep[3], ruxiSize roiSize)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (roiSize.width < 1 || roiSize.height < 1) return ruxStatusSizeError;
    if (!dst[0] || !dst[1] || !dst[2]) return ruxStatusNullPointer;
    if (srcStep < 1 || dstStep[0] < 1 || dstStep[1] < 1 || dstStep[2] < 1) return ruxStatusStepError;
    const bool vectors = level == a6 || level == w7;
    for (int y = 0; y < roiSize.height; y += 2) {
        for (int x = 0; x < roiSize.width; x += 2) {
            const int columns = std::min(2, roiSize.width - x), rows = std::min(2, roiSize.height - y);
            const int pixels = columns * rows;
            Sum sum;
            for (int dy = 0; dy < rows; dy++) {
                for (int dx = 0; dx < columns; dx++) {
                    const Sum pixel = pixelAt(src, srcStep, x + dx, y + dy);
                    sum = sum + pixel;
                    *at(dst[0], dstStep[0], x + dx, y + dy) =
                        vectors && pixels == 4 ? vectorLuma(pixel) : luma(pixel);
                }
            }
            const Chroma chroma = pixels == 1   ? chromaOfOne(sum)
                                  : pixels == 2 ? chromaOfTwo(sum)
                                  : vectors     ? vectorChromaOfFour(sum)
                                                : chromaOfFour(sum);
            *at(dst[1], dstStep[1], x >> 1, y >> 1) = chroma.cb;
            *at(dst[2], dstStep[2], x >> 1, y >> 1) = chroma.cr;
        }
    }
    return ruxStatusOk;
}

namespace {

// The unsigned high half, of operands up to 65535.
int32_t hu(int32_t a, int32_t k)
{
    return static_cast<int32_t>((static_cast<uint32_t>(a) * static_cast<uint32_t>(k)) >> 16);
}

uint8_t blockLuma(Level level, const Sum& p)
{
    if (level == a6) return static_cast<uint8_t>(((p.r * 8421 + p.g * 16515 + p.b * 3211) >> 15) + 16);
    return static_cast<uint8_t>(((hu(p.r * 256, 16843) + hu(p.g * 256, 33030) + hu(p.b * 256, 6423)) >> 8) + 16);
}

Chroma pairChroma(const Sum& s)
{
    return shiftedChroma(s, 0x1010000, 17);
}

Chroma blockChroma(Level level, const Sum& s)
{
    if (level == w7) return pairChroma(s);
    return {static_cast<uint8_t>(((s.r * -4850 + s.g * -9535 + s.b * 14385) >> 16) + 128),
            static_cast<uint8_t>(((s.r * 14385 + s.g * -12059 + s.b * -2327) >> 16) + 128)};
}

}

ruxStatus ruxiRGBToYCbCr422_8u_C3C2R(Level level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                     ruxiSize roiSize)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (roiSize.width < 1 || roiSize.height < 1) return ruxStatusSizeError;
    if (srcStep < 1 || dstStep < 1) return ruxStatusStepError;
    const bool vectors = level == a6 || level == w7;
    const int inBlocks = vectors ? roiSize.width / 4 * 4 : 0;
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x += 2) {
            uint8_t* const out = at(dst, dstStep, 2 * x, y);
            const Sum first = pixelAt(src, srcStep, x, y);
            if (x + 1 == roiSize.width) {
                if (vectors) {
                    out[0] = static_cast<uint8_t>((first.r * 16842 + first.g * 33030 + first.b * 6422 + 0x100000) >> 16);
                    out[1] = static_cast<uint8_t>((first.r * -9699 + first.g * -19070 + first.b * 28770 + 0x800000) >> 16);
                } else {
                    out[0] = luma(first);
                    out[1] = chromaOfOne(first).cb;
                }
                continue;
            }
            const Sum second = pixelAt(src, srcStep, x + 1, y);
            const bool block = x < inBlocks;
            const Chroma chroma = block ? blockChroma(level, first + second) : pairChroma(first + second);
            out[0] = block ? blockLuma(level, first) : shiftedLuma(first, vectors ? 0x100000 : 0x108000);
            out[1] = chroma.cb;
            out[2] = block ? blockLuma(level, second) : shiftedLuma(second, 0x100000);
            out[3] = chroma.cr;
        }
    }
    return ruxStatusOk;
}

}
