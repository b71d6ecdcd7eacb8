#include "headers.h"

#include "errors.h"

namespace {

void expectMarker(BitReader& bits)
{
    if (!bits.flag()) throw Damage("a marker bit is missing");
}

Matrix readMatrix(BitReader& bits)
{
    Matrix matrix;
    for (const int32_t place : zigzagScan) {
        matrix[size_t(place)] = int16_t(bits.read(8));
        if (matrix[size_t(place)] == 0) throw Damage("a quantiser matrix holds 0");
    }
    return matrix;
}

}

void readSequenceHeader(BitReader& bits, Sequence& sequence, Matrices& matrices)
{
    sequence = {};
    matrices = {};
    sequence.width = int(bits.read(12));
    sequence.height = int(bits.read(12));
    sequence.aspectRatioCode = int(bits.read(4));
    sequence.frameRateCode = int(bits.read(4));
    bits.skip(18);   // bit rate
    expectMarker(bits);
    bits.skip(10);   // buffer size
    bits.skip(1);    // constrained parameters, of the older standard
    if (bits.flag()) matrices.intra = matrices.chromaIntra = readMatrix(bits);
    if (bits.flag()) matrices.nonIntra = matrices.chromaNonIntra = readMatrix(bits);
}

void readSequenceExtension(BitReader& bits, Sequence& sequence)
{
    bits.skip(8);   // profile and level
    sequence.progressive = bits.flag();
    const uint32_t chroma = bits.read(2);
    if (chroma == 3) throw Refusal("4:4:4 sampling is not supported");
    if (chroma == 0) throw Refusal("the stream names no known chroma format");
    sequence.chromaFormat = ChromaFormat(chroma);
    sequence.width |= int(bits.read(2)) << 12;
    sequence.height |= int(bits.read(2)) << 12;
    bits.skip(12);   // bit rate
    expectMarker(bits);
    bits.skip(8);    // buffer size
    bits.skip(1);    // low delay: the order of pictures tells as much
    sequence.frameRateExtensionN = int(bits.read(2));
    sequence.frameRateExtensionD = int(bits.read(5));
    if (sequence.width == 0 || sequence.height == 0) throw Refusal("the stream gives its pictures no size");
}

void readMatrixExtension(BitReader& bits, Matrices& matrices)
{
    Matrices read = matrices;
    if (bits.flag()) read.intra = read.chromaIntra = readMatrix(bits);
    if (bits.flag()) read.nonIntra = read.chromaNonIntra = readMatrix(bits);
    if (bits.flag()) read.chromaIntra = readMatrix(bits);
    if (bits.flag()) read.chromaNonIntra = readMatrix(bits);
    matrices = read;
}

GroupHeader readGroupHeader(BitReader& bits)
{
    bits.skip(25);   // time code
    GroupHeader group;
    group.closed = bits.flag();
    group.brokenLink = bits.flag();
    return group;
}

PictureHeader readPictureHeader(BitReader& bits)
{
    bits.skip(10);   // temporal reference: the order of pictures follows from their types
    PictureHeader picture;
    const uint32_t type = bits.read(3);
    if (type < 1 || type > 3) throw Damage("the picture is none of I, P and B");
    picture.type = PictureType(type);
    return picture;
}

void readPictureCodingExtension(BitReader& bits, PictureHeader& picture)
{
    for (auto& direction : picture.fCode)
        for (int& code : direction) code = int(bits.read(4));
    picture.dcPrecision = int(bits.read(2));
    const uint32_t structure = bits.read(2);
    if (structure == 0) throw Damage("the picture has no known structure");
    if (structure != 3) throw Refusal("field pictures are not supported (frame pictures are, interlaced ones too)");
    picture.topFieldFirst = bits.flag();
    picture.framePredictionFrameDct = bits.flag();
    picture.concealmentVectors = bits.flag();
    picture.nonLinearScale = bits.flag();
    picture.intraTableOne = bits.flag();
    picture.alternateScan = bits.flag();
    picture.repeatFirstField = bits.flag();
}
