// One picture in decoding.
#pragma once

#include <vector>

#include "bitstream.h"
#include "code_tables.h"
#include "macroblock.h"

struct CodedPicture : PredictedFrame {
    const CodeTables& codes;
    PictureHeader header;
    Matrices matrices;
    int macroblocksAcross = 0;
    int macroblocksDown = 0;
    std::vector<bool> decoded;   // of each macroblock

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
