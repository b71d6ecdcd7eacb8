/*
 * Neighbourhood filters on 8-bit one-channel images: box, row, lowpass, maximum, median, Sobel, Canny.
 *
 * Common to all:
 * - src, dst, srcDst name the first pixel of the region (x = 0, y = 0); roiSize is the region in pixels; steps are
 *   row strides in bytes.
 * - Only Sobel and Canny handle borders. Every other filter reads the pixels around the region as they stand, and
 *   the caller provides them: what is read is told at each function.
 * - Source and destination must not overlap, but in ruxiFilterBox_8u_C1IR.
 * - Statuses are given in the order in which they are tested. A failed test leaves every output unwritten.
 * - A shift right is arithmetic. Levels agree bit for bit unless told.
 */
#ifndef RUXLIB_FILTER_H
#define RUXLIB_FILTER_H

#include "ruxlib/types.h"
#include "ruxlib/status.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Box filter: the mean of a mask of any size from 2x2 up, at a cost that does not grow with the mask.
 *
 *   s = sum of src(x - anchor.x + i, y - anchor.y + j), i below maskSize.width, j below maskSize.height
 *   dst(x, y) = low 8 bits of (s * m) >> (shift modulo 32)
 *
 * anchor is the mask cell that lies on the output pixel. Read around the region: anchor.x columns to the left,
 * maskSize.width - 1 - anchor.x to the right, and the same for rows.
 *
 * m / 2^shift approximates 1 / area from below or above, with 8 bits, rounded, at px, m6 and a6 and with 12 bits,
 * truncated, at w7; nothing rounds the quotient. With v = (float)1/area, both are formed so:
 *   t = v * 2^32 + 0.000009, truncated, at px; v * 2^32 - 0.49999, rounded to nearest, at m6, a6, w7
 *   t is shifted left until bit 31 is set, but no more than 24 times: c times
 *   px, m6, a6:  m = (t + 2^23) >> 24, shift = c + 8          w7:  m = t >> 20, shift = c + 12
 * A shift is 32 or more for areas above 2^20 at w7, above 2^24 elsewhere. For areas 4, 6, 9, 16, 25, 49 (m, shift) is
 *   px, m6, a6:  128, 9     171, 10    228, 11    128, 11    164, 12    167, 13
 *   w7:          2048, 13   2730, 14   3640, 15   2048, 15   2621, 16   2674, 17
 * So a white image need not stay white: 5x5 gives 255 at px, m6, a6 and 254 at w7. The product wraps in 32 bits,
 * which shows at w7 for areas above 8192.
 *
 * A 3x3 mask has a path of its own, where the place in the row decides. With hu(s, k) = (s * k) >> 16:
 *                            px, m6               a6, w7, first width / 8 * 8 pixels    a6, w7, the rest
 *   ruxiFilterBox_8u_C1R     (s * 228) >> 11      (hu(s, 29127) + 2) >> 2               (s * 455) >> 12
 *   ruxiFilterBox_8u_C1IR    (s * 455) >> 12      (hu(s, 29127) + 2) >> 2               (s * 455) >> 12
 * White through these columns gives 255 (C1IR: 254), 255, 254.
 *
 * a6 and w7 end each call of ruxiFilterBox_8u_C1R that passes the tests with a store fence.
 *
 * Statuses: ruxStatusNullPointer; ruxStatusStepError (a step below 1); ruxStatusSizeError (width or height below 1);
 * ruxStatusMaskSize (mask width or height below 2: 1xN and Nx1 are refused); ruxStatusAnchor (anchor outside the
 * mask); ruxStatusMemoryAllocated (work memory; the image is untouched).
 */
ruxStatus RUXCALL ruxiFilterBox_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       ruxiSize roiSize, ruxiSize maskSize, ruxiPoint anchor);

/*
 * Box filter in place. Output rows wait in a ring of anchor.y + 1 rows until no later window needs the row where
 * they land, so that every window sees unfiltered pixels. Two properties of that schedule reach the host:
 * - Rows 0 to 2 * anchor.y are always filtered and rows 0 to anchor.y always written. A region of height anchor.y
 *   or less has the rows below it, down to row anchor.y, written too; and a region of height 2 * anchor.y or less
 *   reads as if it were 2 * anchor.y + 1 high.
 * - With any mask but 3x3, a region of height anchor.y + 2 gets the result of its row 0 in every row.
 * The call owns the region and all pixels around it that it reads.
 *
 * Statuses: those of ruxiFilterBox_8u_C1R. ruxStatusMemoryAllocated is for any of three blocks: the sums of columns
 * (not with a 3x3 mask), the table of anchor.y + 1 pointers, the ring; the image is untouched. When the ring cannot be
 * allocated, the 3x3 path does not release its table.
 */
ruxStatus RUXCALL ruxiFilterBox_8u_C1IR(uint8_t* srcDst, int32_t srcDstStep, ruxiSize roiSize, ruxiSize maskSize,
                                        ruxiPoint anchor);

