/* Video coding on blocks: DCT, MPEG-2 quantisation, motion compensation, residuals, block metrics, chroma
   down-sampling. Bit streams and variable-length codes are in video_stream.h, which this header includes.

   Coefficient blocks are 64 int16_t in raster order, contiguous: row r, column c is element 8 * r + c. Sample blocks
   and residuals lie in strided images: a pointer to the top-left sample, and the row stride in bytes, also for 16-bit
   ones. An odd stride is legal, and no alignment is needed, unless told below.

   Checks are few: null pointers give ruxStatusNullPointer before anything is read or written, and what else is checked
   stands under each function. Sizes, contents and the space behind a pointer are the host's affair. Success is
   ruxStatusOk. All functions are re-entrant and keep nothing between calls.

   px, m6, a6 and w7 are the levels of which one is bound at load. Where no difference is told they agree bit for bit.
   Below, >> is arithmetic. */
#ifndef RUXLIB_VIDEO_H
#define RUXLIB_VIDEO_H

#include "ruxlib/types.h"
#include "ruxlib/status.h"
#include "ruxlib/video_stream.h"

#ifdef __cplusplus
extern "C" {
#endif

/* 8x8 DCT ---------------------------------------------------------------------------------------------------------- */

/* Forward and inverse transform of one block at the orthonormal scale of ISO/IEC 13818-2 Annex A and ISO/IEC 10918-1
   A.3.3:

       F(u,v) = 1/4 C(u) C(v) sum f(x,y) cos((2x+1)u pi/16) cos((2y+1)v pi/16),   C(0) = 1/sqrt(2), else 1

   so that the DC is the sum of the 64 samples divided by 8. All arithmetic is integer fixed point, in one design at px
   and another at m6, a6 and w7. Each is an approximation as IEEE 1180-1990 measures it, and they differ from each other
   by small amounts:

                                px                         m6, a6, w7
     order, forward             rows, columns              columns, rows
     order, inverse             columns, rows              rows, columns
     too large inside           wraps at 16 bits           mostly saturates at 16 bits
     levelShift is added        in 32 bits                 in 16 bits, wrapping
     clipMin above clipMax      clipMin for a value        always clipMax
                                below it, else clipMax

   m6, a6 and w7 agree, but that w7 may differ in the forward transform where sums saturate, outside the usual range.
   64 equal samples v give a DC of 8 * v and nothing else for v from -512 to 511 at px, -256 to 255 at the others;
   a DC of 8 * v alone gives v everywhere, for v from -512 to 511.

   Strides from 1 up are accepted. 8-bit forms touch 8 bytes of a row and 16-bit forms 16; where rows overlap because
   the stride is shorter, an inverse's result depends on the level. dst is work space during the call. The 16-bit forms
   work in place: src equal to dst, stride 16. At w7 pointers and strides that are multiples of 16 bytes are faster.

   Statuses: ruxStatusNullPointer for src or dst; ruxStatusStepError for a stride below 1. */

/* Strided samples to coefficients. The 8-bit form takes 0 .. 255 as they are; it does no level shift. */
ruxStatus RUXCALL ruxiDCT8x8Fwd_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst);
ruxStatus RUXCALL ruxiDCT8x8Fwd_8u16s_C1R(const uint8_t* src, int32_t srcStep, int16_t* dst);

/* Coefficients to strided samples; the 8-bit form clamps to 0 .. 255 (at px a value beyond 16 bits wraps first). */
ruxStatus RUXCALL ruxiDCT8x8Inv_16s_C1R(const int16_t* src, int16_t* dst, int32_t dstStep);
ruxStatus RUXCALL ruxiDCT8x8Inv_16s8u_C1R(const int16_t* src, uint8_t* dst, int32_t dstStep);

/* Coefficients to strided samples: the inverse to 16 bits, then levelShift added, then clamped to clipMin .. clipMax.
   A value of 128 and a levelShift of 32767 give 255 at px, and 0 at the other levels, where the sum wraps. */
ruxStatus RUXCALL ruxiDCT8x8InvLSClip_16s8u_C1R(
    const int16_t* src, uint8_t* dst, int32_t dstStep, int16_t levelShift, uint8_t clipMin, uint8_t clipMax);

