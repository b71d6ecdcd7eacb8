// One macroblock as the stream describes it, and the pictures that its prediction works on.
#pragma once

#include <cstdint>

#include "frame.h"
#include "syntax.h"

struct MotionVector {
    int x = 0;   // in half samples
    int y = 0;   // in half samples of the frame, or of the field in field and dual-prime prediction
};

inline bool operator==(MotionVector a, MotionVector b) { return a.x == b.x && a.y == b.y; }
inline bool operator!=(MotionVector a, MotionVector b) { return !(a == b); }

enum class MotionType { field = 1, frame = 2, dualPrime = 3 };

struct Macroblock {
    int x = 0;   // in macroblocks
    int y = 0;
    bool intra = false;
    bool predicted[2] = {};   // forward, backward
    MotionType motionType = MotionType::frame;
    MotionVector vector[2][2];     // first and second (in field prediction: top and bottom field); forward, backward
    bool fromBottom[2][2] = {};    // field prediction: the field that the vector refers to
    MotionVector opposite[2];      // dual prime: of the top and bottom field, into the field of other parity
    bool fieldDct = false;
    uint32_t codedBlocks = 0;      // block 0 in bit 0
};

// A frame in the making and those that it is predicted from.
struct PredictedFrame {
    ChromaFormat chromaFormat = ChromaFormat::yuv420;
    Frame* frame = nullptr;
    const Frame* reference[2] = {};   // forward, backward; null where there is none
};

// The vector of a chroma block.
inline MotionVector chromaVector(MotionVector vector, ChromaFormat chromaFormat)
{
    if (chromaFormat == ChromaFormat::yuv422) return {vector.x / 2, vector.y};
    return {vector.x / 2, vector.y / 2};
}
