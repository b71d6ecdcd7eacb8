// What the headers above the slices say (ISO/IEC 13818-2, 6.2.2 and 6.2.3).
#pragma once

#include "bitstream.h"
#include "constants.h"

enum class ChromaFormat { yuv420 = 1, yuv422 = 2 };

// The weighting matrices: they begin with the sequence header and can be changed before any picture.
struct Matrices {
    Matrix intra = defaultIntraMatrix, nonIntra, chromaIntra = defaultIntraMatrix, chromaNonIntra;

    Matrices()
    {
        nonIntra.fill(16);
        chromaNonIntra.fill(16);
    }
};

struct Sequence {
    int width = 0;
    int height = 0;
    int aspectRatioCode = 0;
    int frameRateCode = 0;
    int frameRateExtensionN = 0;
    int frameRateExtensionD = 0;
    bool progressive = false;
    ChromaFormat chromaFormat = ChromaFormat::yuv420;

    int macroblocksAcross() const { return (width + 15) / 16; }
    int macroblocksDown() const { return progressive ? (height + 15) / 16 : (height + 31) / 32 * 2; }
};

enum class PictureType { I = 1, P = 2, B = 3 };

struct PictureHeader {
    PictureType type = PictureType::I;
    int fCode[2][2] = {};   // forward, backward; horizontal, vertical
    int dcPrecision = 0;    // bits above 8
    bool topFieldFirst = false;
    bool framePredictionFrameDct = false;
    bool concealmentVectors = false;
    bool nonLinearScale = false;
    bool intraTableOne = false;
    bool alternateScan = false;
    bool repeatFirstField = false;
};

struct GroupHeader {
    bool closed = false;
    bool brokenLink = false;
};

// Each reads one header, whose start code (for extensions: and identifier) has been read. Refusal: a kind of stream
// that this program does not decode. Damage: a value that cannot be.
void readSequenceHeader(BitReader& bits, Sequence& sequence, Matrices& matrices);
void readSequenceExtension(BitReader& bits, Sequence& sequence);
void readMatrixExtension(BitReader& bits, Matrices& matrices);
GroupHeader readGroupHeader(BitReader& bits);
PictureHeader readPictureHeader(BitReader& bits);
void readPictureCodingExtension(BitReader& bits, PictureHeader& picture);
