#include "code_lists.h"
#include "errors.h"
#include "slice.h"

void SliceDecoder::resetDcPredictors()
{
    for (int16_t& predictor : dcPredictor_) predictor = int16_t(128 << picture_.header.dcPrecision);
}

void SliceDecoder::readMacroblockHeader()
{
    const PictureHeader& header = picture_.header;
    const int type = readCode(bits_, picture_.codes.macroblockType[int(header.type) - 1], "macroblock type");
    macroblock_.intra = type & typeIntra;
    macroblock_.predicted[0] = type & typeForward;
    macroblock_.predicted[1] = type & typeBackward;
    const bool moving = type & (typeForward | typeBackward);

    macroblock_.motionType = MotionType::frame;
    if (moving && !header.framePredictionFrameDct) {
        const uint32_t motionType = bits_.read(2);
        if (motionType == 0) throw Damage("no legal motion type");
        macroblock_.motionType = MotionType(motionType);
        if (macroblock_.motionType == MotionType::dualPrime && header.type != PictureType::P)
            throw Damage("dual-prime prediction in a B picture");
    }
    macroblock_.fieldDct =
        !header.framePredictionFrameDct && (type & (typeIntra | typePattern)) ? bits_.flag() : false;
    if (type & typeQuant) readQuantiserScale();

    readMotion(type);
    macroblock_.codedBlocks = 0;
    if (type & typePattern) readCodedBlocks();
    if (!macroblock_.intra) resetDcPredictors();
}

void SliceDecoder::readMotion(int type)
{
    const bool concealment = macroblock_.intra && picture_.header.concealmentVectors;
    if (type & typeForward || concealment) vectors_.read(bits_, picture_, 0, macroblock_);
    if (type & typeBackward) vectors_.read(bits_, picture_, 1, macroblock_);
    if (concealment && !bits_.flag()) throw Damage("a marker bit is missing");

    if (macroblock_.intra && !concealment) vectors_.reset();
    if (!macroblock_.intra && picture_.header.type == PictureType::P && !(type & typeForward)) {
        vectors_.reset();
        macroblock_.predicted[0] = true;
        macroblock_.vector[0][0] = {};
    }
}

// The pattern's first bit stands for block 0.
void SliceDecoder::readCodedBlocks()
{
    const int pattern = readCode(bits_, picture_.codes.codedBlockPattern, "coded block pattern");
    for (int block = 0; block < 6; ++block)
        if (pattern & 32 >> block) macroblock_.codedBlocks |= 1u << block;
    if (picture_.chromaFormat == ChromaFormat::yuv422) {
        if (bits_.flag()) macroblock_.codedBlocks |= 1u << 6;
        if (bits_.flag()) macroblock_.codedBlocks |= 1u << 7;
    } else if (pattern == 0) {
        throw Damage("a coded macroblock without coded blocks");
    }
}
