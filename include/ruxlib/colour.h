/*
 * Colour: conversion between luma/chroma and RGB, packed 4:2:2 split and join, HLS, the colour twist, bit depth.
 *
 * Common to all:
 * - Image pointers name the first pixel of the region, steps are row strides in bytes, roiSize is the region in pixels.
 * - Samples are unsigned 8-bit. An RGB pixel is three bytes R, G, B at rising addresses.
 * - Interleaved 4:2:2 (C2) is a stream of pixel pairs Y0, Cb, Y1, Cr (or Y0, U, Y1, V); both pixels share the chroma.
 * - Arrays of planes and of their strides stand in the order Y, Cb, Cr (Y, U, V). Planar 4:2:2 has one chroma sample
 *   for each pixel pair of a row, planar 4:2:0 one for each 2x2 block. Where width or height is odd, the lone column
 *   or row has chroma of its own, at column width >> 1 and row height >> 1. No chroma is filtered.
 * - Nothing works in place, and nothing asks for alignment. No byte is read or written that the region does not need.
 * - Statuses are given in the order in which they are tested. A failed test leaves every output unwritten.
 *
 * In the formulas sat(x) clamps to 0..255, >> is an arithmetic shift, hi(a, k) = (a * k) >> 16 on signed and hu(a, k)
 * the same on unsigned 16-bit operands. Constants and rounding are fixed to the bit for each level, and where a level
 * works in blocks a pixel's value depends on its place in the row, which is told.
 */
#ifndef RUXLIB_COLOUR_H
#define RUXLIB_COLOUR_H

#include "ruxlib/types.h"
#include "ruxlib/status.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * YCbCr and YUV against 8-bit RGB: nine functions.
 *
 * YCbCr is ITU-R BT.601 in studio range: Y 16..235, Cb and Cr 16..240 around 128. YUV has Y 0..255 and U, V around
 * 128: R = Y + 1.140 V, G = Y - 0.394 U - 0.581 V, B = Y + 2.032 U. Below, u, v, cb, cr stand for the sample less 128.
 *
 * Statuses of all nine: ruxStatusNullPointer (src or dst, the array itself where it is one); ruxStatusSizeError (width
 * or height below 1); ruxStatusNullPointer (a plane); ruxStatusStepError (a step below 1). Arrays of strides are not
 * tested for null.
 *
 * a6 writes dst past the caches (non-temporal stores) in RGBToYCbCr422_C3C2, YCbCr422ToRGB_P3C3, YUV422ToRGB_C2C3,
 * YUV422ToRGB_P3AC4 and YUV420ToRGB_P3C3, and ends each call with a store fence.
 */

/*
 * RGB to planar YCbCr 4:2:0. A chroma sample is the mean over its block; Rs, Gs, Bs are the block's sums.
 *
 *   px, m6      Y  = (16843 R + 33030 G + 6423 B + 0x108000) >> 16
 *     2x2       Cb = (-9699 Rs - 19071 Gs + 28770 Bs + 33587200) >> 18
 *               Cr = (28770 Rs - 24117 Gs - 4653 Bs + 33587200) >> 18
 *     2 pixels  the same with 16793600 and >> 17: odd column, odd row
 *     1 pixel   the same with 0x808000 and >> 16: the corner of an odd width and height
 *   a6, w7      Y  = sat((hi(128 R, 1052) + hi(128 G, 2064) + hi(128 B, 401) + 128) >> 3)
 *     2x2       Cb = sat((hi(32 Rs, -607) + hi(32 Gs, -1192) + hi(32 Bs, 1798) + 1024) >> 3)
 *               Cr = sat((hi(32 Rs, 1798) + hi(32 Gs, -1508) + hi(32 Bs, -291) + 1024) >> 3)
 *     others    as px, luma of the odd column and row included
 *
 * White gives (235, 128, 128) at px and m6, and (234, 127, 127) in 2x2 blocks at a6 and w7; black (16, 128, 128).
 */
ruxStatus RUXCALL ruxiRGBToYCbCr420_8u_C3P3R(const uint8_t* src, int32_t srcStep, uint8_t* const dst[3],
                                             const int32_t dstStep[3], ruxiSize roiSize);

