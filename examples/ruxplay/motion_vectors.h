// Motion vectors: their prediction and decoding (ISO/IEC 13818-2, 7.6.3).
#pragma once

#include "bitstream.h"
#include "coded_picture.h"

class MotionVectors {
public:
    void reset() { *this = {}; }

    // Reads the vectors of one direction (0 forward, 1 backward) into the macroblock.
    void read(BitReader& bits, const CodedPicture& picture, int direction, Macroblock& macroblock);

    // The vector with which a skipped macroblock of a B picture is predicted.
    MotionVector predicted(int direction) const { return predictor_[0][direction]; }

private:
    MotionVector predictor_[2][2];   // first and second vector; forward, backward
};