/* MPEG-2 quantisation ---------------------------------------------------------------------------------------------- */

/* Quantise a coefficient block in place, for an encoder. quantScale is the quantiser scale itself, already mapped
   from quantiser_scale_code; matrix is 64 multipliers in raster order, 1 / W[k] for a weight W[k].

     intra (k = 1 .. 63)       t = trunc(|v| * 32 * (1 / quantScale) * matrix[k])
                               v becomes (t + 1) >> 1 where v >= 0, (1 - t) >> 1 where v < 0
     non-intra (k = 0 .. 63)   v becomes trunc(|v| * 16 * (1 / quantScale) * matrix[k]) with the sign of v

   clamped to -2047 .. 2047. The intra DC is left alone. Intra rounding is not symmetric: t = 3 gives 2 or -1. *count
   receives the raster index of the last non-zero result (intra: among 1 .. 63), or 0.

   Level differences:
     px, m6   in double precision; a product of 2^32 or more gives a meaningless value. |-32768| is -32768, so that its
              result has the wrong sign
     a6       in single precision, step by step; |-32768| as at px
     w7       in single precision with the processor's reciprocal estimate of quantScale, about 12 bits: results can
              differ by one step near a rounding boundary. t saturates to 16 bits. Where srcDst or matrix is not on a
              16-byte boundary, a negative intra v gives (-t - 1) >> 1: no small negative coefficient becomes 0.
              *count is always 64 (intra); 1 if any result is non-zero, else 0 (non-intra, both on 16 bytes); or not
              written (non-intra otherwise)

   Statuses: ruxStatusNullPointer for srcDst, matrix or count; ruxStatusDivideByZero for a quantScale of 0
   (a negative one is not refused). */
ruxStatus RUXCALL ruxiQuantIntra_MPEG2_16s_C1I(
    int16_t* srcDst, int32_t quantScale, const float* matrix, int32_t* count);
ruxStatus RUXCALL ruxiQuant_MPEG2_16s_C1I(
    int16_t* srcDst, int32_t quantScale, const float* matrix, int32_t* count);

/* Reconstruct a coefficient block in place, for a decoder: inverse quantisation, saturation and mismatch control
   (ISO/IEC 13818-2, 7.4.2 to 7.4.4). matrix is 64 weights in raster order; null in the non-intra form stands for 16
   everywhere. quantScale is not checked.

     intra (k = 1 .. 63)       d = v * 2 * quantScale * matrix[k] / 32
     non-intra (k = 0 .. 63)   d = (2 * v + sign(v)) * quantScale * matrix[k] / 32

   with division toward zero, and clamped to -2048 .. 2047. The intra DC is the host's and passes unchanged. Then, if
   the sum of all 64 values is even, element 63 is decremented where it is odd and incremented where it is even.

   Level differences:
     px, m6   products wrap at 32 bits, and d at 16 bits before it is clamped: |d| above 32767 comes out wrong
     a6, w7   only the low 16 bits of quantScale are used, each product wraps at 16 bits, and so does the sum of product
              and rounding: the wrap begins where the clamp would, so large coefficients come out wrong

   Statuses: ruxStatusNullPointer for srcDst, and for matrix in the intra form. */
ruxStatus RUXCALL ruxiQuantInvIntra_MPEG2_16s_C1I(int16_t* srcDst, int32_t quantScale, const int16_t* matrix);
ruxStatus RUXCALL ruxiQuantInv_MPEG2_16s_C1I(int16_t* srcDst, int32_t quantScale, const int16_t* matrix);

/* Half-pel prediction ---------------------------------------------------------------------------------------------- */

/* The half-pel mode of a prediction: what a motion vector leaves when its whole-sample part has gone into the pointer.
   With a = ref[x,y], b = ref[x+1,y], c = ref[x,y+1], d = ref[x+1,y+1] and r the roundControl (0: ISO/IEC 13818-2,
   7.6.4; 1: rounding down, as ISO/IEC 14496-2 has it; nothing else):

     mcFullPel    a                               reads the block
     mcHalfVert   (a + c + 1 - r) >> 1            and a row below it
     mcHalfHorz   (a + b + 1 - r) >> 1            and a column to its right
     mcHalfBoth   (a + b + c + d + 2 - r) >> 2    and both, with the corner

   This is the exact prediction. No sample is read that the mode does not name. */