/*
 * RGB to interleaved YCbCr 4:2:2. Rs, Gs, Bs are the sums over the pair. With an odd width the lone last pixel writes
 * two bytes, Y and Cb: a row is 2 * width bytes.
 *
 *   px, m6  pair  Y0 = (16843 R + 33030 G + 6423 B + 0x108000) >> 16, Y1 the same with 0x100000, unrounded
 *                 Cb = (-9699 Rs - 19071 Gs + 28770 Bs + 0x1010000) >> 17
 *                 Cr = (28770 Rs - 24117 Gs - 4653 Bs + 0x1010000) >> 17
 *           lone  Y as Y0; Cb = (-9699 R - 19071 G + 28770 B + 0x808000) >> 16
 *   a6      first width / 4 * 4 pixels
 *                 Y  = ((8421 R + 16515 G + 3211 B) >> 15) + 16
 *                 Cb = ((-4850 Rs - 9535 Gs + 14385 Bs) >> 16) + 128
 *                 Cr = ((14385 Rs - 12059 Gs - 2327 Bs) >> 16) + 128
 *   w7      first width / 4 * 4 pixels
 *                 Y  = ((hu(256 R, 16843) + hu(256 G, 33030) + hu(256 B, 6423)) >> 8) + 16; Cb, Cr as px
 *   a6, w7  pair behind them: both Y as the Y1 of px, chroma as px
 *           lone  Y  = (16842 R + 33030 G + 6422 B + 0x100000) >> 16
 *                 Cb = (-9699 R - 19070 G + 28770 B + 0x800000) >> 16
 */
ruxStatus RUXCALL ruxiRGBToYCbCr422_8u_C3C2R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                             ruxiSize roiSize);

/*
 * Planar YCbCr 4:2:0 to RGB.
 *
 *   px, m6      R = sat((76284 Y + 104595 cr - 1220544) >> 16)
 *               G = sat((76284 Y - 25690 cb - 53281 cr - 1220544) >> 16)
 *               B = sat((76284 Y + 132186 cb - 1220544) >> 16)
 *   a6, w7      L = hi(128 (Y - 16), 4767)
 *     2x2       R = sat((L + hi(128 cr, 6537)) >> 3)
 *               G = sat((L - (hi(128 cb, 1605) + hi(128 cr, 3330))) >> 3)
 *               B = sat((L + hi(128 cb, 8261)) >> 3)
 *     others    as px: odd column, odd row
 *
 * (235, 128, 128) gives 254 on all channels.
 */
ruxStatus RUXCALL ruxiYCbCr420ToRGB_8u_P3C3R(const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst,
                                             int32_t dstStep, ruxiSize roiSize);

/*
 * Interleaved YCbCr 4:2:2 to RGB.
 *
 *   px, m6, a6  R = sat((76284 Y + 104595 Cr - 14608761) >> 16)
 *               G = sat((76284 Y - 25690 Cb - 53281 Cr + 8887730) >> 16)
 *               B = sat((76284 Y + 132186 Cb - 18140365) >> 16)
 *   w7          first width / 4 * 4 pixels, L = hi(128 (Y - 16), 9536)
 *               R = sat((L + hi(128 cr, 13074)) >> 4)
 *               G = sat((L + hi(128 cb, -3203) + hi(128 cr, -6660)) >> 4)
 *               B = sat((L + hi(128 cb, 16523)) >> 4)
 *               the rest as px
 *
 * With an odd width the lone last pixel is the bytes Y, Cb and takes Cr from the pair before it; with width 1 its one
 * chroma byte is both Cb and Cr. (235, 128, 128) gives 254 on all channels.
 */
ruxStatus RUXCALL ruxiYCbCr422ToRGB_8u_C2C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                             ruxiSize roiSize);

/*
 * Planar YCbCr 4:2:2 to RGB.
 *
 *   px, m6      R = sat((76282 Y + 104593 cr - 1187744) >> 16)
 *               G = sat((76282 Y - 25689 cb - 53279 cr - 1187744) >> 16)
 *               B = sat((76282 Y + 132184 cb - 1187744) >> 16)
 *   a6, w7      first width / 8 * 8 pixels, L = hi(128 (Y - 16), 9535)
 *               R = sat((L + hi(128 cr, 13074) + 8) >> 4)
 *               G = sat((L + hi(128 cb, -3211) + hi(128 cr, -6660) + 8) >> 4)
 *               B = sat((L + hi(128 cb, 16523) + 8) >> 4)
 *               the rest as px, with -1220512 in place of -1187744: no rounding half
 *
 * (235, 128, 128) gives 255, in that rest 254.
 */
ruxStatus RUXCALL ruxiYCbCr422ToRGB_8u_P3C3R(const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst,
                                             int32_t dstStep, ruxiSize roiSize);

