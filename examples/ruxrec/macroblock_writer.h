// A macroblock's header in the stream: what it costs, and writing it.
#pragma once

#include "bit_writer.h"
#include "coding_picture.h"

// What the macroblocks of a slice hand on to the next one.
struct SliceState {
    int quantiser = 0;              // in force
    int32_t dcPredictor[3] = {};
    MotionVector predicted[2];      // forward, backward
    int skipped = 0;                // macroblocks since the last that was written

    explicit SliceState(int quantiser) : quantiser(quantiser) { resetDcPredictors(); }
    void resetDcPredictors()
    {
        for (int32_t& predictor : dcPredictor) predictor = 128;
    }
    void resetVectors() { predicted[0] = predicted[1] = {}; }
};

class MacroblockWriter {
public:
    explicit MacroblockWriter(const CodingPicture& picture) : picture_(picture) {}

    // Bits of the header of a macroblock that follows the one before without a gap.
    int length(const SliceState& state, const Macroblock& macroblock, int quantiser) const;

    // Writes the header and brings the state up to date; the DC predictors of an intra macroblock follow its blocks.
    void write(BitWriter& bits, SliceState& state, const Macroblock& macroblock, int quantiser) const;

    // The same for a macroblock that the stream leaves out.
    void skip(SliceState& state) const;

private:
    int typeOf(const SliceState& state, const Macroblock& macroblock, int quantiser) const;

    const CodingPicture& picture_;
};
