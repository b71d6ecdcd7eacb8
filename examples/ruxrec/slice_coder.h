// Codes one row of macroblocks as a slice, and reconstructs it as a decoder will.
#pragma once

#include "mode_decision.h"
#include "rate_control.h"

class SliceCoder {
public:
    SliceCoder(CodingPicture& picture, RateControl& rate);

    // Appends the slice to the stream.
    void code(int row, std::vector<uint8_t>& stream);

private:
    void write(const Choice& choice, int quantiser, SliceState& state);
    void writeBlocks(const Choice& choice, SliceState& state);
    void reconstruct(const Choice& choice);

    CodingPicture& picture_;
    RateControl& rate_;
    BitWriter bits_;
    BlockCoder coder_;
    MacroblockWriter writer_;
    ModeDecision decision_;
    Residual residual_;
};