/*
 * YUV to RGB, in four layouts. The scalar form is that of px and m6 throughout:
 *
 *   R = sat((65536 Y + 74711 v) >> 16)
 *   G = sat((65536 Y - 25821 u - 38076 v) >> 16)
 *   B = sat((65536 Y + 133169 u) >> 16)
 *
 * Planar 4:2:0, tightly packed: the strides are width for Y, (width + 1) / 2 for U and V, 3 * width for dst.
 *
 *   a6, w7      2x2 blocks:
 *               R = sat((2 Y + hi(16 v, 9338)) >> 1)
 *               G = sat((2 Y + hi(16 u, -3227) + hi(16 v, -4759)) >> 1)
 *               B = sat((2 Y + hi(16 u, 16645)) >> 1)
 *               odd column and odd row: scalar
 *   a6 alone    has 9339, -3228, -4760, 16646 there; and in the groups of four pixels of a row, the last pixel of each
 *               (x % 4 == 3) adds hi(16 u, 4) to the sum of R and has -3232 for -3228 in G
 */
ruxStatus RUXCALL ruxiYUV420ToRGB_8u_P3C3(const uint8_t* const src[3], uint8_t* dst, ruxiSize roiSize);

/*
 * Interleaved 4:2:2.
 *
 *   a6, w7      pairs: as ruxiYUV420ToRGB_8u_P3C3 at w7
 *               lone last pixel, of widths above 1:
 *               R = sat((8192 Y + 9338 v) >> 13), G = sat((8192 Y - 3227 u - 4759 v) >> 13),
 *               B = sat((8192 Y + 16645 u) >> 13)
 *
 * An odd width reads as in ruxiYCbCr422ToRGB_8u_C2C3R; width 1 is scalar at every level.
 */
ruxStatus RUXCALL ruxiYUV422ToRGB_8u_C2C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           ruxiSize roiSize);

/* Planar 4:2:2. At a6 and w7 pairs as ruxiYUV420ToRGB_8u_P3C3 at w7, the lone last pixel scalar. */
ruxStatus RUXCALL ruxiYUV422ToRGB_8u_P3C3R(const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst,
                                           int32_t dstStep, ruxiSize roiSize);

/*
 * Planar 4:2:2 to four bytes a pixel: R, G, B, 0. The fourth byte is always written 0.
 *
 *   a6, w7      first width / 4 * 4 pixels:
 *               R = sat((16 Y + hi(128 v, 9338) + 8) >> 4)
 *               G = sat((16 Y - (hi(128 u, 3227) + hi(128 v, 4759)) + 8) >> 4)
 *               B = sat((16 Y + hi(128 u, 16646) + 8) >> 4)
 *               the rest scalar
 */
ruxStatus RUXCALL ruxiYUV422ToRGB_8u_P3AC4R(const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst,
                                            int32_t dstStep, ruxiSize roiSize);

/*
 * Luma/chroma to packed 16-bit RGB: r, g, b as 8 bits by the forms below, then their low bits dropped, without
 * rounding or dither. A pixel is one little-endian 16-bit word; the name tells the components from the low bits up:
 *
 *   RGB565  b >> 3 in bits 15..11, g >> 2 in 10..5, r >> 3 in 4..0        BGR565  r on top, b below
 *   RGB555  b >> 3 in bits 14..10, g >> 3 in 9..5,  r >> 3 in 4..0        BGR555  r on top, b below; bit 15 is 0
 *
 * dstStep is in bytes; its half, rounded down, counts the words of a row, so that an odd step loses its low bit.
 * dst may stand at any address, but not on a src of 2 bytes a pixel: a6 and w7 read pixels again that they have done.
 *
 * Statuses: ruxStatusNullPointer (src, dst); ruxStatusSizeError (width or height below 1); ruxStatusNullPointer (a
 * plane); ruxStatusStepError (a step below 1).
 */

/*
 * From interleaved YCbCr 4:2:2.
 *
 *   px, m6      as ruxiYCbCr422ToRGB_8u_C2C3R at px
 *   a6, w7      first count / 4 * 4 (a6) or count / 8 * 8 (w7) pixels, y = hi(128 (Y - 16), 9535):
 *               r = sat((y + hi(128 cr, 13074)) >> 4)
 *               g = sat((y - hi(128 cb, 3211) - hi(128 cr, 6660)) >> 4)
 *               b = sat((y + hi(128 cb, 16523)) >> 4)
 *               pairs behind them as px; a lone last pixel as ruxiYCbCr420ToRGB_8u_P3C3R at px
 *
 * count is the width; but where the width is even, srcStep twice the width and dstStep / 2 the width, the whole image
 * is one row: first its width * height pixels less the last (width * height) % 8, then those as a row of their own.
 *
 * Width 1 is an exception at all levels: the 8-bit conversion of that width runs, writing three bytes R, G, B for each
 * row, at a byte stride of dstStep / 2.
 */
