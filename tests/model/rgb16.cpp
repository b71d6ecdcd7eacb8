#include "model/rgb16.h"

#include "model/ycbcr_formulas.h"

namespace rux::model {
namespace {

bool hasVectors(Level level)
{
    return level == a6 || level == w7;
}

// The components' upper bits in a word.
using Packing = uint16_t(const Rgb&);

uint16_t rgb565(const Rgb& c)
{
    return static_cast<uint16_t>(c.b >> 3 << 11 | c.g >> 2 << 5 | c.r >> 3);
}

uint16_t bgr565(const Rgb& c)
{
    return static_cast<uint16_t>(c.r >> 3 << 11 | c.g >> 2 << 5 | c.b >> 3);
}

uint16_t rgb555(const Rgb& c)
{
    return static_cast<uint16_t>(c.b >> 3 << 10 | c.g >> 3 << 5 | c.r >> 3);
}

uint16_t bgr555(const Rgb& c)
{
    return static_cast<uint16_t>(c.r >> 3 << 10 | c.g >> 3 << 5 | c.b >> 3);
}

Rgb vectorYCbCr(int32_t y, int32_t cb, int32_t cr)
{
    const int32_t luma = hi((y - 16) * 128, 9535), b = (cb - 128) * 128, r = (cr - 128) * 128;
    return shifted(luma + hi(r, 13074), luma - hi(b, 3211) - hi(r, 6660), luma + hi(b, 16523), 4);
}

Rgb vectorYuv(int32_t y, int32_t u, int32_t v)
{
    const int32_t luma = 16 * y, cu = (u - 128) * 128, cv = (v - 128) * 128;
    return shifted(luma + hi(cv, 9338), luma - hi(cu, 3227) - hi(cv, 4759), luma + hi(cu, 16646), 4);
}

// One kernel call: vectors, then pairs, then a lone pixel that takes Cr from the byte before its Y.
void decodePixels(Level level, const uint8_t* src, uint16_t* dst, int count, Packing* pack)
{
    const int vectors = level == a6 ? count / 4 * 4 : level == w7 ? count / 8 * 8 : 0;
    for (int x = 0; x < count; x++) {
        const uint8_t* const pair = src + 2 * (x & ~1);
        const bool isLone = x + 1 == count && !(x & 1);
        const int32_t y = pair[x & 1 ? 2 : 0], cb = pair[1], cr = isLone ? pair[-1] : pair[3];
        const Rgb colour = x < vectors                    ? vectorYCbCr(y, cb, cr)
                           : isLone && hasVectors(level) ? centredYCbCr(y, cb, cr)
                                                          : foldedYCbCr(y, cb, cr);
        store(dst + x, pack(colour));
    }
}

ruxStatus decodeInterleaved(Level level, const uint8_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                            ruxiSize roiSize, Packing* pack)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (roiSize.width < 1 || roiSize.height < 1) return ruxStatusSizeError;
    if (srcStep < 1 || dstStep < 1) return ruxStatusStepError;
    const int32_t words = dstStep >> 1;
    if (srcStep == 2 * roiSize.width && words == roiSize.width && roiSize.width % 2 == 0) {
        const int pixels = roiSize.width * roiSize.height, rest = pixels % 8, first = pixels - rest;
        decodePixels(level, src, dst, first, pack);
        decodePixels(level, src + 2 * first, dst + first, rest, pack);
    } else if (roiSize.width == 1) {
        for (int y = 0; y < roiSize.height; y++) {   // three bytes, as the 8-bit conversion; the stride may be 0
            const uint8_t* const pixel = at(src, srcStep, 0, y);
            const Rgb colour = foldedYCbCr(pixel[0], pixel[1], pixel[1]);
            uint8_t* const out = at(reinterpret_cast<uint8_t*>(dst), words, 0, y);
            out[0] = colour.r, out[1] = colour.g, out[2] = colour.b;
        }
    } else {
        for (int y = 0; y < roiSize.height; y++) {
            decodePixels(level, at(src, srcStep, 0, y), at(dst, 2 * words, 0, y), roiSize.width, pack);
        }
    }
    return ruxStatusOk;
}

ruxStatus decodePlanar(Level level, const uint8_t* const src[3], const int32_t srcStep[3], uint16_t* dst,
                       int32_t dstStep, ruxiSize roiSize, Packing* pack)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (roiSize.width < 1 || roiSize.height < 1) return ruxStatusSizeError;
    if (!src[0] || !src[1] || !src[2]) return ruxStatusNullPointer;
    if (srcStep[0] < 1 || srcStep[1] < 1 || srcStep[2] < 1 || dstStep < 1) return ruxStatusStepError;
    const int32_t words = dstStep >> 1;
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) {
            const int32_t luma = *at(src[0], srcStep[0], x, y);
            const int32_t u = *at(src[1], srcStep[1], x >> 1, y >> 1), v = *at(src[2], srcStep[2], x >> 1, y >> 1);
            const bool isInFullBlock = (x | 1) < roiSize.width && (y | 1) < roiSize.height;
            const Rgb colour = hasVectors(level) && isInFullBlock ? vectorYuv(luma, u, v) : scalarYuv(luma, u, v);
            store(at(dst, 2 * words, x, y), pack(colour));
        }
    }
    return ruxStatusOk;
}

}

ruxStatus ruxiYCbCr422ToRGB555_8u16u_C2C3R(Level level, const uint8_t* src, int32_t srcStep, uint16_t* dst,
                                           int32_t dstStep, ruxiSize roiSize)
{
    return decodeInterleaved(level, src, srcStep, dst, dstStep, roiSize, rgb555);
}

ruxStatus ruxiYCbCr422ToRGB565_8u16u_C2C3R(Level level, const uint8_t* src, int32_t srcStep, uint16_t* dst,
                                           int32_t dstStep, ruxiSize roiSize)
{
    return decodeInterleaved(level, src, srcStep, dst, dstStep, roiSize, rgb565);
}

ruxStatus ruxiYCbCr422ToBGR555_8u16u_C2C3R(Level level, const uint8_t* src, int32_t srcStep, uint16_t* dst,
                                           int32_t dstStep, ruxiSize roiSize)
{
    return decodeInterleaved(level, src, srcStep, dst, dstStep, roiSize, bgr555);
}

ruxStatus ruxiYCbCr422ToBGR565_8u16u_C2C3R(Level level, const uint8_t* src, int32_t srcStep, uint16_t* dst,
                                           int32_t dstStep, ruxiSize roiSize)
{
    return decodeInterleaved(level, src, srcStep, dst, dstStep, roiSize, bgr565);
}

ruxStatus ruxiYUV420ToBGR555_8u16u_P3C3R(Level level, const uint8_t* const src[3], const int32_t srcStep[3],
                                         uint16_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    return decodePlanar(level, src, srcStep, dst, dstStep, roiSize, bgr555);
}

ruxStatus ruxiYUV420ToBGR565_8u16u_P3C3R(Level level, const uint8_t* const src[3], const int32_t srcStep[3],
                                         uint16_t* dst, int32_t dstStep, ruxiSize roiSize)
{
    return decodePlanar(level, src, srcStep, dst, dstStep, roiSize, bgr565);
}

}
