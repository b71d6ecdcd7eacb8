// Decoding of a block of coefficients: variable-length codes, inverse scan, inverse quantisation, mismatch control.
//
// The operations stand here once. Each level's file gives the two decoders; they differ in the widths of products and
// in what an illegal code leaves behind.
#pragma once

#include "frame/checks.h"
#include "video/huffman_table.h"

namespace rux::RUX_LEVEL {
namespace {

struct Position {
    uint32_t** bitStream;
    int32_t* bitOffset;
};

ruxStatus decodeIntraBlock(Position position, const uint32_t* dcTable, const uint32_t* acTable,
                           const int32_t* scanTable, int16_t quantScale, const int16_t* matrix, int16_t* dcPredictor,
                           int32_t dcShift, int16_t* dst, int32_t* count);

// A null matrix stands for 16 everywhere.
ruxStatus decodeBlock(Position position, const uint32_t* firstTable, const uint32_t* acTable,
                      const int32_t* scanTable, int16_t quantScale, const int16_t* matrix, int16_t* dst,
                      int32_t* count);

constexpr int32_t lastPosition = 63;

// The bits behind the size of a DC difference: at most 31. A greater size is no size that a difference can have.
inline bool isDifferenceSize(int32_t size)
{
    return size >= 0 && size <= 31;
}

// Half of the values of a size are negative, those whose first bit is 0.
inline int32_t dcDifference(int32_t size, uint32_t bits)
{
    if (size == 0) return 0;
    const bool isNegative = (bits >> (size - 1) & 1) == 0;
    return static_cast<int32_t>(isNegative ? ~0u << size | (bits + 1) : bits);
}

inline int16_t shiftedDc(int16_t value, int32_t dcShift)
{
    return static_cast<int16_t>(static_cast<uint32_t>(value) << (dcShift & 31));
}

// An escape is 18 bits: 6 of run and 12 of signed level.
constexpr int32_t escapeBits = 18;

inline int32_t escapedRun(uint32_t escape)
{
    return static_cast<int32_t>(escape >> 12);
}

inline int32_t escapedLevel(uint32_t escape)
{
    return static_cast<int32_t>(escape << 20) >> 20;
}

inline int32_t signOf(int32_t level)
{
    return (level > 0) - (level < 0);
}

// The sum of a block is made odd by the last bit of its last coefficient.
inline void controlMismatch(int16_t* dst, int32_t sum)
{
    dst[63] = static_cast<int16_t>(dst[63] ^ (~sum & 1));
}

}

ruxStatus RUXCALL ruxiReconstructDCTBlockIntra_MPEG2_32s(uint32_t** bitStream, int32_t* bitOffset,
                                                         const uint32_t* dcTable, const uint32_t* acTable,
                                                         const int32_t* scanTable, int16_t quantScale,
                                                         const int16_t* matrix, int16_t* dcPredictor, int32_t dcShift,
                                                         int16_t* dst, int32_t* count)
{
    if (auto failure = firstFailure(
            pointers(bitStream, bitOffset, dcTable, acTable, scanTable, matrix, dcPredictor, dst, count)))
        return failure;
    return decodeIntraBlock({bitStream, bitOffset}, dcTable, acTable, scanTable, quantScale, matrix, dcPredictor,
                            dcShift, dst, count);
}

ruxStatus RUXCALL ruxiReconstructDCTBlock_MPEG2_32s(uint32_t** bitStream, int32_t* bitOffset,
                                                    const uint32_t* firstTable, const uint32_t* acTable,
                                                    const int32_t* scanTable, int16_t quantScale,
                                                    const int16_t* matrix, int16_t* dst, int32_t* count)
{
    if (auto failure = firstFailure(pointers(bitStream, bitOffset, firstTable, acTable, scanTable, dst, count)))
        return failure;
    return decodeBlock({bitStream, bitOffset}, firstTable, acTable, scanTable, quantScale, matrix, dst, count);
}

}
