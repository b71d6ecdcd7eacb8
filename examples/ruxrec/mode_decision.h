// Chooses how a macroblock is coded: the least of distortion and bits together.
#pragma once

#include "block_coder.h"
#include "macroblock_writer.h"
#include "reference_window.h"

// One way to code a macroblock.
struct Choice {
    Macroblock macroblock;
    CodedBlocks blocks;
    bool skipped = false;
    Cost cost = 0;
};

class ModeDecision {
public:
    ModeDecision(const CodingPicture& picture, BlockCoder& coder, const MacroblockWriter& writer)
        : picture_(picture), coder_(coder), writer_(writer)
    {
    }

    // before: the macroblock on the left; null where this one begins a slice. The result lasts until the next call.
    const Choice& decide(int x, int y, int quantiser, const SliceState& state, const Macroblock* before);

private:
    struct Candidate {
        Macroblock macroblock;
        Cost estimate;
    };

    void addCandidate(bool forward, bool backward, MotionVector forwardVector, MotionVector backwardVector);
    void addCandidates();
    int32_t squaredDifference(const Macroblock& macroblock);
    void tryIntra();
    void tryPrediction(const Macroblock& macroblock);
    bool canBeSkipped(const Macroblock& macroblock) const;
    void take(const Macroblock& macroblock, const CodedBlocks& blocks, bool skipped, Cost cost);

    const CodingPicture& picture_;
    BlockCoder& coder_;
    const MacroblockWriter& writer_;
    ReferenceWindow windows_[2];
    Residual residual_;
    CodedBlocks trial_;
    Choice best_;

    // Of the macroblock at work.
    int x_ = 0;
    int y_ = 0;
    int quantiser_ = 0;
    Cost worthOfBit_ = 0;
    const SliceState* state_ = nullptr;
    const Macroblock* before_ = nullptr;
    std::vector<Candidate> candidates_;
};
