/* Video bit streams: variable-length code tables, block decoding, block writing.

   The code tables are the host's: it gives them as source lists, from which the library builds its lookup structures.
   The levels agree in every result except in ruxiReconstructDCTBlock*.

   Reading position: a pointer to the current 32-bit word and a bit offset, 31 down to 0, that names the next bit to
   read in it. Words are taken in the processor's byte order (a host swaps the bytes of a big-endian stream when it
   fills them), and the first bit of a word is bit 31. When the last bit of a word is consumed the pointer moves to the
   next word and the offset becomes 31. A code that crosses into the next word, or a level of a lookup structure wider
   than what is left of the current one, reads the next word too: keep one readable word behind the last one of the
   stream, two behind the last one for ruxiReconstructDCTBlock* (at w7 it reads up to two words past the current one).

   Writing position, which is another: a pointer to the current word and the number of bits still free in it, 32 (the
   word is empty) down to 1. Bits fill a word from bit 31 down.

   Source list: int32 words,
       [0]               read by no function
       [1]               L, the number of lookup levels
       [2] .. [1 + L]    the width of each level in bits, the first level first
       then, for code lengths 1, 2, 3 and so on: the number of codes of that length (0 for none), and their records
       at the end        a negative number in the place of a count
   A record is {code, value} in the plain form and {code, run, level} in the run/level form. The code stands right-
   aligned; its bits above its length are ignored, but those of runs 254 and 255 in word 0 of an encode table. In
   run/level lists run 254 marks the end of block and run 255 the escape; a sign bit belongs to its code, so that a list
   of tables B-14 or B-15 of ISO/IEC 13818-2 has one record for each sign of a level.

   Threads: a built structure is never written again; any number of threads may read through it, each with a position,
   block, predictor and count of its own. */
#ifndef RUXLIB_VIDEO_STREAM_H
#define RUXLIB_VIDEO_STREAM_H

#include "ruxlib/types.h"
#include "ruxlib/status.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Variable-length codes -------------------------------------------------------------------------------------------- */

/* Build a lookup structure from a source list, of the plain form (ruxiVCHuffmanInitAlloc_32s) or of the run/level form
   (ruxiVCHuffmanInitAllocRL_32s), and store its address in *decodeTable; release it with ruxiVCHuffmanFree_32s.

   A structure is a tree of sub-tables: the root is indexed by as many bits as the first level is wide; codes longer
   than that go on to a sub-table of the second level's width, and so on. A decode costs one lookup for each level it
   enters, so a wide first level serves all short codes at once. A sub-table takes 1 + 2^width words of a block of fixed
   size: 16384 words in the plain form, 262144 in the run/level form.

   Plain values have 24 bits, signed; 61681 is the mark of an illegal code and no usable value. Runs have 8 bits, levels
   16 bits, signed. Nothing is checked but room: a code longer than all levels together is dropped, a code that begins
   with a shorter one is not refused. In the plain form a sub-table whose first word happens to have an index
   that is a multiple of 256 serves only the code that made it: later codes do not find it. An empty list is legal;
   everything then decodes as illegal.

   Statuses: ruxStatusNullPointer for either argument; ruxStatusMemoryAllocated when memory is short, the list needs
   more words than the block has, a level's width is outside 0 .. 18, or a code behind a shorter one would leave its
   sub-table; a null pointer is stored then. */
ruxStatus RUXCALL ruxiVCHuffmanInitAlloc_32s(const int32_t* table, uint32_t** decodeTable);
ruxStatus RUXCALL ruxiVCHuffmanInitAllocRL_32s(const int32_t* table, uint32_t** decodeTable);

/* Releases a lookup structure of either form and sets *decodeTable to null; does nothing when it is null already.

   Statuses: ruxStatusNullPointer for decodeTable. */
ruxStatus RUXCALL ruxiVCHuffmanFree_32s(uint32_t** decodeTable);

