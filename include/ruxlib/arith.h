/* Pixel arithmetic and statistics: float arithmetic, conversion, 8-bit logic, thresholds, comparison, reductions,
   norms.

   Common to all: a region of interest is a pointer to its first pixel, a stride from row to row in bytes, and a size in
   pixels. Elements need no alignment, and a stride need only be 1 or more, unless told otherwise. Nothing outside the
   region is read or written. Floats are IEEE 754 single precision; "double" is IEEE 754 double whatever x87 precision
   the host has set. Checks are listed in the order in which they are made; a failed call has written nothing. Nothing
   is allocated. All are re-entrant; calls on disjoint regions may run at once. */
#ifndef RUXLIB_ARITH_H
#define RUXLIB_ARITH_H

#include "ruxlib/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Float images into float images, in place: srcDst = srcDst + src, srcDst - src, srcDst * src, each rounded once; equal
   at all levels in the channels that are processed.
   Checks of C1 and AC4: null pointer -8; width or height below 1 -6; stride below 1 -14.
   Checks of C3 and C4: width below 1 -6, before any pointer is looked at; then those of C1, with the width in elements
   (width x 3 or x 4, in 32 bits, overflow unnoticed).
   AC4: the fourth float is neither read nor written at px and m6. At a6 and w7 it is read and stored again as x + 0.0,
   x - 0.0 or x * 1.0: its value stays, but Add turns -0.0 into +0.0, a signalling NaN becomes quiet, and what another
   thread writes there in that moment can be lost. */
ruxStatus RUXCALL ruxiAdd_32f_C1IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                   ruxiSize roiSize);
ruxStatus RUXCALL ruxiAdd_32f_C3IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                   ruxiSize roiSize);
ruxStatus RUXCALL ruxiAdd_32f_C4IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                   ruxiSize roiSize);
ruxStatus RUXCALL ruxiAdd_32f_AC4IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                    ruxiSize roiSize);
ruxStatus RUXCALL ruxiSub_32f_C1IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                   ruxiSize roiSize);
ruxStatus RUXCALL ruxiSub_32f_C3IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                   ruxiSize roiSize);
ruxStatus RUXCALL ruxiSub_32f_C4IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                   ruxiSize roiSize);
ruxStatus RUXCALL ruxiSub_32f_AC4IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                    ruxiSize roiSize);
ruxStatus RUXCALL ruxiMul_32f_C1IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                   ruxiSize roiSize);
ruxStatus RUXCALL ruxiMul_32f_C3IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                   ruxiSize roiSize);
ruxStatus RUXCALL ruxiMul_32f_C4IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                   ruxiSize roiSize);
ruxStatus RUXCALL ruxiMul_32f_AC4IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                    ruxiSize roiSize);

/* Accumulate an 8-bit image: srcDst = srcDst + src, and with a weight srcDst = srcDst + (src - srcDst) * alpha.
   Checks: null pointer -8; width or height below 0, srcStep below width, srcDstStep below width x 4 or no multiple of 4
   -6. A width or height of 0 is no error: ruxStatusOk with nothing done.
   The plain sum is equal at all levels. The weighted one rounds once, after double steps, at px and m6, and after each
   of its three single-precision steps at a6 and w7. alpha 0.0 leaves a finite srcDst as it is, but for -0.0, which
   becomes +0.0. */
ruxStatus RUXCALL ruxiAdd_8u32f_C1IR(const uint8_t* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                     ruxiSize roiSize);
ruxStatus RUXCALL ruxiAddWeighted_8u32f_C1IR(const uint8_t* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                             ruxiSize roiSize, float alpha);

/* Divide by a constant: srcDst = srcDst * c with c = 1 / value, rounded to single precision once for the call; so the
   last bit can differ from a true division. c = 1 leaves every bit as it is, a signalling NaN too; c = 0 (value
   infinite) makes every element +0.0, NaN too. A reciprocal that overflows is no error: c is then infinite.
   Checks: srcDst null -8; width or height below 1 -6; srcDstStep below 1 -14; value 0.0, -0.0 or NaN -10.
   a6 and w7 store past the caches once the destination stands on a 16-byte boundary. */
ruxStatus RUXCALL ruxiDivC_32f_C1IR(float value, float* srcDst, int32_t srcDstStep, ruxiSize roiSize);