typedef int32_t ruxHalfPelMode;

enum {
    mcFullPel = 0,
    mcHalfVert = 4,
    mcHalfHorz = 8,
    mcHalfBoth = 12
};

/* Rebuild a block, 16x16 to 8x4 (width x height): a half-pel prediction plus a 16-bit residual e, saturated to 0 .. 255
   (ISO/IEC 13818-2, 7.6.4 to 7.6.8). The B forms average a forward and a backward prediction, pf and pb. Only bits 2
   and 3 of a mode are read. Strides may be negative or 0. dst must not overlap source rows still to be read.

   Alignment: at w7, 16 wide, dst and diff must stand on 16-byte boundaries with strides that are multiples of 16; a
   violation is a processor fault, not a status. Nothing else needs alignment.

   Prediction, one direction. avg(u,v) = (u + v + 1) >> 1, P0 = avg(a,b), P1 = avg(c,d), "dec" is u - 1 in a signed
   saturating byte (0 becomes 255, 128 stays), "dec1" the same of max(u, 1) (0 stays 0):

     px, m6                 exact
     a6, 16 wide            exact
     a6, 8 wide             r odd: exact. r even: exact, but mcHalfBoth is avg(dec(P0), P1)
     w7, 8x16               as a6
     w7, 8x8 and 8x4        as a6, with dec1 in the place of dec
     w7, 16 wide            r is not read: exact as for r = 0, but mcHalfBoth is avg(dec1(P0), P1), and avg(P0, P1) in
                            the last row

   So a black area in mcHalfBoth with r = 0 is predicted as 128 where dec is used. The result is p + e, saturated.

   Prediction, B forms. floor0(u) = max(u, 0):

     px, m6      pf and pb exact, each with r; the result is (pf + pb + 2 * e + 1) >> 1, saturated, which is
                 e + avg(pf, pb)
     a6, w7      mcFullPel: a. r even: avg(a,b), avg(a,c), avg(P0, floor0(P1 - 1)); r odd: avg(floor0(a - 1), b),
                 avg(floor0(a - 1), c), avg(P0, floor0(P1 - 2)) for mcHalfHorz, mcHalfVert, mcHalfBoth. At w7, 16 wide,
                 always as for r even. t = pf + e + e + pb, each sum saturating at 16 bits; the result is
                 (floor0(t) + 1) >> 1, saturated

   Statuses: ruxStatusNullPointer for any pointer. */
ruxStatus RUXCALL ruxiMC16x16_8u_C1(
    const uint8_t* src, int32_t srcStep, const int16_t* diff, int32_t diffStep, uint8_t* dst, int32_t dstStep,
    ruxHalfPelMode mcType, int32_t roundControl);
ruxStatus RUXCALL ruxiMC16x8_8u_C1(
    const uint8_t* src, int32_t srcStep, const int16_t* diff, int32_t diffStep, uint8_t* dst, int32_t dstStep,
    ruxHalfPelMode mcType, int32_t roundControl);
ruxStatus RUXCALL ruxiMC8x16_8u_C1(
    const uint8_t* src, int32_t srcStep, const int16_t* diff, int32_t diffStep, uint8_t* dst, int32_t dstStep,
    ruxHalfPelMode mcType, int32_t roundControl);
ruxStatus RUXCALL ruxiMC8x8_8u_C1(
    const uint8_t* src, int32_t srcStep, const int16_t* diff, int32_t diffStep, uint8_t* dst, int32_t dstStep,
    ruxHalfPelMode mcType, int32_t roundControl);
ruxStatus RUXCALL ruxiMC8x4_8u_C1(
    const uint8_t* src, int32_t srcStep, const int16_t* diff, int32_t diffStep, uint8_t* dst, int32_t dstStep,
    ruxHalfPelMode mcType, int32_t roundControl);

