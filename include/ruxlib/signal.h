/* Vectors of samples: copy, conversion, channels, threshold, sum, median, zero crossings, power.

   Common to all: lengths are in elements and nothing outside the vectors is read or written. Checks are listed in the
   order in which they are made; a failed call has written nothing unless told otherwise. No alignment is required.
   All are re-entrant; calls on different vectors may run at once. */
#ifndef RUXLIB_SIGNAL_H
#define RUXLIB_SIGNAL_H

#include "ruxlib/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* dst[i] = src[i]. Checks: null pointer -8; len below 1 -6. Overlap has no defined result. */
ruxStatus RUXCALL ruxsCopy_8u(const uint8_t* src, uint8_t* dst, int32_t len);

/* dst[i] = (float)src[i], exact. Checks: null pointer -8; len below 1 -6. */
ruxStatus RUXCALL ruxsConvert_16s32f(const int16_t* src, float* dst, int32_t len);

/* Channels to frames and back: dst[f * channels + c] = src[c][f], and dst[c][f] = src[f * channels + c], for each of
   frameLen frames. The array of pointers has one entry for each channel.
   Checks: null pointer -8; channels or frameLen below 1 -6; a null entry in the array -8.
   When the interleaved buffer or any channel is not on a 16-byte boundary the work is done in full all the same, with
   the warning ruxStatusMisaligned (2), at every level. */
ruxStatus RUXCALL ruxsInterleave_16s(const int16_t* const* src, int32_t channels, int32_t frameLen, int16_t* dst);
ruxStatus RUXCALL ruxsDeinterleave_16s(const int16_t* src, int32_t channels, int32_t frameLen, int16_t* const* dst);

/* Clamp in place at level. relOp 4 (ruxCmpGreater of arith.h): each x above level becomes level. Any other relOp: each
   x below level becomes level. Elements equal to level (a zero of the other sign too) and NaN stay as they are.
   Checks: null pointer -8; len below 1 -6. relOp is not checked. */
ruxStatus RUXCALL ruxsThreshold_32f_I(float* srcDst, int32_t len, float level, int32_t relOp);

/* Sum of src, rounded to a float at the end; the mean is the same sum, before that rounding, divided by len in double
   and then rounded. Checks: null pointer -8; len below 1 -6.
   hint is not checked. Sums start from +0.0: negative zeros alone sum to +0.0. Order and precision of the additions,
   and with them the last bits, are the level's:
     px          hint not read. In double: even positions to A, odd to B as long as 4 elements are left, B + A, then the
                 last 0 to 3 one by one.
     m6          hint not read; always the accurate form.
     a6, w7      hint 1, fast: 4 single-precision lanes, added to a double, lane 0 first, after each 32768 elements
                 and at the end; the elements before the first 16-byte boundary, and the last that fill no vector of 4,
                 go to that double one by one, so the last bits depend on alignment. A vector whose floats do not stand
                 on 4-byte boundaries has no elements before the first.
                 Any other hint, accurate: element i goes to double accumulator i mod 8; the eight are added up in
                 their order, and the tail of fewer than 8, summed in an accumulator of its own, is added last. */
ruxStatus RUXCALL ruxsSum_32f(const float* src, int32_t len, float* sum, int32_t hint);
ruxStatus RUXCALL ruxsMean_32f(const float* src, int32_t len, float* mean, int32_t hint);

/* Sliding median: dst[i], for i from 1 to len - 2, is the median of the maskSize input samples centred on i; positions
   before the first sample read as the first, positions past the last as the last. The first and the last sample are
   kept. With maskSize 1 or len below 3 the result is a copy. maskSize may exceed len.
   Checks: null pointer -8; len or maskSize below 1 -6; then, with dst already a copy of src, work memory that cannot be
   had -9. An even maskSize is lowered by one and the result is the warning ruxStatusEvenMedianMask (5).
   Masks 3 and 5 allocate nothing; from 7 on about 8 bytes for each sample of the mask, and time linear in the mask for
   each output. The same at all levels. */
