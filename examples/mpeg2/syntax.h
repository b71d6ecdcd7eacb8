// What the headers of a stream say (ISO/IEC 13818-2, 6.2.2 and 6.2.3), and its start codes.
#pragma once

#include <cstdint>

#include "constants.h"

// Values of the byte behind the prefix 00 00 01.
enum : uint8_t {
    pictureStart = 0x00,
    firstSliceStart = 0x01,
    lastSliceStart = 0xAF,
    sequenceHeaderStart = 0xB3,
    extensionStart = 0xB5,
    sequenceEnd = 0xB7,
    groupStart = 0xB8
};

// The first four bits of an extension.
enum : uint32_t {
    sequenceExtension = 1,
    matrixExtension = 3,
    sequenceScalableExtension = 5,
    pictureCodingExtension = 8,
    spatialScalableExtension = 9,
    temporalScalableExtension = 10
};

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
