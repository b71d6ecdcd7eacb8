// Blocks by single reads of the bit stream. An illegal code ends the block with a status and the position behind it.
#pragma once

#include "video/reconstruct.h"

namespace rux::RUX_LEVEL {
namespace {

constexpr int16_t flatMatrix[64] = {
    16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16,
    16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16,
    16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16, 16};

// What a leaf says of a coefficient, an escape followed.
struct RunLevel {
    int32_t run;
    int32_t level;
};

inline RunLevel followEscape(RunLevel pair, BitReader& reader)
{
    if (pair.run != escapeRun) return pair;
    const uint32_t escape = reader.take(escapeBits);
    return {escapedRun(escape), escapedLevel(escape)};
}

// A block under way. Products are 32 bits wide and wrap; a coefficient is divided toward zero and cut to 16 bits.
struct Block {
    BitReader reader;
    const int32_t* scanTable;
    const int16_t* matrix;
    int32_t quantScale;
    int16_t* dst;
    int32_t last = 0;   // scan position of the last coefficient
    int32_t sum = 0;

    void clear()
    {
        for (int32_t i = 0; i < 64; ++i) dst[i] = 0;
    }

    template <typename Scale>
    void store(Scale scale, int32_t level)
    {
        const int32_t place = scanTable[last];
        const int16_t value = static_cast<int16_t>(matrix[place] * scale(quantScale, level) / 32);
        dst[place] = value;
        sum += value;
    }

    // The coefficients up to the end of block; false at a code that leads past the last position.
    template <typename Scale, typename Level>
    bool decodeRest(const uint32_t* acTable, Scale scale, Level levelOfLeaf)
    {
        for (;;) {
            const uint32_t leaf = takeLeaf(acTable, reader);
            if (runOf(leaf) == endOfBlockRun) return true;
            const RunLevel pair = followEscape({runOf(leaf), levelOfLeaf(leaf)}, reader);
            last += pair.run + 1;
            if (last > lastPosition) return false;
            store(scale, pair.level);
        }
    }

    ruxStatus finish(Position position, bool isWhole, int32_t* count, int32_t countOfFirst)
    {
        *position.bitStream = reader.word;
        *position.bitOffset = reader.offset;
        if (!isWhole) return ruxStatusVlcCode;
        *count = last == 0 ? countOfFirst : last;
        controlMismatch(dst, sum);
        return ruxStatusOk;
    }
};

ruxStatus decodeIntraBlock(Position position, const uint32_t* dcTable, const uint32_t* acTable,
                           const int32_t* scanTable, int16_t quantScale, const int16_t* matrix, int16_t* dcPredictor,
                           int32_t dcShift, int16_t* dst, int32_t* count)
{
    Block block = {{*position.bitStream, *position.bitOffset}, scanTable, matrix, quantScale, dst};
    block.clear();

    const int32_t size = static_cast<int32_t>(takeLeaf(dcTable, block.reader)) >> 8;
    if (!isDifferenceSize(size)) return block.finish(position, false, count, 0);
    const int32_t difference = dcDifference(size, block.reader.take(size));
    *dcPredictor = static_cast<int16_t>(*dcPredictor + difference);
    dst[0] = shiftedDc(*dcPredictor, dcShift);
    block.sum = dst[0];

    // Leaves give 8 bits of level, escapes all 12.
    const bool isWhole = block.decodeRest(
        acTable, [](int32_t scale, int32_t level) { return 2 * scale * level; },
        [](uint32_t leaf) -> int32_t { return static_cast<int8_t>(levelOf(leaf)); });
    return block.finish(position, isWhole, count, 0);
}

ruxStatus decodeBlock(Position position, const uint32_t* firstTable, const uint32_t* acTable,
                      const int32_t* scanTable, int16_t quantScale, const int16_t* matrix, int16_t* dst,
                      int32_t* count)
{
    Block block = {{*position.bitStream, *position.bitOffset}, scanTable, matrix ? matrix : flatMatrix, quantScale,
                   dst};
    block.clear();

    // The first code of a block cannot be its end: a 1 begins the short code of run 0 and level 1.
    RunLevel first = {0, 1};
    if (block.reader.firstBit()) {
        if (block.reader.take(2) & 1) first.level = -1;
    } else {
        const uint32_t leaf = takeLeaf(firstTable, block.reader);
        first = followEscape({runOf(leaf), levelOf(leaf)}, block.reader);
    }
    if (first.run > lastPosition) return block.finish(position, false, count, 1);

    const auto scale = [](int32_t quantiser, int32_t level) { return quantiser * (2 * level + signOf(level)); };
    block.last = first.run;
    block.store(scale, first.level);
    return block.finish(position, block.decodeRest(acTable, scale, levelOf), count, 1);
}

}
}