ruxStatus RUXCALL ruxiMC16x16B_8u_C1(
    const uint8_t* srcForward, int32_t srcForwardStep, ruxHalfPelMode mcTypeForward,
    const uint8_t* srcBackward, int32_t srcBackwardStep, ruxHalfPelMode mcTypeBackward,
    const int16_t* diff, int32_t diffStep, uint8_t* dst, int32_t dstStep, int32_t roundControl);
ruxStatus RUXCALL ruxiMC16x8B_8u_C1(
    const uint8_t* srcForward, int32_t srcForwardStep, ruxHalfPelMode mcTypeForward,
    const uint8_t* srcBackward, int32_t srcBackwardStep, ruxHalfPelMode mcTypeBackward,
    const int16_t* diff, int32_t diffStep, uint8_t* dst, int32_t dstStep, int32_t roundControl);
ruxStatus RUXCALL ruxiMC8x16B_8u_C1(
    const uint8_t* srcForward, int32_t srcForwardStep, ruxHalfPelMode mcTypeForward,
    const uint8_t* srcBackward, int32_t srcBackwardStep, ruxHalfPelMode mcTypeBackward,
    const int16_t* diff, int32_t diffStep, uint8_t* dst, int32_t dstStep, int32_t roundControl);
ruxStatus RUXCALL ruxiMC8x8B_8u_C1(
    const uint8_t* srcForward, int32_t srcForwardStep, ruxHalfPelMode mcTypeForward,
    const uint8_t* srcBackward, int32_t srcBackwardStep, ruxHalfPelMode mcTypeBackward,
    const int16_t* diff, int32_t diffStep, uint8_t* dst, int32_t dstStep, int32_t roundControl);
ruxStatus RUXCALL ruxiMC8x4B_8u_C1(
    const uint8_t* srcForward, int32_t srcForwardStep, ruxHalfPelMode mcTypeForward,
    const uint8_t* srcBackward, int32_t srcBackwardStep, ruxHalfPelMode mcTypeBackward,
    const int16_t* diff, int32_t diffStep, uint8_t* dst, int32_t dstStep, int32_t roundControl);

/* Residual of a block against its exact half-pel prediction, for an encoder: dst = src - p. pred, when it is not null,
   receives p; predStep is not looked at otherwise. Only bits 2 and 3 of the mode are read. Strides may be negative. dst
   and pred must not overlap the sources nor each other, and the rows of either must not overlap.

   The prediction is exact at every level, while the motion compensation of a6 and w7 is not: an encoder that keeps in
   step with a decoder takes its reference pictures from ruxiMC*.

   Statuses: ruxStatusNullPointer for src, ref or dst. */
ruxStatus RUXCALL ruxiGetDiff16x16_8u16s_C1(
    const uint8_t* src, int32_t srcStep, const uint8_t* ref, int32_t refStep, int16_t* dst, int32_t dstStep,
    int16_t* pred, int32_t predStep, ruxHalfPelMode mcType, int32_t roundControl);
ruxStatus RUXCALL ruxiGetDiff8x8_8u16s_C1(
    const uint8_t* src, int32_t srcStep, const uint8_t* ref, int32_t refStep, int16_t* dst, int32_t dstStep,
    int16_t* pred, int32_t predStep, ruxHalfPelMode mcType, int32_t roundControl);

/* The same against the average of two predictions: dst = src - ((pf + pb + 1) >> 1), pf and pb each with roundControl.

   Statuses: ruxStatusNullPointer for src, either reference or dst. */
ruxStatus RUXCALL ruxiGetDiff16x16B_8u16s_C1(
    const uint8_t* src, int32_t srcStep,
    const uint8_t* refForward, int32_t refForwardStep, ruxHalfPelMode mcTypeForward,
    const uint8_t* refBackward, int32_t refBackwardStep, ruxHalfPelMode mcTypeBackward,
    int16_t* dst, int32_t dstStep, int32_t roundControl);
