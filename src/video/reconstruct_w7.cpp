// Decoding of blocks through a window of the bit stream. Position and count are written at the end of block alone: a
// position that has not moved is the sign of an illegal code.
#include <emmintrin.h>

#include "frame/bytes.h"
#include "video/reconstruct.h"

namespace rux::w7 {
namespace {

// The coming bits, the next one on top. After refill at least 32 of them are valid: enough for any one step of a code,
// an escape or a difference. No word is loaded before the position has come to the word ahead of it.
class BitWindow {
public:
    explicit BitWindow(Position position)
        : next(*position.bitStream + 2), valid(33 + *position.bitOffset),
          bits((static_cast<uint64_t>(load<uint32_t>(next - 2)) << 32 | load<uint32_t>(next - 1))
               << (31 - *position.bitOffset))
    {
    }

    void refill()
    {
        if (valid >= 32) return;
        bits |= static_cast<uint64_t>(load<uint32_t>(next++)) << (32 - valid);
        valid += 32;
    }

    // The next 0 to 31 bits.
    uint32_t peek(int32_t count) const { return static_cast<uint32_t>(bits >> 32) >> 1 >> ((31 - count) & 31); }

    void skip(int32_t count)
    {
        bits <<= count & 31;
        valid -= count;
    }

    uint32_t take(int32_t count)
    {
        refill();
        const uint32_t taken = peek(count);
        skip(count);
        return taken;
    }

    void writeTo(Position position) const
    {
        const int32_t wordsLeft = (valid + 31) >> 5;
        *position.bitStream = next - wordsLeft;
        *position.bitOffset = (valid - 1) & 31;
    }

private:
    uint32_t* next;
    int32_t valid;
    uint64_t bits;
};

// The leaf of the next code, which is consumed. The root of a run/level structure is 9 bits wide, whatever it says.
constexpr int32_t rootWidth = 9;

inline uint32_t takeLeaf(const uint32_t* table, int32_t width, BitWindow& window)
{
    window.refill();
    uint32_t entry = table[1 + window.peek(width)];
    while (isLink(entry)) {
        window.skip(width);
        window.refill();
        const uint32_t* const subTable = table + linkedTable(entry);
        width = static_cast<int32_t>(subTable[0]);
        entry = subTable[1 + window.peek(width)];
    }
    window.skip(width - freeBits(entry));
    return entry;
}

inline void clearBlock(int16_t* dst)
{
    const __m128i zero = _mm_setzero_si128();
    for (int32_t i = 0; i < 64; i += 8) _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + i), zero);
}

// A block under way. Dequantise gives a coefficient from its level and its place in the raster.
template <typename Dequantise>
struct Block {
    BitWindow& window;
    const int32_t* scanTable;
    int16_t* dst;
    Dequantise dequantise;
    int32_t sum;
    int32_t last = 0;   // scan position of the last coefficient

    // What a leaf says; false past the last position.
    bool decode(uint32_t leaf, int32_t step)
    {
        int32_t run = runOf(leaf);
        int32_t level = levelOf(leaf);
        if (run == escapeRun) {
            const uint32_t escape = window.take(escapeBits);
            run = escapedRun(escape);
            level = escapedLevel(escape);
        }
        last += run + step;
        if (last > lastPosition) return false;
        const int32_t place = scanTable[last];
        const int16_t value = dequantise(level, place);
        dst[place] = value;
        sum += value;
        return true;
    }

    bool decodeRest(const uint32_t* acTable)
    {
        for (;;) {
            const uint32_t leaf = takeLeaf(acTable, rootWidth, window);
            if (runOf(leaf) == endOfBlockRun) return true;
            if (!decode(leaf, 1)) return false;
        }
    }

    void finish(Position position, int32_t* count, int32_t countOfFirst) const
    {
        window.writeTo(position);
        *count = last == 0 ? countOfFirst : last;
        controlMismatch(dst, sum);
    }
};

ruxStatus decodeIntraBlock(Position position, const uint32_t* dcTable, const uint32_t* acTable,
                           const int32_t* scanTable, int16_t quantScale, const int16_t* matrix, int16_t* dcPredictor,
                           int32_t dcShift, int16_t* dst, int32_t* count)
{
    clearBlock(dst);
    BitWindow window(position);
    const int32_t size = static_cast<int32_t>(takeLeaf(dcTable, static_cast<int32_t>(dcTable[0]), window)) >> 8;
    if (!isDifferenceSize(size)) return ruxStatusOk;
    *dcPredictor = static_cast<int16_t>(*dcPredictor + dcDifference(size, window.take(size)));
    dst[0] = shiftedDc(*dcPredictor, dcShift);

    const int32_t twoScale = 2 * quantScale;
    const auto dequantise = [=](int32_t level, int32_t place) {
        return static_cast<int16_t>(matrix[place] * static_cast<int16_t>(twoScale * level) / 32);
    };
    Block<decltype(dequantise)> block = {window, scanTable, dst, dequantise, dst[0]};
    if (block.decodeRest(acTable)) block.finish(position, count, 0);
    return ruxStatusOk;
}

template <typename Dequantise>
inline void decodeBlockWith(Dequantise dequantise, Position position, const uint32_t* firstTable,
                            const uint32_t* acTable, const int32_t* scanTable, int16_t* dst, int32_t* count)
{
    clearBlock(dst);
    BitWindow window(position);
    Block<Dequantise> block = {window, scanTable, dst, dequantise, 0};

    // The first code of a block cannot be its end: a 1 begins the short code of run 0 and level 1 or -1.
    uint32_t leaf;
    if (window.peek(1)) {
        const int32_t level = 1 - 2 * static_cast<int32_t>(window.take(2) & 1);
        leaf = static_cast<uint32_t>(level) << 16;
    } else {
        leaf = takeLeaf(firstTable, rootWidth, window);
    }
    if (block.decode(leaf, 0) && block.decodeRest(acTable)) block.finish(position, count, 1);
}

ruxStatus decodeBlock(Position position, const uint32_t* firstTable, const uint32_t* acTable,
                      const int32_t* scanTable, int16_t quantScale, const int16_t* matrix, int16_t* dst,
                      int32_t* count)
{
    const auto scaled = [=](int32_t level) {
        return static_cast<int16_t>(quantScale * (2 * level + signOf(level)));
    };
    if (matrix) {
        decodeBlockWith([=](int32_t level, int32_t place) {
            return static_cast<int16_t>(matrix[place] * scaled(level) / 32);
        }, position, firstTable, acTable, scanTable, dst, count);
    } else {
        // 16 * v / 32 toward zero.
        decodeBlockWith([=](int32_t level, int32_t) {
            const int32_t value = scaled(level);
            return static_cast<int16_t>((value + (value < 0)) >> 1);
        }, position, firstTable, acTable, scanTable, dst, count);
    }
    return ruxStatusOk;
}

}
}
