// Decodes one slice: macroblocks one after the other, from their headers to the samples in the frame.
#pragma once

#include "bitstream.h"
#include "coded_picture.h"
#include "motion_vectors.h"
#include "prediction.h"

class SliceDecoder {
public:
    // bits stand behind the slice's start code, end where the next start code begins.
    SliceDecoder(CodedPicture& picture, BitReader bits, BitReader end) : picture_(picture), bits_(bits), end_(end) {}

    // startCode gives the row of macroblocks. Throws Damage; what is decoded is marked in the picture, but nothing of a
    // slice with damage, for what stands before the place where it shows can be wrong as well.
    void decode(int startCode);

private:
    // slice.cpp
    int readSliceHeader(int startCode);
    int readAddressIncrement();
    void readQuantiserScale();
    void skipMacroblocks(int firstX, int endX);
    void decodeMacroblock();

    // macroblock_header.cpp
    void readMacroblockHeader();
    void readMotion(int type);
    void readCodedBlocks();
    void resetDcPredictors();

    // blocks.cpp
    void decodeIntraBlocks();
    bool decodeResidual();
    void requireProgress(ruxStatus status, const BitReader& before) const;

    CodedPicture& picture_;
    BitReader bits_;
    const BitReader end_;
    int16_t quantiserScale_ = 0;
    int16_t dcPredictor_[3] = {};
    MotionVectors vectors_;
    Macroblock macroblock_;
    Residual residual_;
};
