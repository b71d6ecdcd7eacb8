// From samples or residuals to levels and back, a macroblock at a time, all through the library.
#pragma once

#include "coding_picture.h"
#include "cost.h"
#include "prediction.h"

// The levels of a macroblock's blocks, and what they cost.
struct CodedBlocks {
    alignas(16) int16_t levels[6][64];
    uint32_t coded = 0;             // block 0 in bit 0; all of an intra macroblock
    int bits = 0;                   // of the coded blocks
    int64_t distortion = 0;         // squared differences
    int64_t distortionOfNone = 0;   // of a non-intra macroblock, were no block coded
};

class BlockCoder {
public:
    BlockCoder(const EncodeTables& tables, bool intraTableOne);

    void setQuantiser(int quantiser);

    void codeIntra(const CodingPicture& picture, int x, int y, const int32_t (&dcPredictor)[3], CodedBlocks& blocks);
    void codeResidual(const Residual& residual, CodedBlocks& blocks);

    void reconstructIntra(const CodedBlocks& blocks, Frame& frame, int x, int y) const;
    void reconstructResidual(const CodedBlocks& blocks, Residual& residual) const;

private:
    void quantiseIntra(const int16_t* coefficients, int16_t* levels) const;
    void quantiseResidual(const int16_t* coefficients, int16_t* levels) const;

    const EncodeTables& tables_;
    const bool intraTableOne_;
    int16_t scale_ = 0;
    Cost worthOfBit_ = 0;
};