/*
 * Convolution along rows with an integer kernel and a divisor.
 *
 *   a = sum of kernel[j] * src(x + xAnchor - j, y), j from 0 to kernelSize - 1, wrapping in 32 bits
 *   dst(x, y) = a / divisor, rounded as below, saturated to 0..255
 *
 * The kernel is applied in reverse order. Any xAnchor is legal; in each row the columns from xAnchor - kernelSize + 1
 * to width - 1 + xAnchor are read, no others.
 *
 *   divisor                     px                  m6              a6, w7, general     a6, w7, fast
 *   1                           a                   a               a                   a
 *   2^c                         (a + 1) >> c,       as px           as px               a >> c
 *                               0 if a < 1
 *   other, negative included:   double, a * f       double, to      float, toward       float, to
 *   a * f, f = (float)1/divisor + 0.5, truncated,   nearest even    zero                nearest even
 *                               0 if a * f <= 0
 * In the float columns a is converted to float and the product rounded to float. A quotient that 32 bits do not hold,
 * 2^31 from -2^31 by -1, saturates as the others above 255 do. The addend of a power of two is 1
 * whatever the shift: a divisor of 4 does not round to nearest. A sum of 5 with divisor 3 gives 2, 2, 1, 2.
 *
 * a6 and w7 take the fast column when kernelSize is 3 or more, the width 16 or more, all coefficients fit in signed
 * 16 bits, and work memory of kernelSize * 4 + width elements of 4 bytes can be had; otherwise the general one. A
 * narrow and a wide image of the same content can thus round differently there.
 *
 * Statuses: ruxStatusNullPointer (src, dst, kernel); ruxStatusSizeError (width, height or kernelSize below 1);
 * ruxStatusDivisorZero; ruxStatusStepError (a step below 1).
 */
ruxStatus RUXCALL ruxiFilterRow_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       ruxiSize roiSize, const int32_t* kernel, int32_t kernelSize, int32_t xAnchor,
                                       int32_t divisor);

/*
 * Rounded mean of the 3x3 (maskCode 33) or 5x5 (maskCode 55) pixels centred on the output pixel, s being their sum:
 *
 *   33:  ((s + 5) * 455) >> 12 at px, ((s + 5) * 7281) >> 16 at m6, a6, w7, which can differ by one
 *   55:  ((s + 13) * 10485) >> 18
 *
 * Reads one (33) or two (55) pixels beyond the region on every side. White stays white.
 *
 * Statuses: ruxStatusNullPointer; ruxStatusSizeError (width or height below 1); ruxStatusStepError (a step below 1);
 * ruxStatusMaskSize (another maskCode); ruxStatusMemoryAllocated (work memory; dst is untouched).
 */
ruxStatus RUXCALL ruxiFilterLowpass_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           ruxiSize roiSize, int32_t maskCode);

/*
 * Greatest value in a rectangular mask (grey-scale dilation):
 *
 *   dst(x, y) = max of src(x - anchor.x + i, y - anchor.y + j), i below maskSize.width, j below maskSize.height
 *
 * Read around the region: anchor.x columns to the left, maskSize.width - 1 - anchor.x to the right, and the same for
 * rows. A 1x1 mask copies. At px the cost of a pixel grows with the mask's width.
 *
 * Statuses: ruxStatusNullPointer; ruxStatusSizeError (width or height below 1); ruxStatusStepError (a step below 1);
 * ruxStatusMaskSize (mask width or height below 1); ruxStatusAnchor (anchor outside the mask);
 * ruxStatusMemoryAllocated (work memory; dst is untouched; at px the first of the two blocks is not released when
 * the second cannot be had).
 */
ruxStatus RUXCALL ruxiFilterMax_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       ruxiSize roiSize, ruxiSize maskSize, ruxiPoint anchor);

/*
 * Median of the pixels of a window centred on the output pixel. maskCode gives width and height of the window in two
 * decimal digits:
 *
 *   Horiz  31  the pixel and one neighbour left and right
 *          51  the pixel and two neighbours left and right
 *   Cross  33  the pixel, left, right, upper and lower neighbour: 5 values
 *          55  the pixel and two neighbours in each of the four directions: 9 values
 *
 * Reads one (31, 33) or two (51, 55) columns beyond the region on both sides; the cross as many rows above and below
 * too. A code of the other function is refused. Nothing is allocated.
 *
 * All levels give the same image. w7 and a6 write whole blocks past the caches (non-temporal stores) and end the call
 * with a store fence.
 *
 * Statuses: ruxStatusNullPointer; ruxStatusSizeError (width or height below 1); ruxStatusStepError (a step below 1);
 * ruxStatusMaskSize (another maskCode).
 */
ruxStatus RUXCALL ruxiFilterMedianHoriz_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                               ruxiSize roiSize, int32_t maskCode);
ruxStatus RUXCALL ruxiFilterMedianCross_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                               ruxiSize roiSize, int32_t maskCode);

