#include "header_writer.h"

#include "timing.h"

namespace {

// A level of the Main Profile: what it allows.
struct Level {
    uint32_t code;
    int width;
    int height;
    int framesPerSecond;
    int64_t samplesPerSecond;
    int64_t bitRate;
    int64_t bufferBits;
};

constexpr Level levels[] = {
    {10, 352, 288, 30, 3041280, 4000000, 475136},
    {8, 720, 576, 30, 10368000, 15000000, 1835008},
    {6, 1440, 1152, 60, 47001600, 60000000, 7340032},
    {4, 1920, 1152, 60, 62668800, 80000000, 9781248},
};
constexpr uint32_t mainProfile = 1;

// The lowest level that holds the pictures; the highest for what is beyond all.
const Level& levelOf(const Sequence& sequence, int64_t bitRate)
{
    const Ratio rate = frameRate(sequence);
    const int64_t samples = int64_t(sequence.width) * sequence.height * rate.numerator / rate.denominator;
    for (const Level& level : levels)
        if (sequence.width <= level.width && sequence.height <= level.height && samples <= level.samplesPerSecond &&
            rate.numerator <= int64_t(level.framesPerSecond) * rate.denominator && bitRate <= level.bitRate &&
            (bitRate > 0 || level.code < levels[0].code))   // without a rate, room for any
            return level;
    return levels[3];
}

}

void writeSequenceHeader(BitWriter& bits, const Sequence& sequence, int64_t bitRate)
{
    const Level& level = levelOf(sequence, bitRate);
    const uint32_t rate = uint32_t(((bitRate > 0 ? bitRate : level.bitRate) + 399) / 400);
    const uint32_t buffer = uint32_t(level.bufferBits / 16384);
    const uint32_t width = uint32_t(sequence.width), height = uint32_t(sequence.height);
    bits.putStartCode(sequenceHeaderStart);
    bits.put(width & 0xFFF, 12);
    bits.put(height & 0xFFF, 12);
    bits.put(uint32_t(sequence.aspectRatioCode), 4);
    bits.put(uint32_t(sequence.frameRateCode), 4);
    bits.put(rate & 0x3FFFF, 18);
    bits.put(1, 1);   // marker
    bits.put(buffer & 0x3FF, 10);
    bits.put(0, 1);   // not constrained as in the older standard
    bits.put(0, 2);   // the default matrices

    bits.putStartCode(extensionStart);
    bits.put(sequenceExtension, 4);
    bits.put(mainProfile << 4 | level.code, 8);
    bits.put(sequence.progressive, 1);
    bits.put(uint32_t(sequence.chromaFormat), 2);
    bits.put(width >> 12, 2);
    bits.put(height >> 12, 2);
    bits.put(rate >> 18, 12);
    bits.put(1, 1);   // marker
    bits.put(buffer >> 10, 8);
    bits.put(0, 1);   // pictures are reordered
    bits.put(uint32_t(sequence.frameRateExtensionN), 2);
    bits.put(uint32_t(sequence.frameRateExtensionD), 5);
}

void writeGroupHeader(BitWriter& bits, const Sequence& sequence, size_t firstPicture, bool closed)
{
    // A time code counts whole pictures a second: 30 for 30000/1001.
    const Ratio rate = frameRate(sequence);
    const size_t each = size_t((rate.numerator + rate.denominator - 1) / rate.denominator);
    const size_t seconds = firstPicture / each;
    bits.putStartCode(groupStart);
    bits.put(0, 1);   // no dropped numbers
    bits.put(uint32_t(seconds / 3600 % 24), 5);
    bits.put(uint32_t(seconds / 60 % 60), 6);
    bits.put(1, 1);   // marker
    bits.put(uint32_t(seconds % 60), 6);
    bits.put(uint32_t(firstPicture % each), 6);
    bits.put(closed, 1);
    bits.put(0, 1);   // the link is not broken
    bits.alignToByte();
}

void writePictureHeader(BitWriter& bits, const PictureHeader& picture, int temporalReference)
{
    bits.putStartCode(pictureStart);
    bits.put(uint32_t(temporalReference), 10);
    bits.put(uint32_t(picture.type), 3);
    bits.put(0xFFFF, 16);   // the delay of a variable rate
    if (picture.type != PictureType::I) bits.put(7, 4);   // the older standard's vectors: no full samples, code 7
    if (picture.type == PictureType::B) bits.put(7, 4);
    bits.put(0, 1);   // no extra information
    bits.alignToByte();

    bits.putStartCode(extensionStart);
    bits.put(pictureCodingExtension, 4);
    for (const auto& direction : picture.fCode)
        for (const int code : direction) bits.put(uint32_t(code), 4);
    bits.put(uint32_t(picture.dcPrecision), 2);
    bits.put(3, 2);   // a frame picture
    bits.put(picture.topFieldFirst, 1);
    bits.put(picture.framePredictionFrameDct, 1);
    bits.put(picture.concealmentVectors, 1);
    bits.put(picture.nonLinearScale, 1);
    bits.put(picture.intraTableOne, 1);
    bits.put(picture.alternateScan, 1);
    bits.put(picture.repeatFirstField, 1);
    bits.put(1, 1);   // 4:2:0 of a progressive frame
    bits.put(1, 1);   // progressive
    bits.put(0, 1);   // no composite display
    bits.alignToByte();
}

void writeSliceHeader(BitWriter& bits, int row, int quantiserCode)
{
    bits.putStartCode(uint8_t(row + firstSliceStart));
    bits.put(uint32_t(quantiserCode), 5);
    bits.put(0, 1);   // no extra information
}
