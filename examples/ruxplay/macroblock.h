// One macroblock as the stream describes it, and what decoding it needs to know of its picture.
#pragma once

#include <vector>

#include "code_tables.h"
#include "constants.h"
#include "frame.h"
#include "headers.h"

struct MotionVector {
    int x = 0;   // in half samples
    int y = 0;   // in half samples of the frame, or of the field in field and dual-prime prediction
};

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

// One picture in decoding.
struct CodedPicture {
    const CodeTables& codes;
    PictureHeader header;
    Matrices matrices;
    int macroblocksAcross = 0;
    int macroblocksDown = 0;
    ChromaFormat chromaFormat = ChromaFormat::yuv420;
    Frame* frame = nullptr;
    const Frame* reference[2] = {};   // forward, backward; null where there is none
    std::vector<bool> decoded;        // of each macroblock

    int blockCount() const { return chromaFormat == ChromaFormat::yuv420 ? 6 : 8; }
};

// Reads one code; throws Damage where the stream holds none.
int readCode(BitReader& bits, const CodeTable& table, const char* what);

// The same for the codes in which a single 1 stands for the commonest value.
inline int readCode(BitReader& bits, const CodeTable& table, const char* what, int commonest)
{
    if (bits.peek(1) == 0) return readCode(bits, table, what);
    bits.skip(1);
    return commonest;
}