/* dst = (float)src, exact. Checks: null pointer -8; width or height below 1 -6; stride below 1 -14.
   Stores go past the caches at a6 always, ended by a store fence; at w7, once dst stands on a 16-byte boundary, when
   the image is contiguous (srcStep = width, dstStep = 4 x width) and above 52428 pixels, or when it is not, has more
   than 104858 pixels and is wider than 256. */
ruxStatus RUXCALL ruxiConvert_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                        ruxiSize roiSize);

/* dst = src rounded to an integer and saturated to 0 .. 255. roundMode 1: to nearest, ties to even; any other value:
   toward zero (not checked). The host's rounding modes have no influence and are left as found.
   Checks: null pointer -8; width or height below 1 -6; stride below 1 -14.
   NaN gives 0 at px and m6, 255 at a6 and w7; all numbers are equal at all levels. a6 stores past the caches. */
ruxStatus RUXCALL ruxiConvert_32f8u_C1R(const float* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        ruxiSize roiSize, int32_t roundMode);

/* dst = |src1 - src2| without wrapping, and dst = src1 AND src2; equal at all levels.
   Checks: null pointer -8; one of the three strides below 1 -14; width or height below 1 -6: strides before sizes. */
ruxStatus RUXCALL ruxiAbsDiff_8u_C1R(const uint8_t* src1, int32_t src1Step, const uint8_t* src2, int32_t src2Step,
                                     uint8_t* dst, int32_t dstStep, ruxiSize roiSize);
ruxStatus RUXCALL ruxiAnd_8u_C1R(const uint8_t* src1, int32_t src1Step, const uint8_t* src2, int32_t src2Step,
                                 uint8_t* dst, int32_t dstStep, ruxiSize roiSize);

/* Threshold to a band: x > thresholdGT becomes valueGT; else x < thresholdLT becomes valueLT; else x stays. C1 takes
   scalars; C3 and AC4 take arrays of 3, one entry for each channel. The fourth channel of AC4 stays as dst has it and
   is not copied from src; in 8u and 16s m6, a6 and w7 may rewrite it with its own value, so that what another thread
   writes there in that moment can be lost. An in-place form is its other form with srcDst as source and destination.
   Checks: null image -8; width or height below 1 -6; stride below 1 -14; C3 and AC4: null array -8; thresholdGT below
   thresholdLT, in any channel, -18. Equal thresholds are allowed.
   8u and 16s: equal at all levels. 32f:
     a6, w7, and C3 and AC4 at px and m6   float comparisons; NaN becomes valueLT; a NaN threshold gives -18.
     C1 at px and m6                       a NaN threshold is no error, and pixels are compared by their bits (s: as
                                           signed, u: as unsigned 32-bit numbers):
                                             both thresholds < 0     above: u below GT     below: u above LT
                                             only thresholdLT < 0    above: s above GT     below: u above LT
                                             thresholdLT not < 0     above: s above GT     below: s below LT
                                           So -0.0 is below +0.0, a NaN falls where its bits fall, and a threshold of
                                           -0.0 or NaN counts as not below 0.
   32f C1 at w7 stores past the caches when src and dst reach 16-byte boundaries together, at any size; a store fence
   then ends the call. */
ruxStatus RUXCALL ruxiThreshold_LTValGTVal_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                  ruxiSize roiSize, uint8_t thresholdLT, uint8_t valueLT,
                                                  uint8_t thresholdGT, uint8_t valueGT);
ruxStatus RUXCALL ruxiThreshold_LTValGTVal_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                  ruxiSize roiSize, const uint8_t thresholdLT[3],
                                                  const uint8_t valueLT[3], const uint8_t thresholdGT[3],
                                                  const uint8_t valueGT[3]);
ruxStatus RUXCALL ruxiThreshold_LTValGTVal_8u_AC4R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                   ruxiSize roiSize, const uint8_t thresholdLT[3],
                                                   const uint8_t valueLT[3], const uint8_t thresholdGT[3],
                                                   const uint8_t valueGT[3]);
ruxStatus RUXCALL ruxiThreshold_LTValGTVal_8u_C1IR(uint8_t* srcDst, int32_t srcDstStep, ruxiSize roiSize,
                                                   uint8_t thresholdLT, uint8_t valueLT, uint8_t thresholdGT,
                                                   uint8_t valueGT);
