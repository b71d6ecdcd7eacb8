// Run-length encoding of quantised blocks.
//
// The operations stand here once; each level's file finds the coefficients that are not 0.
#pragma once

#include "frame/checks.h"
#include "video/bit_writer.h"
#include "video/run_length_table.h"

namespace rux::RUX_LEVEL {
namespace {

inline int32_t coefficient(const int16_t* block, const int32_t* scanTable, int32_t k)
{
    return load<int16_t>(block + load<int32_t>(scanTable + k));
}

// Which coefficients of scan positions `first` to `first` + 31 are not 0, the first one at bit 0. Scan position 0 is
// not read, and its bit is 0.
template <int32_t first>
uint32_t nonZeros(const int16_t* block, const int32_t* scanTable);

inline void putPair(BitWriter& writer, const EncodeTable& table, int32_t run, int32_t level)
{
    uint32_t entry;
    if (table.find(run, level, entry)) {
        writer.put(entry >> 16, entry & 0xFFFF);
        return;
    }
    writer.put(1, 6);
    writer.put(static_cast<uint32_t>(run), 6);
    writer.put(static_cast<uint32_t>(level), 12);
}

// The place of the lowest bit that is set; there is one. The processor's search waits for what its destination held, so
// it gets a 0 of its own: else the writer's last shift stands before it. With the prefix it is a quicker instruction
// where the processor knows that, and itself elsewhere.
inline int32_t lowestPlace(size_t bits)
{
    size_t place = 0;
    asm("rep bsf %1, %0" : "+r"(place) : "r"(bits) : "cc");
    return static_cast<int32_t>(place);
}

struct Coefficients {
    const int16_t* block;
    const int32_t* scanTable;
};

// The pairs from scan position 1 on; `last` is the position of the coefficient before, -1 where there is none. Where
// coefficients stand is chance, so they are found all at once, before any branch depends on one. Inlined, so that the
// writer stays in registers.
[[gnu::always_inline]] inline void putPairs(BitWriter& writer, const EncodeTable& table, Coefficients coefficients,
                                            int32_t last)
{
    constexpr int32_t wordBits = 8 * sizeof(size_t);
    const uint64_t all = static_cast<uint64_t>(nonZeros<32>(coefficients.block, coefficients.scanTable)) << 32 |
                         nonZeros<0>(coefficients.block, coefficients.scanTable);
    for (int32_t start = 0; start < 64; start += wordBits) {
        for (size_t found = static_cast<size_t>(all >> start); found; found &= found - 1) {
            const int32_t k = start + lowestPlace(found);
            putPair(writer, table, k - last - 1, coefficient(coefficients.block, coefficients.scanTable, k));
            last = k;
        }
    }
}

struct Position {
    uint32_t** bitStream;
    int32_t* freeBits;

    BitWriter writer() const { return {load<uint32_t*>(bitStream), load<int32_t>(freeBits)}; }
    void set(const BitWriter& writer) const
    {
        store(bitStream, writer.currentWord());
        store(freeBits, writer.currentFreeBits());
    }
};

inline uint32_t significantBits(uint32_t magnitude)
{
    return magnitude ? 32 - static_cast<uint32_t>(__builtin_clz(magnitude)) : 0;
}

}

ruxStatus RUXCALL ruxiCreateRLEncodeTable(const int32_t* table, uint32_t** encodeTable)
{
    EncodeTableBuilder builder(table);
    const int32_t words = builder.words();
    if (words == 0) return ruxStatusMemoryAllocated;
    uint32_t* const block = reinterpret_cast<uint32_t*>(ruxsMalloc_8u(words * static_cast<int32_t>(sizeof(uint32_t))));
    if (!block) return ruxStatusMemoryAllocated;
    if (!builder.build(block)) {
        ruxsFree(block);
        return ruxStatusMemoryAllocated;
    }
    store(encodeTable, block);
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiPutIntraBlock(
    uint32_t** bitStream, int32_t* freeBits, const int16_t* block, int32_t* dcPredictor, const uint32_t* dcTable,
    const uint32_t* encodeTable, const int32_t* scanTable, uint32_t eobLength, int32_t eobCode, int32_t)
{
    if (auto failure =
            firstFailure(pointers(bitStream, freeBits, block, dcPredictor, dcTable, encodeTable, scanTable)))
        return failure;

    const Position position = {bitStream, freeBits};
    BitWriter writer = position.writer();

    const int32_t dc = load<int16_t>(block);
    const uint32_t difference = static_cast<uint32_t>(dc) - load<uint32_t>(dcPredictor);
    const bool isNegative = static_cast<int32_t>(difference) < 0;
    const uint32_t size = significantBits(isNegative ? -difference : difference);
    store(dcPredictor, dc);
    writer.put(load<uint32_t>(dcTable + 2 * size), load<uint32_t>(dcTable + 2 * size + 1));
    // d, or d + 2^size - 1, of which the lowest bits are written.
    writer.put(difference - isNegative, size);

    putPairs(writer, EncodeTable(encodeTable), {block, scanTable}, 0);
    writer.put(static_cast<uint32_t>(eobCode), eobLength);
    writer.finish();
    position.set(writer);
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiPutNonIntraBlock(
    uint32_t** bitStream, int32_t* freeBits, const int16_t* block, const uint32_t* encodeTable,
    const int32_t* scanTable, uint32_t eobLength, int32_t eobCode, int32_t)
{
    if (auto failure = firstFailure(pointers(bitStream, freeBits, block, encodeTable, scanTable))) return failure;

    const Position position = {bitStream, freeBits};
    BitWriter writer = position.writer();
    const EncodeTable table(encodeTable);

    const int32_t first = load<int16_t>(block);
    if (first == 1 || first == -1) writer.put(first == 1 ? 2 : 3, 2);
    else if (first != 0) putPair(writer, table, 0, first);

    putPairs(writer, table, {block, scanTable}, first == 0 ? -1 : 0);
    writer.put(static_cast<uint32_t>(eobCode), eobLength);
    writer.finish();
    position.set(writer);
    return ruxStatusOk;
}

}