/*
 * Sobel 3x3 derivatives, exact. s(x, y) is the source with coordinates clamped into the region: no pixel outside the
 * region is read.
 *
 *   Dx:  D(x, y) = s(x + 1, y) - s(x - 1, y)
 *        dst(x, y) = D(x, y - 1) + 2 * D(x, y) + D(x, y + 1)           positive where the right side is brighter
 *   Dy:  H(x, y) = s(x - 1, y) + 2 * s(x, y) + s(x + 1, y)
 *        rowOrder 0:  dst(x, y) = H(x, y + 1) - H(x, y - 1)            positive where the lower side is brighter
 *        rowOrder 1:  dst(x, y) = H(x, y - 1) - H(x, y + 1)
 *
 * Values lie in -1020..1020. dstStep is in bytes and must be even.
 *
 * A region of width 1 differs by level: at px and m6 it is handled as two columns wide, so that the column right of
 * it is read in src and written in dst, and the caller must provide both; at a6 and w7 it is one column, the
 * neighbours of a pixel being the pixel itself.
 *
 * Statuses: ruxStatusNullPointer; ruxStatusStepError (a step below 1); ruxStatusSizeError (width below 1 or height
 * below 2); ruxStatusStepNotPixelMultiple (dstStep odd); Dy: ruxStatusBadArgument (rowOrder neither 0 nor 1).
 */
ruxStatus RUXCALL ruxiSobel3x3_Dx_8u16s_C1R(const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                            ruxiSize roiSize);
ruxStatus RUXCALL ruxiSobel3x3_Dy_8u16s_C1R(const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                            int32_t rowOrder, ruxiSize roiSize);

/*
 * Size in bytes of the work buffer that ruxiCanny_16s8u_C1R needs for a region, the same at every level:
 *
 *   *bufferSize = 12 * (width + 2) * (height + 2)
 *
 * in 32 bits: above 2^31 - 1 it wraps, and tells no size.
 *
 * Statuses: ruxStatusSizeError (width or height below 1); ruxStatusNullPointer. The size comes first.
 */
ruxStatus RUXCALL ruxiCannyGetSize(ruxiSize roiSize, int32_t* bufferSize);

/*
 * Canny edges from two gradient images: non-maximum suppression along the gradient, then hysteresis. dst is 255 on
 * edges and 0 elsewhere. Smoothing and gradients are the caller's; ruxiSobel3x3_Dx and _Dy (rowOrder 0) give them.
 *
 * - The magnitude of a pixel is m = |dx| + |dy|, 0 if not above lowThresh; outside the region it is 0.
 * - A pixel with m > 0 survives when m is above the magnitude of both neighbours along the gradient; equal values
 *   suppress, so that a plateau along the gradient leaves no edge.
 * - A survivor with m > highThresh is an edge, and so is every survivor with m > lowThresh that touches an edge, also
 *   by a corner.
 *
 *                          px, m6                              a6, w7
 *   left, right            |dy| < 0.4142 * |dx|                |dy| * 4096 < |dx| * 1697
 *   above, below           |dy| > 2.4142 * |dx|                |dy| * 4096 >= |dx| * 9889
 *   magnitude              exact                               saturates at 32767
 *   thresholds             float                               truncated to integers, low 16 bits taken as signed
 * Between the two bounds the neighbours are upper left and lower right where dx and dy have the same sign bit, upper
 * right and lower left otherwise. At a6 and w7 the gradient -32768 has no absolute value and stays negative; a
 * threshold of 32768 or more wraps: a high one that turns negative accepts every pixel above it in blocks of 4, from
 * the row's first pixel on, that hold a positive magnitude, and a low one that turns negative every pixel above it that
 * touches an edge; one of 65536 or more can become a small positive one; what an int32 cannot hold (2^31 or more,
 * infinity, a NaN) becomes 0, where at px and m6 no magnitude is above it. With a low threshold below 1, suppressed
 * pixels of magnitude 1 come out as 255 at a6 and w7.
 *
 * buffer holds ruxiCannyGetSize bytes at any address; its contents before and after mean nothing. Its size is not
 * tested; at the stated size no input overruns it. Calls that run at once need a buffer each. Gradient steps are in
 * bytes and must be even. At a6 and w7 up to 4 elements beyond the end of a gradient row may be read: they must be
 * readable, their values never matter. dst may overlap the gradients: it is written when they have been read.
 * lowThresh may equal highThresh; 0 and -0.0 are legal, and a NaN is not refused.
 *
 * Statuses: ruxStatusNullPointer (srcDx, srcDy, dst, buffer); ruxStatusStepError (a step below 1);
 * ruxStatusSizeError (width or height below 1); ruxStatusStepNotPixelMultiple (a gradient step odd);
 * ruxStatusBadArgument (lowThresh below 0 or above highThresh).
 */
ruxStatus RUXCALL ruxiCanny_16s8u_C1R(const int16_t* srcDx, int32_t srcDxStep, const int16_t* srcDy, int32_t srcDyStep,
                                      uint8_t* dst, int32_t dstStep, ruxiSize roiSize, float lowThresh,
                                      float highThresh, uint8_t* buffer);

#ifdef __cplusplus
}
#endif

#endif