/* Reads one code. *dst receives the plain value, or, from a run/level structure, level * 256 + run. The position moves
   behind the code.

   Statuses: ruxStatusNullPointer for bitStream or decodeTable (bitOffset and dst are not tested); ruxStatusVlcCode for
   an illegal code: *dst is then 61681, and the position stands behind all bits of the levels that were looked at,
   which is no boundary between codes. */
ruxStatus RUXCALL ruxiVCHuffmanDecodeOne_1u32s(
    uint32_t** bitStream, int32_t* bitOffset, int32_t* dst, const uint32_t* decodeTable);

/* Decoding a block ------------------------------------------------------------------------------------------------- */

/* Decode one block of 64 coefficients up to and including its end of block: variable-length codes, inverse scan,
   inverse quantisation and mismatch control (ISO/IEC 13818-2, 7.2 to 7.4), except for the saturation of 7.4.3: a
   coefficient is not clamped to -2048 .. 2047 but cut to 16 bits.

   Arguments:
     bitStream, bitOffset  the reading position, updated
     dcTable               plain structure of dct_dc_size (tables B-12, B-13). Illegal codes are not recognised in it:
                           it must hold a code for every bit pattern
     firstTable, acTable   run/level structures for the first coefficient of a non-intra block (table B-14, those codes
                           that begin with 0) and for all others (B-14 or B-15, with end of block and escape).
                           At w7 their first level must be exactly 9 bits wide, whatever they say
     scanTable             64 entries: the raster index of each scan position
     quantScale            the quantiser scale itself, already mapped from quantiser_scale_code
     matrix                64 weights in raster order; null in the non-intra form stands for 16 everywhere
     dcPredictor           the component's DC predictor, read and updated, in 16 bits, wrapping
     dcShift               3 - intra_dc_precision: dst[0] is the new predictor shifted left by it, cut to 16 bits
     dst                   64 coefficients in raster order, all written. dst and matrix may stand at any even address
     count                 receives the scan position of the last coefficient. Intra: 0 when there is none but the DC;
                           non-intra: 1 when it is the first

   With p = scanTable[k], k the scan position, products in 32 bits, wrapping, division toward zero:
     intra         dst[p] = matrix[p] * 2 * quantScale * level / 32
     non-intra     dst[p] = matrix[p] * quantScale * (2 * level + sign(level)) / 32
   Afterwards bit 0 of dst[63] is inverted if the sum of the block is even; count does not follow that. An escape is 6
   bits of run and 12 bits of signed level. In the non-intra form a first bit of 1 is the short first code: run 0, level
   1 or -1 by the second bit.

   A code is illegal when it leads past scan position 63, as every bit pattern without a record does; in the non-intra
   form an end of block in the place of the first coefficient is illegal too.

   Level differences:
     px, m6, a6   on an illegal code: ruxStatusVlcCode, the position where reading stopped, count not written, dst
                  with what came before, no mismatch control. In the intra form a level from acTable is cut to 8 bits
                  (-128 .. 127, enough for the standard's tables); escapes keep their 12.
     w7           on an illegal code: ruxStatusOk. Position and count are as before the call, and the unmoved position
                  is the only sign; dcPredictor is written, dst holds what came before, no mismatch control.
                  Levels keep 16 bits. 2 * quantScale * level, or quantScale * (2 * level + sign), wraps to 16 bits
                  before the weight multiplies it. With a null matrix that 16-bit number is divided by 2 toward zero.

   Statuses: ruxStatusNullPointer for any pointer, but for the non-intra matrix, with nothing read; ruxStatusVlcCode as
   above. */
ruxStatus RUXCALL ruxiReconstructDCTBlockIntra_MPEG2_32s(
    uint32_t** bitStream, int32_t* bitOffset, const uint32_t* dcTable, const uint32_t* acTable,
    const int32_t* scanTable, int16_t quantScale, const int16_t* matrix, int16_t* dcPredictor, int32_t dcShift,
    int16_t* dst, int32_t* count);