ruxStatus RUXCALL ruxiYCbCr422ToRGB555_8u16u_C2C3R(const uint8_t* src, int32_t srcStep, uint16_t* dst,
                                                   int32_t dstStep, ruxiSize roiSize);
ruxStatus RUXCALL ruxiYCbCr422ToRGB565_8u16u_C2C3R(const uint8_t* src, int32_t srcStep, uint16_t* dst,
                                                   int32_t dstStep, ruxiSize roiSize);
ruxStatus RUXCALL ruxiYCbCr422ToBGR555_8u16u_C2C3R(const uint8_t* src, int32_t srcStep, uint16_t* dst,
                                                   int32_t dstStep, ruxiSize roiSize);
ruxStatus RUXCALL ruxiYCbCr422ToBGR565_8u16u_C2C3R(const uint8_t* src, int32_t srcStep, uint16_t* dst,
                                                   int32_t dstStep, ruxiSize roiSize);

/*
 * From planar YUV 4:2:0.
 *
 *   px, m6      the scalar form of the YUV conversions
 *   a6, w7      2x2 blocks:
 *               r = sat((16 Y + hi(128 v, 9338)) >> 4)
 *               g = sat((16 Y - hi(128 u, 3227) - hi(128 v, 4759)) >> 4)
 *               b = sat((16 Y + hi(128 u, 16646)) >> 4)
 *               odd column and odd row: scalar
 */
ruxStatus RUXCALL ruxiYUV420ToBGR555_8u16u_P3C3R(const uint8_t* const src[3], const int32_t srcStep[3], uint16_t* dst,
                                                 int32_t dstStep, ruxiSize roiSize);
ruxStatus RUXCALL ruxiYUV420ToBGR565_8u16u_P3C3R(const uint8_t* const src[3], const int32_t srcStep[3], uint16_t* dst,
                                                 int32_t dstStep, ruxiSize roiSize);

/*
 * Interleaved 4:2:2 to three planes and back: bytes are moved, nothing is computed, all levels agree. Whole pairs are
 * handled; with an odd width the last pixel is neither read nor written.
 *
 * Statuses: ruxStatusNullPointer (the array of planes or of strides; then a plane or the interleaved image);
 * ruxStatusStepError (a step below 1); ruxStatusSizeError (width below 2 or height below 1); ruxStatusStrideError (the
 * Y stride below width, a chroma stride below width / 2, rounded down, or the interleaved stride below 2 * width).
 */
ruxStatus RUXCALL ruxiSplit422_8u_C2P3R(const uint8_t* src, int32_t srcStep, uint8_t* const dst[3],
                                        const int32_t dstStep[3], ruxiSize roiSize);
ruxStatus RUXCALL ruxiJoin422_8u_P3C2R(const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst,
                                       int32_t dstStep, ruxiSize roiSize);

/*
 * Planes of hue, lightness and saturation, one stride for all three, to interleaved B, G, R. The double-hexcone model:
 *
 *   h = H * 360 / 255 degrees, l = L / 255, s = S / 255
 *   m2 = (s + 1) * l if l <= 0.5, else l + s - s * l;  m1 = 2 * l - m2
 *   f(x) = m1 + (m2 - m1) * x / 60 for x < 60; m2 for x < 180; m1 + (m2 - m1) * (240 - x) / 60 for x < 240; else m1
 *   red f(h + 120), green f(h), blue f(h - 120), hues taken back into 0..360; all three l where S is 0
 *   byte = truncate(f * 255 + 1e-7)
 *
 * 1/255 and 1/60 are the nearest floats, which are multiplied with; each step is rounded, from left to right as it
 * stands here. px and m6 compute in double, in the host's rounding mode; a6 and w7 in float but for the last
 * multiplication and addition, to nearest whatever the host has set, so that the two pairs of levels can differ by one.
 *
 * Statuses: ruxStatusNullPointer (src, dst, then a plane); ruxStatusStepError (a step below 1); ruxStatusSizeError
 * (width or height below 1).
 */
