#include "model/ycbcr.h"
#include "model/ycbcr_formulas.h"

namespace rux::model {
namespace {

bool hasVectors(Level level)
{
    return level == a6 || level == w7;
}

void put(uint8_t* pixel, const Rgb& value)
{
    pixel[0] = value.r, pixel[1] = value.g, pixel[2] = value.b;
}

// YCbCr, interleaved 4:2:2.
Rgb interleavedYCbCr(int32_t y, int32_t cb, int32_t cr)
{
    const int32_t luma = hi((y - 16) * 128, 9536), b = (cb - 128) * 128, r = (cr - 128) * 128;
    return shifted(luma + hi(r, 13074), luma + hi(b, -3203) + hi(r, -6660), luma + hi(b, 16523), 4);
}

// YCbCr, planar 4:2:2.
Rgb planarYCbCr(int32_t y, int32_t cb, int32_t cr)
{
    const int32_t luma = hi((y - 16) * 128, 9535) + 8, b = (cb - 128) * 128, r = (cr - 128) * 128;
    return shifted(luma + hi(r, 13074), luma + hi(b, -3211) + hi(r, -6660), luma + hi(b, 16523), 4);
}

// The scalar form beside it: rounded at px and m6, cut in the tail of a6 and w7.
Rgb planarScalarYCbCr(int32_t y, int32_t cb, int32_t cr, int32_t offset)
{
    const int32_t luma = y * 76282 - offset;
    return shifted(luma + (cr - 128) * 104593, luma - (cb - 128) * 25689 - (cr - 128) * 53279,
                   luma + (cb - 128) * 132184, 16);
}

// YCbCr, 2x2 blocks.
Rgb blockYCbCr(int32_t y, int32_t cb, int32_t cr)
{
    const int32_t luma = hi((y - 16) * 128, 4767), b = (cb - 128) * 128, r = (cr - 128) * 128;
    return shifted(luma + hi(r, 6537), luma - (hi(b, 1605) + hi(r, 3330)), luma + hi(b, 8261), 3);
}

// YUV in pairs and in 2x2 blocks.
Rgb pairYuv(int32_t y, int32_t u, int32_t v)
{
    const int32_t luma = 2 * y, cu = (u - 128) * 16, cv = (v - 128) * 16;
    return shifted(luma + hi(cv, 9338), luma + hi(cu, -3227) + hi(cv, -4759), luma + hi(cu, 16645), 1);
}

// The 2x2 blocks of a6: the last of four pixels of a row has U terms of its own.
Rgb blockYuvOfA6(int32_t y, int32_t u, int32_t v, bool isFourth)
{
    const int32_t luma = 2 * y, cu = (u - 128) * 16, cv = (v - 128) * 16;
    return shifted(luma + hi(cv, 9339) + (isFourth ? hi(cu, 4) : 0),
                   luma + hi(cu, isFourth ? -3232 : -3228) + hi(cv, -4760), luma + hi(cu, 16646), 1);
}

// YUV to four bytes.
Rgb fourByteYuv(int32_t y, int32_t u, int32_t v)
{
    const int32_t luma = 16 * y + 8, cu = (u - 128) * 128, cv = (v - 128) * 128;
    return shifted(luma + hi(cv, 9338), luma - (hi(cu, 3227) + hi(cv, 4759)), luma + hi(cu, 16646), 4);
}

// The lone last pixel of interleaved YUV at a6 and w7.
Rgb loneYuv(int32_t y, int32_t u, int32_t v)
{
    const int32_t luma = y << 13, cu = u - 128, cv = v - 128;
    return shifted(luma + cv * 9338, luma + cu * -3227 + cv * -4759, luma + cu * 16645, 13);
}

// Calls formula(x, y, Y, Cb, Cr) for each pixel of interleaved 4:2:2. The lone last pixel takes Cr from the byte before
// its Y; the only pixel of a row takes its one chroma byte for both.
template <class Formula>
ruxStatus decodeInterleaved(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize roiSize,
                            const Formula& formula)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (roiSize.width < 1 || roiSize.height < 1) return ruxStatusSizeError;
    if (srcStep < 1 || dstStep < 1) return ruxStatusStepError;
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) {
            const uint8_t* const pair = at(src, srcStep, 2 * (x & ~1), y);
            const bool isLone = x + 1 == roiSize.width && !(x & 1);
            const int32_t cb = pair[1], cr = !isLone ? pair[3] : x > 0 ? pair[-1] : pair[1];
            put(at(dst, dstStep, 3 * x, y), formula(x, pair[x & 1 ? 2 : 0], cb, cr));
        }
    }
    return ruxStatusOk;
}

ruxStatus checkPlanar(const uint8_t* const src[3], const int32_t srcStep[3], const uint8_t* dst, int32_t dstStep,
                      ruxiSize roiSize)
{
    if (!src || !dst) return ruxStatusNullPointer;
    if (roiSize.width < 1 || roiSize.height < 1) return ruxStatusSizeError;
    if (!src[0] || !src[1] || !src[2]) return ruxStatusNullPointer;
    if (srcStep[0] < 1 || srcStep[1] < 1 || srcStep[2] < 1 || dstStep < 1) return ruxStatusStepError;
    return ruxStatusOk;
}