ruxStatus RUXCALL ruxiThreshold_LTValGTVal_8u_C3IR(uint8_t* srcDst, int32_t srcDstStep, ruxiSize roiSize,
                                                   const uint8_t thresholdLT[3], const uint8_t valueLT[3],
                                                   const uint8_t thresholdGT[3], const uint8_t valueGT[3]);
ruxStatus RUXCALL ruxiThreshold_LTValGTVal_8u_AC4IR(uint8_t* srcDst, int32_t srcDstStep, ruxiSize roiSize,
                                                    const uint8_t thresholdLT[3], const uint8_t valueLT[3],
                                                    const uint8_t thresholdGT[3], const uint8_t valueGT[3]);
ruxStatus RUXCALL ruxiThreshold_LTValGTVal_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                                   ruxiSize roiSize, int16_t thresholdLT, int16_t valueLT,
                                                   int16_t thresholdGT, int16_t valueGT);
ruxStatus RUXCALL ruxiThreshold_LTValGTVal_16s_C3R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                                   ruxiSize roiSize, const int16_t thresholdLT[3],
                                                   const int16_t valueLT[3], const int16_t thresholdGT[3],
                                                   const int16_t valueGT[3]);
ruxStatus RUXCALL ruxiThreshold_LTValGTVal_16s_AC4R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                                    ruxiSize roiSize, const int16_t thresholdLT[3],
                                                    const int16_t valueLT[3], const int16_t thresholdGT[3],
                                                    const int16_t valueGT[3]);
ruxStatus RUXCALL ruxiThreshold_LTValGTVal_16s_C1IR(int16_t* srcDst, int32_t srcDstStep, ruxiSize roiSize,
                                                    int16_t thresholdLT, int16_t valueLT, int16_t thresholdGT,
                                                    int16_t valueGT);
ruxStatus RUXCALL ruxiThreshold_LTValGTVal_16s_C3IR(int16_t* srcDst, int32_t srcDstStep, ruxiSize roiSize,
                                                    const int16_t thresholdLT[3], const int16_t valueLT[3],
                                                    const int16_t thresholdGT[3], const int16_t valueGT[3]);
ruxStatus RUXCALL ruxiThreshold_LTValGTVal_16s_AC4IR(int16_t* srcDst, int32_t srcDstStep, ruxiSize roiSize,
                                                     const int16_t thresholdLT[3], const int16_t valueLT[3],
                                                     const int16_t thresholdGT[3], const int16_t valueGT[3]);
ruxStatus RUXCALL ruxiThreshold_LTValGTVal_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                                   ruxiSize roiSize, float thresholdLT, float valueLT,
                                                   float thresholdGT, float valueGT);
ruxStatus RUXCALL ruxiThreshold_LTValGTVal_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                                   ruxiSize roiSize, const float thresholdLT[3], const float valueLT[3],
                                                   const float thresholdGT[3], const float valueGT[3]);
ruxStatus RUXCALL ruxiThreshold_LTValGTVal_32f_AC4R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                                    ruxiSize roiSize, const float thresholdLT[3],
                                                    const float valueLT[3], const float thresholdGT[3],
                                                    const float valueGT[3]);
ruxStatus RUXCALL ruxiThreshold_LTValGTVal_32f_C1IR(float* srcDst, int32_t srcDstStep, ruxiSize roiSize,
                                                    float thresholdLT, float valueLT, float thresholdGT, float valueGT);
ruxStatus RUXCALL ruxiThreshold_LTValGTVal_32f_C3IR(float* srcDst, int32_t srcDstStep, ruxiSize roiSize,
                                                    const float thresholdLT[3], const float valueLT[3],
                                                    const float thresholdGT[3], const float valueGT[3]);
ruxStatus RUXCALL ruxiThreshold_LTValGTVal_32f_AC4IR(float* srcDst, int32_t srcDstStep, ruxiSize roiSize,
                                                     const float thresholdLT[3], const float valueLT[3],
                                                     const float thresholdGT[3], const float valueGT[3]);

/* Lower threshold in place: x < threshold becomes value, else x stays.
   Checks: srcDst null -8; width or height below 1 -6; srcDstStep below 1 -14.
   a6, w7: float comparison; NaN becomes value. px, m6: by the bits; with a threshold below 0.0, x is below when its
   bits are above the threshold's, unsigned; otherwise when they are below, signed. So there -0.0 is below +0.0 and a
   NaN falls where its bits fall. w7 stores past the caches when srcDst reaches a 16-byte boundary, at any size; a store
   fence then ends the call. */
