#include "slice.h"

#include <algorithm>
#include <string>

#include "code_lists.h"
#include "errors.h"

int readCode(BitReader& bits, const CodeTable& table, const char* what)
{
    int32_t value = 0;
    if (ruxiVCHuffmanDecodeOne_1u32s(&bits.word, &bits.offset, &value, table) != ruxStatusOk)
        throw Damage(std::string("no legal ") + what);
    return value;
}

void SliceDecoder::decode(int startCode)
{
    macroblock_.y = readSliceHeader(startCode);
    int first = -1, x = -1;
    do {
        const int next = x + readAddressIncrement();
        if (next >= picture_.macroblocksAcross) throw Damage("a macroblock address behind the row's end");
        if (x < 0)
            first = next;   // what its address leaves out belongs to other slices
        else
            skipMacroblocks(x + 1, next);
        x = macroblock_.x = next;
        decodeMacroblock();
    } while (bits_.peek(23) != 0);

    const auto row = picture_.decoded.begin() + ptrdiff_t(macroblock_.y) * picture_.macroblocksAcross;
    std::fill(row + first, row + x + 1, true);
}

int SliceDecoder::readSliceHeader(int startCode)
{
    int row = startCode - 1;
    if (picture_.frame->shown().height > 2800) row += int(bits_.read(3)) << 7;
    if (row >= picture_.macroblocksDown) throw Damage("the slice lies below the picture");
    readQuantiserScale();
    if (bits_.flag()) {
        bits_.skip(8);   // intra_slice and reserved bits
        while (bits_.flag()) {
            bits_.skip(8);
            if (bits_.isBehind(end_)) throw Damage("the slice header does not end");
        }
    }
    resetDcPredictors();
    return row;
}

int SliceDecoder::readAddressIncrement()
{
    int total = 0;
    for (;;) {
        const int increment = readCode(bits_, picture_.codes.addressIncrement, "macroblock address", 1);
        if (increment != macroblockEscape) return total + increment;
        total += macroblockEscape - 1;
        if (total > picture_.macroblocksAcross) throw Damage("a macroblock address behind the row's end");
    }
}

void SliceDecoder::readQuantiserScale()
{
    const uint32_t code = bits_.read(5);
    if (code == 0) throw Damage("a quantiser scale of 0");
    quantiserScale_ = quantiserScales[picture_.header.nonLinearScale][code];
}

// In P pictures these repeat the reference, in B pictures the prediction of the macroblock before, without residual.
void SliceDecoder::skipMacroblocks(int firstX, int endX)
{
    if (firstX == endX) return;
    if (picture_.header.type == PictureType::I) throw Damage("a skipped macroblock in an I picture");
    if (picture_.header.type == PictureType::B && macroblock_.intra)
        throw Damage("a skipped macroblock behind an intra one in a B picture");

    resetDcPredictors();
    macroblock_.motionType = MotionType::frame;
    macroblock_.intra = false;
    macroblock_.codedBlocks = 0;
    if (picture_.header.type == PictureType::P) {
        vectors_.reset();
        macroblock_.predicted[0] = true;
        macroblock_.vector[0][0] = {};
    } else {
        for (int direction = 0; direction < 2; ++direction)
            macroblock_.vector[0][direction] = vectors_.predicted(direction);
    }
    for (macroblock_.x = firstX; macroblock_.x < endX; ++macroblock_.x) predict(picture_, macroblock_, nullptr);
}

void SliceDecoder::decodeMacroblock()
{
    readMacroblockHeader();
    if (macroblock_.intra)
        decodeIntraBlocks();
    else
        predict(picture_, macroblock_, decodeResidual() ? &residual_ : nullptr);
    if (bits_.isBehind(end_)) throw Damage("the slice is cut short");
}