ruxStatus RUXCALL ruxiHLSToBGR_8u_P3C3R(const uint8_t* const src[3], int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        ruxiSize roiSize);

/*
 * Affine transform of the three channels. twist is 12 floats, three rows of four:
 *
 *   out[i] = sat(round(twist[4 i] * c0 + twist[4 i + 1] * c1 + twist[4 i + 2] * c2 + twist[4 i + 3])), ties to even
 *
 * With p0, p1, p2 for the products and p3 for the offset, px, m6 and a6 compute ((p0 + p3) + p1) + p2 in double, and w7
 * (p3 + p0) + (p2 + p1) in float, each step rounded, so that a result near a tie can differ by one, and more where a
 * float overflows. A sum that is a NaN gives 0. The rounding modes that the host has set change nothing and are left as
 * found.
 *
 * Statuses: ruxStatusNullPointer (src, dst, twist); ruxStatusSizeError (width or height below 1); ruxStatusStepError
 * (a step below 1).
 */
ruxStatus RUXCALL ruxiColorTwist32f_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           ruxiSize roiSize, const float* twist);

/* How ruxiReduceBits_8u_C3R spreads the error of a reduced sample. */
typedef int32_t ruxDitherType;
enum {
    ruxDitherNone = 0,   /* plain copy: nothing is reduced */
    ruxDitherFS = 1,     /* error diffusion: Floyd and Steinberg */
    ruxDitherJJN = 2,    /* error diffusion: Jarvis, Judice and Ninke */
    ruxDitherStucki = 3, /* error diffusion: Stucki */
    ruxDitherBayer = 4   /* ordered dither with a 4x4 matrix */
};

/*
 * Maps each channel of a three-channel image onto `levels` evenly spaced values, 2 to 256, from 0 to 255.
 *
 * With step = 255 / (levels - 1), a value v becomes q = truncate(v / step), one more where v - q * step is above a
 * threshold T, and is stored as the byte of q * step.
 *
 * Error diffusion: v is the sample plus the weighted errors v - q * step of neighbours done before; v of 255 or more
 * gives 255, v below 0 gives 0, both without an error. Rows run left to right. T is step / 2.
 *
 *              this row: x-2, x-1    one row up: x-2 .. x+2    two rows up: x-2 .. x+2    divided by
 *   FS                     0  7           0  1  5  3  0                                       16
 *   JJN                    5  7           3  5  7  5  3             1  3  5  3  1             48
 *   Stucki                 4  8           2  4  8  4  2             1  2  4  2  1             42
 *
 * The channels are done one after the other, and the last rows of errors of one enter the top rows of the next.
 *
 * Ordered dither: v is the sample, T = matrix[y & 3][x & 3] * step, the same for the three channels, with the matrix
 * {0 8 2 10 / 12 4 14 6 / 3 11 1 9 / 15 7 13 5} / 15.
 *
 * noise, 0 to 100 percent, spreads T evenly, over step * (50 - noise) / 100 .. step * (50 + noise) / 100 in error
 * diffusion, by up to noise / 100 steps up or down in ordered dither. Its generator starts anew in each call: equal
 * arguments give equal results.
 *
 * px and m6 compute in double, add 9e-6 before they truncate, and store (q * truncate(65280 / (levels - 1))) >> 8; a6
 * and w7 compute in float and store truncate(q * step). So the bytes of a level can differ by one: with 10 levels q = 3
 * gives 84 at px and m6, 85 at a6 and w7; with 12 levels the top one is 254 and 255. Where a threshold takes q past the
 * top level, the low 8 bits are stored; a6 and w7 saturate in ordered dither, not in error diffusion. 256 levels
 * without noise return the image.
 *
 * The rows of dst must not overlap one another: a6 and w7 do several rows of error diffusion at once.
 *
 * ditherType 0 copies and looks at neither noise nor levels; a value outside 0..4 returns ruxStatusOk after the tests
 * and writes nothing.
 *
 * Statuses: ruxStatusNullPointer; ruxStatusSizeError (width or height below 1); ruxStatusStepError (a step below 1);
 * unless ditherType is 0, ruxStatusNoiseAmplitude (noise outside 0..100) and ruxStatusDitherLevels (levels outside
 * 2..256); ruxStatusMemoryAllocated (work memory; dst is untouched).
 */
ruxStatus RUXCALL ruxiReduceBits_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        ruxiSize roiSize, int32_t noise, ruxDitherType ditherType, int32_t levels);

#ifdef __cplusplus
}
#endif

#endif
