#include "slice_coder.h"

#include "header_writer.h"

namespace {

// A macroblock is at worst 6 blocks of 64 escapes, each with its DC code, and its header; a slice has a header too.
constexpr size_t wordsOfMacroblock = 320, wordsOfHeader = 8;

}

SliceCoder::SliceCoder(CodingPicture& picture, RateControl& rate)
    : picture_(picture), rate_(rate), bits_(size_t(picture.across()) * wordsOfMacroblock + wordsOfHeader),
      coder_(picture.tables, picture.header.intraTableOne), writer_(picture), decision_(picture, coder_, writer_)
{
}

void SliceCoder::code(int row, std::vector<uint8_t>& stream)
{
    SliceState state(rate_.sliceQuantiser(picture_.index(0, row), stream.size() * 8));
    writeSliceHeader(bits_, row, state.quantiser);
    Macroblock before;
    for (int x = 0; x < picture_.across(); ++x) {
        const int quantiser =
            rate_.macroblockQuantiser(picture_.index(x, row), stream.size() * 8 + bits_.bits());
        const Choice& choice = decision_.decide(x, row, quantiser, state, x > 0 ? &before : nullptr);
        if (choice.skipped)
            writer_.skip(state);
        else
            write(choice, quantiser, state);
        reconstruct(choice);
        before = choice.macroblock;
    }
    bits_.alignToByte();
    bits_.moveTo(stream);
}

void SliceCoder::write(const Choice& choice, int quantiser, SliceState& state)
{
    writer_.write(bits_, state, choice.macroblock, quantiser);
    writeBlocks(choice, state);
}

void SliceCoder::writeBlocks(const Choice& choice, SliceState& state)
{
    const EncodeTables& tables = picture_.tables;
    const bool intra = choice.macroblock.intra;
    const RunLevelTable& table = tables.coefficients[intra && picture_.header.intraTableOne];
    const CodeBits end = table.endOfBlock();
    for (int index = 0; index < 6; ++index) {
        const int16_t* const levels = choice.blocks.levels[index];
        const int plane = index < 4 ? 0 : index - 3;
        if (intra)
            ruxiPutIntraBlock(bits_.word(), bits_.freeBits(), levels, &state.dcPredictor[plane],
                              tables.dcSize[plane > 0].data(), table, zigzagScan.data(), uint32_t(end.length),
                              int32_t(end.value), 0);
        else if (choice.blocks.coded >> index & 1)
            ruxiPutNonIntraBlock(bits_.word(), bits_.freeBits(), levels, table, zigzagScan.data(),
                                 uint32_t(end.length), int32_t(end.value), 0);
    }
}

void SliceCoder::reconstruct(const Choice& choice)
{
    const Macroblock& macroblock = choice.macroblock;
    if (macroblock.intra) return coder_.reconstructIntra(choice.blocks, *picture_.frame, macroblock.x, macroblock.y);
    if (macroblock.codedBlocks) coder_.reconstructResidual(choice.blocks, residual_);
    predict(picture_, macroblock, macroblock.codedBlocks ? &residual_ : nullptr);
}