ruxStatus RUXCALL ruxiThreshold_LTVal_32f_C1IR(float* srcDst, int32_t srcDstStep, ruxiSize roiSize, float threshold,
                                               float value);

/* The comparison that an operation makes of a and b. */
typedef int32_t ruxCmpOp;
enum {
    ruxCmpLess = 0,      /* a < b */
    ruxCmpLessEq = 1,    /* a <= b */
    ruxCmpEq = 2,        /* a = b */
    ruxCmpGreaterEq = 3, /* a >= b */
    ruxCmpGreater = 4    /* a > b */
};

/* Compare with an image or a constant into a byte mask: dst = 255 where src1 op src2 (src op value) holds, else 0.
   Checks: null pointer -8; stride below 1 -14; width or height below 1 -6: strides before sizes. Any other cmpOp is no
   error: ruxStatusOk, and dst is not written.
   Zeros of either sign are equal. With a NaN on either side the mask byte depends on level and operator:
                       Less   LessEq   Eq    GreaterEq   Greater
     image,  px         255     255    255      255        255
     image,  m6           0       0    255        0          0
     image,  a6 w7        0       0      0        0          0
     value,  px m6      255     255    255        0          0
     value,  a6 w7        0       0      0      255        255 */
ruxStatus RUXCALL ruxiCompare_32f_C1R(const float* src1, int32_t src1Step, const float* src2, int32_t src2Step,
                                      uint8_t* dst, int32_t dstStep, ruxiSize roiSize, ruxCmpOp cmpOp);
ruxStatus RUXCALL ruxiCompareC_32f_C1R(const float* src, int32_t srcStep, float value, uint8_t* dst, int32_t dstStep,
                                       ruxiSize roiSize, ruxCmpOp cmpOp);
ruxStatus RUXCALL ruxiCompareC_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t value, uint8_t* dst, int32_t dstStep,
                                      ruxiSize roiSize, ruxCmpOp cmpOp);

/* *counts = number of pixels with lowerBound <= x <= upperBound.
   Checks: null pointer -8; srcStep below 1 -14; width or height below 1 -6; lowerBound above upperBound -7.
   8u: exact; at w7 only for rows under 524288 pixels (16-bit lanes count within a row).
   32f: NaN pixels never count. A NaN bound gives -7 at px and m6, ruxStatusOk with a count of 0 at a6 and w7. */
ruxStatus RUXCALL ruxiCountInRange_8u_C1R(const uint8_t* src, int32_t srcStep, ruxiSize roiSize, int32_t* counts,
                                          uint8_t lowerBound, uint8_t upperBound);
ruxStatus RUXCALL ruxiCountInRange_32f_C1R(const float* src, int32_t srcStep, ruxiSize roiSize, int32_t* counts,
                                           float lowerBound, float upperBound);

/* *max = the largest element. Checks: null pointer -8; width or height below 1 -6; srcStep below 1 -14.
   Equal at all levels for images without NaN, but that an image of nothing but -infinity gives -infinity at px and m6
   and the lowest finite float at a6 and w7. NaN is passed over, except: at px one in the first pixel is the result;
   at m6 that holds, and one that begins a later row hides the whole row; at a6 and w7 it stands until the next element
   of its lane, so that the outcome depends on its place. */
ruxStatus RUXCALL ruxiMax_32f_C1R(const float* src, int32_t srcStep, ruxiSize roiSize, float* max);

/* *sum = the sum of all bytes, exact and equal at all levels for rows under 2**31 / 255 pixels (8421504).
   Checks: null pointer -8; width or height below 1 -6; srcStep below 1 -14. */
ruxStatus RUXCALL ruxiSum_8u_C1R(const uint8_t* src, int32_t srcStep, ruxiSize roiSize, double* sum);

/* L1 norm of a difference, channel by channel: norm[c] = sum of |src1 - src2|. norm has 1 entry for C1, 3 for C3 and
   for AC4 (the fourth channel does not count), 4 for C4.
   Checks: null pointer -8; width or height below 1 -6; stride below 1 -14.
   8u, 16s: differences in full (up to 65535), sums exact; px adds a row in 32-bit integers, so there as long as a row's
   sum stays below 2**31.
   32f: hint 2 asks for double, any other value allows the fast way (not checked).
     px, m6, and hint 2 at a6 and w7   difference, absolute value and sum in double. C1 keeps a sum for the even columns
                                       and one for the odd, over all rows, and adds them at the end.
     other hints at a6 and w7          single precision within a row, in lanes; row totals are added in double from top
                                       to bottom.
   A NaN in a pixel that takes part makes the result NaN. */
