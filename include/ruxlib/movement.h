/* Moving pixels: copy, fill, channel order, mirror, border.

   Common to all: every level gives the same bytes. A region of interest is a pointer to its first pixel, a stride
   from row to row in bytes, and a size in pixels. No alignment is required, and a stride need be no whole number of
   elements; it is not compared with the row's length. Nothing outside the region is read or written. Elements are moved
   as bits: a NaN keeps its payload.
   Checks are listed in the order in which they are made; a failed call has written nothing. Nothing is allocated.
   All are re-entrant; calls on disjoint regions may run at once. */
#ifndef RUXLIB_MOVEMENT_H
#define RUXLIB_MOVEMENT_H

#include "ruxlib/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Copy: dst = src, for every pixel of the region. Rows go from first to last, so that where a short dstStep makes them
   overlap the later row wins. Overlap of src and dst has no defined result.
   Checks: null pointer -8; width or height below 1 -6; stride below 1 -14.
   From m6 up, an image whose two strides both equal the row's bytes is moved as one run. Stores go past the caches at
   a6 (8 bytes each) in every run of 8 bytes or more, and at w7 (16 bytes each) when row bytes x height is above 131072
   and dst does not run 16 to 320 bytes ahead of src modulo 64 KiB; a store fence then ends the run. */
ruxStatus RUXCALL ruxiCopy_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize roiSize);
ruxStatus RUXCALL ruxiCopy_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize roiSize);
ruxStatus RUXCALL ruxiCopy_8u_C4R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, ruxiSize roiSize);
ruxStatus RUXCALL ruxiCopy_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                   ruxiSize roiSize);
ruxStatus RUXCALL ruxiCopy_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, ruxiSize roiSize);

/* Copy where the mask byte is not 0 (1 selects as 255 does); elsewhere dst keeps its value. The mask has the region's
   size and a stride of its own. Checks: null pointer, the mask's too -8; width or height below 1 -6; one of the three
   strides below 1 -14. Overlap has no defined result.
   Threads: at w7 a dst byte under a zero mask byte may be rewritten with its own value when the mask is mixed around
   it, so that what another thread writes there in that moment can be lost. */
ruxStatus RUXCALL ruxiCopy_8u_C1MR(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                   ruxiSize roiSize, const uint8_t* mask, int32_t maskStep);

/* Copy three-byte pixels into the first three bytes of four-byte pixels. The fourth byte is neither read nor written
   and may, behind the last pixel, lie outside the buffer. Checks as in Copy; overlap has no defined result. */
ruxStatus RUXCALL ruxiCopy_8u_C3AC4R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                     ruxiSize roiSize);

/* Fill: every element = value, rows from first to last.
   Checks: dst null -8; width or height below 1 -6; dstStep below 1 -14.
   From m6 up, ruxiSet_8u_C1R fills an image whose stride equals its width as one run. Stores go past the caches at a6
   in every run of 8 bytes or more, and at w7 above 262144 bytes in all (8u, 32f) or 180000 (16s); a store fence then
   ends the run. */
ruxStatus RUXCALL ruxiSet_8u_C1R(uint8_t value, uint8_t* dst, int32_t dstStep, ruxiSize roiSize);
ruxStatus RUXCALL ruxiSet_16s_C1R(int16_t value, int16_t* dst, int32_t dstStep, ruxiSize roiSize);
ruxStatus RUXCALL ruxiSet_32f_C1R(float value, float* dst, int32_t dstStep, ruxiSize roiSize);

/* Fill one channel of four-byte pixels. dst points at that channel's byte in the first pixel (the image's pointer plus
   the channel's number); the other three bytes are neither read nor written. Checks as in the fills above. */
ruxStatus RUXCALL ruxiSet_8u_C4CR(uint8_t value, uint8_t* dst, int32_t dstStep, ruxiSize roiSize);

/* Channel order of three-byte pixels: dst[c] = src[dstOrder[c]]; entries may repeat. The in-place form reads a pixel's
   three channels before it writes any.
   Checks: null pointer, dstOrder's too -8; width or height below 1 -6; stride below 1 -14; an entry of dstOrder outside
   0 to 2 -60. */
ruxStatus RUXCALL ruxiSwapChannels_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                          ruxiSize roiSize, const int32_t dstOrder[3]);
ruxStatus RUXCALL ruxiSwapChannels_8u_C3IR(uint8_t* srcDst, int32_t srcDstStep, ruxiSize roiSize,
                                           const int32_t dstOrder[3]);

/* The axis about which an image is flipped. */
typedef int32_t ruxAxis;
enum {
    ruxAxsHorizontal = 0, /* row i changes place with row height - 1 - i */
    ruxAxsVertical = 1,   /* column j changes place with column width - 1 - j */
    ruxAxsBoth = 2        /* both: a turn by 180 degrees */
};

/* Mirror in place; the middle row or column of an odd size stays where it is.
   Checks: srcDst null -8; srcDstStep below 1 -14; width or height below 1 -6; flip none of the three -21.
   C3: three-byte pixels. AC4: four-byte pixels of which the fourth byte stays where it stands; a6 and w7 keep it by
   masks, so another thread should not write it meanwhile. 16u: one 16-bit element. */
ruxStatus RUXCALL ruxiMirror_8u_C3IR(uint8_t* srcDst, int32_t srcDstStep, ruxiSize roiSize, ruxAxis flip);
ruxStatus RUXCALL ruxiMirror_8u_AC4IR(uint8_t* srcDst, int32_t srcDstStep, ruxiSize roiSize, ruxAxis flip);
ruxStatus RUXCALL ruxiMirror_16u_C1IR(uint16_t* srcDst, int32_t srcDstStep, ruxiSize roiSize, ruxAxis flip);

/* Copy into a larger image and repeat the edge elements outward: dst(y, x) = src at (y - topBorderHeight,
   x - leftBorderWidth), each coordinate clamped into src. dst is the corner of the whole destination; the margins right
   and below are what dstRoiSize leaves. Order of work: the rows that have a source, then the margin below, then the one
   above.
   Checks: null pointer -8; stride below 1 -14; a size below 1, a border below 0, or dstRoiSize smaller than source and
   border together (also where that sum leaves 32 bits) -6. */
ruxStatus RUXCALL ruxiCopyReplicateBorder_8u_C1R(const uint8_t* src, int32_t srcStep, ruxiSize srcRoiSize,
                                                 uint8_t* dst, int32_t dstStep, ruxiSize dstRoiSize,
                                                 int32_t topBorderHeight, int32_t leftBorderWidth);
ruxStatus RUXCALL ruxiCopyReplicateBorder_32s_C1R(const int32_t* src, int32_t srcStep, ruxiSize srcRoiSize,
                                                  int32_t* dst, int32_t dstStep, ruxiSize dstRoiSize,
                                                  int32_t topBorderHeight, int32_t leftBorderWidth);

#ifdef __cplusplus
}
#endif

#endif