ruxStatus RUXCALL ruxiReconstructDCTBlock_MPEG2_32s(
    uint32_t** bitStream, int32_t* bitOffset, const uint32_t* firstTable, const uint32_t* acTable,
    const int32_t* scanTable, int16_t quantScale, const int16_t* matrix, int16_t* dst, int32_t* count);

/* Writing a block -------------------------------------------------------------------------------------------------- */

/* Builds the table by which a (run, level) pair is written, from a run/level source list, and stores its address in
   *encodeTable; release it with ruxsFree. The list's level widths are not read.

   The list must be whole: for each run both signs of every level from 1 to the run's greatest, or a pair left
   out is written as whatever the memory held. Of a code the table keeps 16 bits: a longer one must begin with zeros, as
   those of B-14 and B-15 do.

   Layout, in 32-bit words:
     [0]        bits 0-3 length and 4-9 code of the escape, 10-13 length and 14-19 code of the end of block,
                20 upward maxRun, the greatest run of a pair. What is longer than its place is ORed into the next,
                and dropped above bit 19; bits 0-19 are read by no function
     [1 + r]    for r = 0 .. maxRun: byte offset from the table's start to the centre of run r
     centre     the greatest |level| of the run (-1 for a run without records); at centre + level stands
                code << 16 | length

   Levels of one sign only have no room of their own: their codes go over whatever stands beside the run's other ones.

   Statuses: ruxStatusMemoryAllocated, with nothing stored, when memory is short, when the list would be written outside
   its table (runs below 0 or above 255, levels of one sign only in a run at the table's end), or when a look-up of a
   level up to its run's greatest, of either sign, would leave the table (levels of one sign only, or codes that have
   gone over words of the table). Neither pointer is tested for null. */
ruxStatus RUXCALL ruxiCreateRLEncodeTable(const int32_t* table, uint32_t** encodeTable);

/* Write one block of 64 quantised coefficients and its end of block (ISO/IEC 13818-2, 7.2).

   Arguments:
     bitStream, freeBits   the writing position, updated
     block                 64 coefficients in raster order
     dcPredictor           the component's DC predictor; becomes block[0]
     dcTable               {code, length} for each dct_dc_size from 0 up, as far as the differences reach
     encodeTable           a table of ruxiCreateRLEncodeTable
     scanTable             64 raster indices; entry 0 is not read
     eobLength, eobCode    the end of block, in place of the one in the table
     count                 not read

   Intra: d = block[0] - *dcPredictor as dct_dc_size code and size bits (d, or d + 2^size - 1 where d is negative), then
   the pairs. Non-intra: a block[0] of 1 or -1 takes the short first code (10, 11), any other non-zero one is a pair of
   run 0. A pair that the table does not hold is written as an escape: 000001, 6 bits of run, 12 bits of level; levels
   outside -2048 .. 2047 lose their high bits. An all-zero non-intra block gives a lone end of block, which the standard
   does not allow.

   Bits are ORed into the current word, so it must be zero where it is free. A code that crosses into the next word
   overwrites that word; a code that ends with the current word leaves the next one untouched, which must then be zero
   before anything follows, within the block too: zero the whole buffer. A code of length 0 writes nothing, and code
   bits above the length are ignored. Capacity is not checked: at worst a block is 64 escapes of 24 bits (intra: the DC
   and 63 of them) and the end of block.

   Statuses: ruxStatusNullPointer for any pointer. */
ruxStatus RUXCALL ruxiPutIntraBlock(
    uint32_t** bitStream, int32_t* freeBits, const int16_t* block, int32_t* dcPredictor, const uint32_t* dcTable,
    const uint32_t* encodeTable, const int32_t* scanTable, uint32_t eobLength, int32_t eobCode, int32_t count);
ruxStatus RUXCALL ruxiPutNonIntraBlock(
    uint32_t** bitStream, int32_t* freeBits, const int16_t* block, const uint32_t* encodeTable,
    const int32_t* scanTable, uint32_t eobLength, int32_t eobCode, int32_t count);

#ifdef __cplusplus
}
#endif

#endif