// Calls formula(x, y, Y, Cb, Cr) for each pixel of three planes; the chroma row is y >> rowShift.
template <class Formula>
void decodePlanar(const uint8_t* const src[3], const int32_t srcStep[3], int rowShift, uint8_t* dst, int32_t dstStep,
                  int channels, ruxiSize roiSize, const Formula& formula)
{
    for (int y = 0; y < roiSize.height; y++) {
        for (int x = 0; x < roiSize.width; x++) {
            const int32_t luma = *at(src[0], srcStep[0], x, y);
            const int32_t cb = *at(src[1], srcStep[1], x >> 1, y >> rowShift);
            const int32_t cr = *at(src[2], srcStep[2], x >> 1, y >> rowShift);
            uint8_t* const pixel = at(dst, dstStep, channels * x, y);
            put(pixel, formula(x, y, luma, cb, cr));
            if (channels == 4) pixel[3] = 0;
        }
    }
}

bool isInFullBlock(int x, int y, ruxiSize roiSize)
{
    return (x | 1) < roiSize.width && (y | 1) < roiSize.height;
}

}

ruxStatus ruxiYCbCr422ToRGB_8u_C2C3R(Level level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                     ruxiSize roiSize)
{
    const int vectors = level == w7 ? roiSize.width / 4 * 4 : 0;
    return decodeInterleaved(src, srcStep, dst, dstStep, roiSize, [&](int x, int32_t y, int32_t cb, int32_t cr) {
        return x < vectors ? interleavedYCbCr(y, cb, cr) : foldedYCbCr(y, cb, cr);
    });
}

ruxStatus ruxiYUV422ToRGB_8u_C2C3R(Level level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                   ruxiSize roiSize)
{
    return decodeInterleaved(src, srcStep, dst, dstStep, roiSize, [&](int x, int32_t y, int32_t u, int32_t v) {
        if (!hasVectors(level) || roiSize.width == 1) return scalarYuv(y, u, v);
        return x < roiSize.width / 2 * 2 ? pairYuv(y, u, v) : loneYuv(y, u, v);
    });
}

ruxStatus ruxiYCbCr422ToRGB_8u_P3C3R(Level level, const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst,
                                     int32_t dstStep, ruxiSize roiSize)
{
    if (const ruxStatus failure = checkPlanar(src, srcStep, dst, dstStep, roiSize)) return failure;
    const int vectors = hasVectors(level) ? roiSize.width / 8 * 8 : 0;
    const int32_t offset = hasVectors(level) ? 1220512 : 1187744;
    decodePlanar(src, srcStep, 0, dst, dstStep, 3, roiSize, [&](int x, int, int32_t y, int32_t cb, int32_t cr) {
        return x < vectors ? planarYCbCr(y, cb, cr) : planarScalarYCbCr(y, cb, cr, offset);
    });
    return ruxStatusOk;
}

ruxStatus ruxiYCbCr420ToRGB_8u_P3C3R(Level level, const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst,
                                     int32_t dstStep, ruxiSize roiSize)
{
    if (const ruxStatus failure = checkPlanar(src, srcStep, dst, dstStep, roiSize)) return failure;
    decodePlanar(src, srcStep, 1, dst, dstStep, 3, roiSize, [&](int x, int row, int32_t y, int32_t cb, int32_t cr) {
        const bool vector = hasVectors(level) && isInFullBlock(x, row, roiSize);
        return vector ? blockYCbCr(y, cb, cr) : centredYCbCr(y, cb, cr);
    });
    return ruxStatusOk;
}

ruxStatus ruxiYUV422ToRGB_8u_P3C3R(Level level, const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst,
                                   int32_t dstStep, ruxiSize roiSize)
{
    if (const ruxStatus failure = checkPlanar(src, srcStep, dst, dstStep, roiSize)) return failure;
    const int vectors = hasVectors(level) ? roiSize.width / 2 * 2 : 0;
    decodePlanar(src, srcStep, 0, dst, dstStep, 3, roiSize, [&](int x, int, int32_t y, int32_t u, int32_t v) {
        return x < vectors ? pairYuv(y, u, v) : scalarYuv(y, u, v);
    });
    return ruxStatusOk;
}

ruxStatus ruxiYUV422ToRGB_8u_P3AC4R(Level level, const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst,
                                    int32_t dstStep, ruxiSize roiSize)
{
    if (const ruxStatus failure = checkPlanar(src, srcStep, dst, dstStep, roiSize)) return failure;
    const int vectors = hasVectors(level) ? roiSize.width / 4 * 4 : 0;
    decodePlanar(src, srcStep, 0, dst, dstStep, 4, roiSize, [&](int x, int, int32_t y, int32_t u, int32_t v) {
        return x < vectors ? fourByteYuv(y, u, v) : scalarYuv(y, u, v);
    });
    return ruxStatusOk;
}

ruxStatus ruxiYUV420ToRGB_8u_P3C3(Level level, const uint8_t* const src[3], uint8_t* dst, ruxiSize roiSize)
{
    const int32_t chromaStep = roiSize.width / 2 + (roiSize.width & 1);
    const int32_t srcStep[3] = {roiSize.width, chromaStep, chromaStep};
    const int32_t dstStep = static_cast<int32_t>(3u * static_cast<uint32_t>(roiSize.width));
    if (!src || !dst) return ruxStatusNullPointer;
    if (roiSize.width < 1 || roiSize.height < 1) return ruxStatusSizeError;
    if (!src[0] || !src[1] || !src[2]) return ruxStatusNullPointer;
    decodePlanar(src, srcStep, 1, dst, dstStep, 3, roiSize, [&](int x, int row, int32_t y, int32_t u, int32_t v) {
        if (!hasVectors(level) || !isInFullBlock(x, row, roiSize)) return scalarYuv(y, u, v);
        return level == a6 ? blockYuvOfA6(y, u, v, (x & 3) == 3) : pairYuv(y, u, v);
    });
    return ruxStatusOk;
}

}