ruxStatus RUXCALL ruxsFilterMedian_16s(const int16_t* src, int16_t* dst, int32_t len, int32_t maskSize);

/* Number of i from 1 to len - 1 with src[i - 1] * src[i] < 0: both neighbours non-zero and of opposite sign, so that
   1, 0, -1 counts none. The count is not divided by the length. Checks: null pointer -8; len below 1 -6.
   16s: the same at all levels.
   32f: count is converted to a float. px and m6 form the product in double; a6 and w7 in single precision, where one
   that underflows to -0.0 (1e-30, -1e-30) does not count. A NaN product counts at px, m6 and a6. At w7 it counts by its
   sign bit (of two NaN that of the first) in the vectors, which are the places 1 to 4, 5 to 8 and so on at any
   alignment, and always in the 0 to 3 places that remain; a len of 4 or less has no vector. */
ruxStatus RUXCALL ruxsSignChangeRate_16s(const int16_t* src, int32_t len, int32_t* count);
ruxStatus RUXCALL ruxsSignChangeRate_32f(const float* src, int32_t len, float* count);

/* Power with one exponent: dst[i] = src[i] ** y, right to about 11 bits of the significand.
   Checks: len below 1 -6; then null pointer -8: the size comes first here.
   Result: ruxStatusOk, or the warning of the last special event in element order: 18 (singularity) or 19 (outside the
   domain). Each event also raises the processor's flag, divide-by-zero for 18 and invalid for 19.
   Computed as 2 ** (y log2 |x|), in 64-bit extended precision at px, m6 and a6, in double at w7, where vectors take
   shorter series than single elements (errors seen up to 2**-19.5 for any normal result). At w7 an element's result does
   not depend on its place or on the elements beside it. Where y log2 |x| is above 512 the result is infinity, negative
   for negative x and odd y; below -512 it is +0.0, also for these. Between -512 and 512 it overflows or underflows as a
   float does, without a status.
   Special arguments, the first line that fits decides ("odd": y is an odd integer; from 2**24 on y is even):
      1  y = +-0                    1, also for NaN
      2  y = 1                      x
      3  x = 1                      1, also for y NaN
      4  y NaN                      y
      5  x NaN                      x
      6  x = +infinity              y < 0: +0, else +infinity
      7  x = -infinity              y < 0: -0 when odd, else +0; y > 0: -infinity when odd, else +infinity
      8  y infinite, |x| = 1        1
      9  y = +infinity              |x| > 1: +infinity, else +0
     10  y = -infinity              |x| > 1: +0; x = +-0: +infinity with 18; else +infinity
     11  x < 0 or x = -0, y = -1    1 / x; for -0 -infinity with 18
     12  x = -0                     y > 0: -0 when odd, else +0; y < 0: -infinity when odd, else +infinity, with 18
     13  x < 0, y no integer        NaN (bits 0xFFC00000) with 19
     14  x = +0                     y > 0: +0; y < 0: +infinity with 18
     15  x = -1                     -1 when odd, else 1
     16  all others                 |x| ** y, negated for x < 0 when odd; denormal x too
   At px, m6 and a6 lines 2, 3, 11 and 15 hold for elements that reach the scalar routine: elements go in groups of 4
   and the rest singly, and a group of positive normal finite x with finite y is computed without it, within the same
   accuracy. At w7 lines 2, 11 and 15 are computed as any other (line 12 gives -0 to the power -1), line 3 holds for y
   infinite or NaN only, and line 5 comes before line 4.
   The x87 precision (px, m6, a6) and the vector unit's rounding (w7) are set for the call and put back. */
ruxStatus RUXCALL ruxsPowx_32f_A11(const float* src, float y, float* dst, int32_t len);

#ifdef __cplusplus
}
#endif

#endif