ruxStatus RUXCALL ruxiGetDiff8x8B_8u16s_C1(
    const uint8_t* src, int32_t srcStep,
    const uint8_t* refForward, int32_t refForwardStep, ruxHalfPelMode mcTypeForward,
    const uint8_t* refBackward, int32_t refBackwardStep, ruxHalfPelMode mcTypeBackward,
    int16_t* dst, int32_t dstStep, int32_t roundControl);

/* Block metrics ---------------------------------------------------------------------------------------------------- */

/* Measures of a 16x16 block for motion estimation and mode decision. p is the exact half-pel prediction from ref with a
   roundControl of 0. Strides may be negative. Statuses: ruxStatusNullPointer for any pointer, result included, before
   the mode is looked at. */

/* *result = sum of |p - src|. Mind the order of the last two arguments.

   Level differences:
     px           any mcType: bit 2 adds the row below, bit 3 the column to the right. The row below is taken
                  refStep AND 255 bytes further on, so mcHalfVert and mcHalfBoth measure the wrong samples where
                  refStep is above 255 or below 0. They may lie outside the picture: (refStep AND 255) + 17 bytes
                  from each row's start on must be readable
     m6, a6, w7   an mcType other than the four modes gives ruxStatusOk with *result not written */
ruxStatus RUXCALL ruxiSAD16x16_8u32s(
    const uint8_t* src, int32_t srcStep, const uint8_t* ref, int32_t refStep, int32_t* result,
    ruxHalfPelMode mcType);

/* *result = sum of (p - src)^2.

   Level differences: an mcType other than the four modes measures as mcHalfBoth at px; at m6, a6 and w7 it gives
   ruxStatusOk with *result not written. */
ruxStatus RUXCALL ruxiSqrDiff16x16_8u32s(
    const uint8_t* src, int32_t srcStep, const uint8_t* ref, int32_t refStep, ruxHalfPelMode mcType,
    int32_t* result);

/* *result = sum of (((pf + pb + 1) >> 1) - src)^2. Only bits 2 and 3 of a mode are read. At every level the row below
   is taken (stride AND 255) bytes further on, each reference with its own stride: with mcHalfVert and mcHalfBoth,
   references whose stride is above 255 or below 0 are measured at the wrong samples. They may lie outside the picture:
   (stride AND 255) + 17 bytes from each row's start on must be readable. */
ruxStatus RUXCALL ruxiSqrDiff16x16B_8u32s(
    const uint8_t* src, int32_t srcStep,
    const uint8_t* refForward, int32_t refForwardStep, ruxHalfPelMode mcTypeForward,
    const uint8_t* refBackward, int32_t refBackwardStep, ruxHalfPelMode mcTypeBackward, int32_t* result);

/* *result = sum of squares - (sum)^2 / 256: the sum of squared deviations from the mean, which is 256 times the
   variance.

   Level differences: at px, m6 and a6 the square of the sum wraps in 32 signed bits where the sum is above 46340
   (mean above 181; its quotient goes toward zero): 256 samples of 255 give 16777216 there, and 0 at w7. */
ruxStatus RUXCALL ruxiVariance16x16_8u32s(const uint8_t* src, int32_t srcStep, int32_t* result);

/* Chroma down-sampling --------------------------------------------------------------------------------------------- */

/* Halves a plane in both directions, for chroma sub-sampling of 2:1 by 2:1 as in ISO/IEC 10918-1:

       dst[x,y] = (src[2x,2y] + src[2x+1,2y] + src[2x,2y+1] + src[2x+1,2y+1] + 3) >> 2

   a mean that is rounded up at every place. dstRoiSize alone, in output pixels, says what is computed: twice its width
   and height are read from src. srcRoiSize is only checked.

   Statuses, in this order: ruxStatusNullPointer for src; ruxStatusStepError for a srcStep below 1; ruxStatusSizeError
   for a srcRoiSize with a side below 1; then the same three for dst, dstStep and dstRoiSize. */
ruxStatus RUXCALL ruxiSampleDownH2V2_JPEG_8u_C1R(
    const uint8_t* src, int32_t srcStep, ruxiSize srcRoiSize, uint8_t* dst, int32_t dstStep, ruxiSize dstRoiSize);

#ifdef __cplusplus
}
#endif

#endif
