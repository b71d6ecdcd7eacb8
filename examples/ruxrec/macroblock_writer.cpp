#include "macroblock_writer.h"

#include "motion_code.h"

namespace {

// The pattern's first bit stands for block 0.
uint32_t patternOf(uint32_t codedBlocks)
{
    uint32_t pattern = 0;
    for (int block = 0; block < 6; ++block)
        if (codedBlocks >> block & 1) pattern |= 32u >> block;
    return pattern;
}

constexpr int typeDirections[2] = {typeForward, typeBackward};

}

int MacroblockWriter::typeOf(const SliceState& state, const Macroblock& macroblock, int quantiser) const
{
    const int quant =
        quantiser != state.quantiser && (macroblock.intra || macroblock.codedBlocks != 0) ? typeQuant : 0;
    if (macroblock.intra) return quant | typeIntra;
    const int pattern = macroblock.codedBlocks != 0 ? typePattern : 0;
    // With blocks, a P macroblock without a vector stands for the vector of zeros.
    if (picture_.header.type == PictureType::P && pattern && macroblock.vector[0][0] == MotionVector{})
        return quant | pattern;
    return quant | pattern | (macroblock.predicted[0] ? typeForward : 0) | (macroblock.predicted[1] ? typeBackward : 0);
}

int MacroblockWriter::length(const SliceState& state, const Macroblock& macroblock, int quantiser) const
{
    const EncodeTables& tables = picture_.tables;
    const int type = typeOf(state, macroblock, quantiser);
    int total = tables.addressIncrement[1].length;
    total += tables.macroblockType[int(picture_.header.type) - 1][size_t(type)].length;
    if (type & typeQuant) total += 5;
    for (int direction = 0; direction < 2; ++direction)
        if (type & typeDirections[direction])
            total += vectorLength(tables, picture_.header.fCode[direction], macroblock.vector[0][direction],
                                  state.predicted[direction]);
    if (type & typePattern) total += tables.codedBlockPattern[patternOf(macroblock.codedBlocks)].length;
    return total;
}

void MacroblockWriter::write(BitWriter& bits, SliceState& state, const Macroblock& macroblock, int quantiser) const
{
    const EncodeTables& tables = picture_.tables;
    int increment = state.skipped + 1;
    for (; increment > macroblockEscape - 1; increment -= macroblockEscape - 1)
        bits.put(tables.addressIncrement[macroblockEscape]);
    bits.put(tables.addressIncrement[size_t(increment)]);
    state.skipped = 0;

    const int type = typeOf(state, macroblock, quantiser);
    bits.put(tables.macroblockType[int(picture_.header.type) - 1][size_t(type)]);
    if (type & typeQuant) {
        bits.put(uint32_t(quantiser), 5);
        state.quantiser = quantiser;
    }
    for (int direction = 0; direction < 2; ++direction)
        if (type & typeDirections[direction]) {
            writeVector(bits, tables, picture_.header.fCode[direction], macroblock.vector[0][direction],
                        state.predicted[direction]);
            state.predicted[direction] = macroblock.vector[0][direction];
        }
    if (type & typePattern) bits.put(tables.codedBlockPattern[patternOf(macroblock.codedBlocks)]);

    if (!macroblock.intra) state.resetDcPredictors();
    const bool isP = picture_.header.type == PictureType::P;
    if (macroblock.intra || (isP && !(type & typeForward))) state.resetVectors();
}

void MacroblockWriter::skip(SliceState& state) const
{
    ++state.skipped;
    state.resetDcPredictors();
    if (picture_.header.type == PictureType::P) state.resetVectors();
}