ruxStatus RUXCALL ruxiNormDiff_L1_8u_C1R(const uint8_t* src1, int32_t src1Step, const uint8_t* src2, int32_t src2Step,
                                         ruxiSize roiSize, double* norm);
ruxStatus RUXCALL ruxiNormDiff_L1_8u_C3R(const uint8_t* src1, int32_t src1Step, const uint8_t* src2, int32_t src2Step,
                                         ruxiSize roiSize, double norm[3]);
ruxStatus RUXCALL ruxiNormDiff_L1_8u_C4R(const uint8_t* src1, int32_t src1Step, const uint8_t* src2, int32_t src2Step,
                                         ruxiSize roiSize, double norm[4]);
ruxStatus RUXCALL ruxiNormDiff_L1_8u_AC4R(const uint8_t* src1, int32_t src1Step, const uint8_t* src2, int32_t src2Step,
                                          ruxiSize roiSize, double norm[3]);
ruxStatus RUXCALL ruxiNormDiff_L1_16s_C1R(const int16_t* src1, int32_t src1Step, const int16_t* src2, int32_t src2Step,
                                          ruxiSize roiSize, double* norm);
ruxStatus RUXCALL ruxiNormDiff_L1_16s_C3R(const int16_t* src1, int32_t src1Step, const int16_t* src2, int32_t src2Step,
                                          ruxiSize roiSize, double norm[3]);
ruxStatus RUXCALL ruxiNormDiff_L1_16s_C4R(const int16_t* src1, int32_t src1Step, const int16_t* src2, int32_t src2Step,
                                          ruxiSize roiSize, double norm[4]);
ruxStatus RUXCALL ruxiNormDiff_L1_16s_AC4R(const int16_t* src1, int32_t src1Step, const int16_t* src2, int32_t src2Step,
                                           ruxiSize roiSize, double norm[3]);
ruxStatus RUXCALL ruxiNormDiff_L1_32f_C1R(const float* src1, int32_t src1Step, const float* src2, int32_t src2Step,
                                          ruxiSize roiSize, double* norm, int32_t hint);
ruxStatus RUXCALL ruxiNormDiff_L1_32f_C3R(const float* src1, int32_t src1Step, const float* src2, int32_t src2Step,
                                          ruxiSize roiSize, double norm[3], int32_t hint);
ruxStatus RUXCALL ruxiNormDiff_L1_32f_C4R(const float* src1, int32_t src1Step, const float* src2, int32_t src2Step,
                                          ruxiSize roiSize, double norm[4], int32_t hint);
ruxStatus RUXCALL ruxiNormDiff_L1_32f_AC4R(const float* src1, int32_t src1Step, const float* src2, int32_t src2Step,
                                           ruxiSize roiSize, double norm[3], int32_t hint);

/* The same over the pixels whose mask byte is not 0; a NaN under a zero mask byte does not count, and no such pixel
   gives 0.0.
   Checks: null pointer -8; one of the three strides below 1 -14; width or height below 1 -6: strides before sizes;
   then, for 32f, src1Step or src2Step no multiple of 4 -108, also at height 1. The mask's stride is free.
   8u: a 32-bit total over the whole image, exact up to 8421504 pixels.
   32f: at px and m6 in double, the masked differences of 4 pixels first, ((d0 + d1) + d2) + d3, then to the total, and
   the rest of a row singly; *norm is updated on the way. At a6 and w7 the total is one single-precision number. */
ruxStatus RUXCALL ruxiNormDiff_L1_8u_C1MR(const uint8_t* src1, int32_t src1Step, const uint8_t* src2, int32_t src2Step,
                                          const uint8_t* mask, int32_t maskStep, ruxiSize roiSize, double* norm);
ruxStatus RUXCALL ruxiNormDiff_L1_32f_C1MR(const float* src1, int32_t src1Step, const float* src2, int32_t src2Step,
                                           const uint8_t* mask, int32_t maskStep, ruxiSize roiSize, double* norm);

#ifdef __cplusplus
}
#endif

#endif
