/*
 * Geometry and analysis: resize, spatial moments, forward and inverse wavelet.
 *
 * Common to all: roiSize and its kin are in pixels; steps are row strides in bytes. Statuses are given in the order in
 * which they are tested, and a failed test leaves every output unwritten. Moment state and wavelet objects are opaque:
 * an InitAlloc function stores a new object through its first argument, the Free function releases it, and every
 * function on one refuses an object of another kind with ruxStatusContextMismatch. A released object must not be used.
 */
#ifndef RUXLIB_GEOMETRY_H
#define RUXLIB_GEOMETRY_H

#include "ruxlib/types.h"
#include "ruxlib/status.h"

#ifdef __cplusplus
extern "C" {
#endif

/* How ruxiResize_8u_C1R finds a value between source pixels. */
typedef int32_t ruxInterpolation;
enum {
    ruxInterpolationNearest = 1,
    ruxInterpolationLinear = 2,
    ruxInterpolationCubic = 4,
    ruxInterpolationSuperSample = 8 /* area mean; reductions on both axes only */
};

/*
 * Scales a rectangle of an 8-bit one-channel image. src is the first pixel of the whole image of srcSize, srcRoi the
 * rectangle in it, dst the first pixel of the destination region. Source and destination must not overlap.
 *
 * Size. The rectangle is trimmed to the image. The result is truncate(width * xFactor + 1e-7) pixels wide, at least 1
 * and at most dstRoiSize.width, and as high by the same rule: a larger destination region stays partly unwritten, a
 * smaller one crops at the right and bottom, with the scale unchanged. There is no shortcut for a factor of 1.
 *
 * Positions. Modes 1, 2 and 4 lay the first and last pixels of rectangle and result on each other: the step is
 * (width - 1) * (1 / (width * xFactor - 1)), or 0 where width * xFactor is 1 or less, positions are sums of steps in
 * double, and 1e-7 is added before each truncation. Nearest starts at 0.5, so that it rounds; but where factor or
 * 1 / factor is a whole number it starts at 0 with a step of 1 / factor: 0 0 0 1 1 1 for 3, 0 4 8 for 0.25.
 *
 * Downgrade. In an image narrower or lower than 2, modes 2 and 4 run as nearest; in one below 4, cubic runs as linear.
 *
 * Nearest: a copy; all levels agree.
 *
 * Linear: 14-bit weights, first along the row, then down the column. px rounds at both stages; m6, a6 and w7 truncate
 * and agree with each other; px is equal to them or one higher. The tap beyond the rectangle's right or lower edge is
 * read as long as it lies in the image; past the image nothing is read. A rectangle that starts at the image's last
 * column has the column to its left read, with weight 0.
 *
 * Cubic: the polynomial through four neighbours on each axis, intermediate rows unclamped, the result clamped. At the
 * image's edges (not the rectangle's) the four samples move inward and the polynomial extrapolates. One row and column
 * before the rectangle and two after it are read where the image has them. px and m6 compute in double and truncate
 * v + 1e-7; a6 and w7 compute in float and round, but for the last width % 4 columns of the result, which are
 * truncated. So a6 and w7 are equal to px or one higher, up to the last bits of v.
 *
 * Supersampling, when interpolation is 8 and both factors are below 1: the mean over the box of 1 / xFactor by
 * 1 / yFactor source pixels, edge pixels weighted by the part that is covered, half rounded up. Where both reciprocals
 * are whole it is exact and the same at all levels; otherwise sums are kept in float, px and m6 agree, and a6 and w7
 * can differ by one near a half. The rows read follow from yFactor and the result's height alone and are not held to
 * the rectangle: where height * yFactor is below 1 the box reaches past it, at the image's bottom past the image too,
 * and those rows must be readable. Factors must be above 0: others, and not-a-number, are not diagnosed reliably in
 * this mode.
 *
 * Statuses: ruxStatusNullPointer (src, dst); ruxStatusSizeError (srcSize below 1); ruxStatusStepError (a step below
 * 1); ruxStatusSizeError (srcRoi.x or .y negative, a size of srcRoi or dstRoiSize below 1); ruxStatusNoOperation, a
 * warning (srcRoi begins outside the image; nothing is written); except in supersampling ruxStatusResizeFactor (a
 * factor not above 0) and ruxStatusInterpolationMode (not 1, 2 or 4: also 8 where a factor is 1 or more);
 * ruxStatusMemoryAllocated (work memory; dst is untouched; where a row buffer cannot be had, the position and weight
 * tables are not released).
 */
ruxStatus RUXCALL ruxiResize_8u_C1R(const uint8_t* src, ruxiSize srcSize, int32_t srcStep, ruxiRect srcRoi,
                                    uint8_t* dst, int32_t dstStep, ruxiSize dstRoiSize, double xFactor, double yFactor,
                                    ruxInterpolation interpolation);

/*
 * The raw moments, up to the third order, of the image measured last. One thread at a time measures into an object;
 * any number may read moments from it.
 */
typedef struct ruxMomentState ruxMomentState;

/* Accuracy of moments. Every other value asks for the fast accumulation, which the level a6 has. */
typedef int32_t ruxAlgHint;
enum {
    ruxAlgHintAccurate = 2
};

/*
 * Creates a state that has measured nothing yet.
 *
 * Statuses: ruxStatusNullPointer; ruxStatusMemoryAllocated.
 */
ruxStatus RUXCALL ruxiMomentInitAlloc_64f(ruxMomentState** state, ruxAlgHint hint);

/*
 * Releases a state.
 *
 * Statuses: ruxStatusNullPointer; ruxStatusContextMismatch (nothing is released).
 */
ruxStatus RUXCALL ruxiMomentFree_64f(ruxMomentState* state);

/*
 * Measures an image: for all m + n up to 3
 *
 *   M(m, n) = sum of src(x, y) * x^m * y^n, x and y from 0 at the first pixel of the region
 *
 * replacing what the state held. Sums are double; a row is summed first and then multiplied by powers of y. px and m6
 * add in pixel order; w7 in two lanes, so that the last bits can differ; a6 as px with ruxAlgHintAccurate, otherwise
 * within a row in four lanes of float, visibly less accurate on wide images. At w7 and in the fast form of a6 the lanes
 * begin at the first 16-byte boundary of each row. srcStep need not be a multiple of 4.
 *
 * Statuses: ruxStatusNullPointer (src, state); ruxStatusContextMismatch; ruxStatusStepError (srcStep below 1);
 * ruxStatusSizeError (width or height below 1); ruxStatusStrideError (srcStep below 4 * width). On failure the state
 * keeps what it held.
 */
ruxStatus RUXCALL ruxiMoments64f_32f_C1R(const float* src, int32_t srcStep, ruxiSize roiSize, ruxMomentState* state);

/*
 * Reads one moment, mOrder being the order in x and nOrder that in y, as seen from another origin:
 *
 *   *value = sum of src(x, y) * (x + roiOffset.x)^mOrder * (y + roiOffset.y)^nOrder
 *
 * computed from the stored moments by binomial expansion. Offset 0, 0 gives the plain moment. channel is 0 for the one
 * channel measured. A negative order with a sum of 3 or less returns ruxStatusOk and leaves value unwritten.
 *
 * Statuses: ruxStatusNullPointer (state, value); ruxStatusContextMismatch; ruxStatusSizeError (mOrder + nOrder above
 * 3); ruxStatusChannelNumber (channel negative or not measured: all of them before the first measurement).
 */
ruxStatus RUXCALL ruxiGetSpatialMoment_64f(const ruxMomentState* state, int32_t mOrder, int32_t nOrder, int32_t channel,
                                           ruxiPoint roiOffset, double* value);

/*
 * One level of a separable two-channel wavelet transform on float images, and its inverse.
 *
 * A filter is L >= 2 taps with an anchor a, 0 <= a < L. The taps are copied and may be any numbers. Objects never
 * change after creation: threads may share one, each with a work buffer of its own, which holds nothing between calls
 * and stands at any multiple of 4. Borders are the caller's: samples around a region are read as they stand.
 *
 * Levels: px and m6 agree, a6 and w7 agree, and the pairs differ in the last bits of a float. The former compute in
 * double and round to float after each tap of a column and once for an output of a row; in the forward transform rows
 * of 8 taps or more sum groups of four from the last tap on. The latter compute in float on the columns and on blocks
 * of outputs of a row that begin at a 16-byte boundary of the destination. The outputs before these blocks, and in the
 * forward transform the one to four after them, are summed in double, so that the last bits depend on the destination's
 * address; image columns are worked off 256 columns of a band at a time, each time with blocks of their own.
 * Destinations may stand at any address; one off a multiple of 4 has no blocks.
 *
 * A row is worked off in the order of the formulas: the forward transform runs down the columns for both filters before
 * it writes the first band, the inverse one writes the low part of a row before it reads the bands of the high part.
 */
typedef struct ruxWTFwdSpec ruxWTFwdSpec;
typedef struct ruxWTInvSpec ruxWTInvSpec;

/*
 * Creates the object of a forward transform from its analysis filters.
 *
 * Statuses: ruxStatusNullPointer (spec, lowTaps, highTaps); ruxStatusSizeError (a length below 2); ruxStatusAnchor (an
 * anchor outside its filter); ruxStatusMemoryAllocated, also for filters whose object or work buffer would need more
 * bytes than an int32 tells, with everything released and null stored through spec.
 */
ruxStatus RUXCALL ruxiWTFwdInitAlloc_32f_C1R(ruxWTFwdSpec** spec, const float* lowTaps, int32_t lowLength,
                                             int32_t lowAnchor, const float* highTaps, int32_t highLength,
                                             int32_t highAnchor);

/*
 * Releases the object.
 *
 * Statuses: ruxStatusNullPointer; ruxStatusContextMismatch (not a sound object of this kind; nothing is released).
 */
ruxStatus RUXCALL ruxiWTFwdFree_32f_C1R(ruxWTFwdSpec* spec);

/*
 * Size in bytes of the work buffer of ruxiWTFwd_32f_C1R. It depends on the filters alone, not on the image: with
 * n = left + right + 512 floats, left and right as told there, 4 * n rounded up to a multiple of 32, plus 4 * n.
 *
 * Statuses: ruxStatusNullPointer (spec); ruxStatusContextMismatch; ruxStatusNullPointer (size).
 */
ruxStatus RUXCALL ruxiWTFwdGetBufSize_C1R(const ruxWTFwdSpec* spec, int32_t* size);

/*
 * Forward transform: filters down the columns and along the rows, halves both axes, and gives four subbands of
 * dstRoiSize from a region of twice that size.
 *
 *   V_f(x, y)   = sum of g_f[t] * src(x, 2 y + a_f - t)       vertical filter f, low or high
 *   dst_fh(j, y) = sum of g_h[t] * V_f(2 j + a_h - t, y)      horizontal filter h, low or high
 *
 * The first word of a band's name is the vertical filter: dstHighLow is high down the columns, low along the rows.
 *
 * Read around the region, left and right being the larger of L - a - 1 and of a - 1 over both filters: the columns from
 * -left to 2 * width - 1 + right, and the rows likewise (right is -1 where both anchors are 0: the region's last column
 * is then not read).
 *
 * Statuses: ruxStatusNullPointer (spec); ruxStatusContextMismatch; ruxStatusNullPointer (buffer, src, a destination);
 * ruxStatusSizeError (width or height below 1); ruxStatusStepError (a step below 1).
 */
ruxStatus RUXCALL ruxiWTFwd_32f_C1R(const float* src, int32_t srcStep, float* dstLowLow, int32_t stepLowLow,
                                    float* dstHighLow, int32_t stepHighLow, float* dstLowHigh, int32_t stepLowHigh,
                                    float* dstHighHigh, int32_t stepHighHigh, ruxiSize dstRoiSize,
                                    const ruxWTFwdSpec* spec, uint8_t* buffer);

/*
 * Creates the object of an inverse transform from its synthesis filters. Statuses as ruxiWTFwdInitAlloc_32f_C1R.
 */
ruxStatus RUXCALL ruxiWTInvInitAlloc_32f_C1R(ruxWTInvSpec** spec, const float* lowTaps, int32_t lowLength,
                                             int32_t lowAnchor, const float* highTaps, int32_t highLength,
                                             int32_t highAnchor);

/*
 * Releases the object.
 *
 * Statuses: ruxStatusNullPointer; ruxStatusContextMismatch (not a sound object of this kind; nothing is released).
 */
ruxStatus RUXCALL ruxiWTInvFree_32f_C1R(ruxWTInvSpec* spec);

/*
 * Size in bytes of the work buffer of ruxiWTInv_32f_C1R. It depends on the filters alone: for each filter
 * left + right + 256 floats, left and right as told there, the low filter's bytes rounded up to a multiple of 32.
 *
 * Statuses: ruxStatusNullPointer (spec); ruxStatusContextMismatch; ruxStatusNullPointer (size).
 */
ruxStatus RUXCALL ruxiWTInvGetBufSize_C1R(const ruxWTInvSpec* spec, int32_t* size);

/*
 * Inverse transform: four subbands of srcRoiSize give an image of twice that size. Only those t count for which the
 * index divided by 2 is whole:
 *
 *   U_f(P)(x, n) = sum of g_f[t] * P(x, (n + a_f - t) / 2)
 *   low  = U_low(LowLow) + U_high(HighLow),  high = U_low(LowHigh) + U_high(HighHigh)
 *   dst(m, n) = sum of g_low[t] * low((m + a_low - t) / 2, n) + sum of g_high[t] * high((m + a_high - t) / 2, n)
 *
 * Read around a band's region, on each axis, for the filter that runs along it there: (L - a - 1) >> 1 samples before
 * and (a + 1) / 2 after it. dst rows are written twice, the low part first; no other thread may read them meanwhile.
 *
 * Statuses: ruxStatusNullPointer (spec, buffer); ruxStatusContextMismatch; ruxStatusNullPointer (dst, a band);
 * ruxStatusSizeError (width or height below 1); ruxStatusStepError (a step below 1).
 */
ruxStatus RUXCALL ruxiWTInv_32f_C1R(const float* srcLowLow, int32_t stepLowLow, const float* srcHighLow,
                                    int32_t stepHighLow, const float* srcLowHigh, int32_t stepLowHigh,
                                    const float* srcHighHigh, int32_t stepHighHigh, ruxiSize srcRoiSize, float* dst,
                                    int32_t dstStep, const ruxWTInvSpec* spec, uint8_t* buffer);

#ifdef __cplusplus
}
#endif

#endif
