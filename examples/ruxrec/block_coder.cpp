#include "block_coder.h"

#include <cstring>

#include "level_thrift.h"

namespace {

struct BlockPlace {
    int plane;
    int x;
    int y;
};

constexpr int blockCount = 6;
constexpr BlockPlace places[blockCount] = {{0, 0, 0}, {0, 8, 0}, {0, 0, 8}, {0, 8, 8}, {1, 0, 0}, {2, 0, 0}};

struct Multipliers {
    alignas(16) float intra[64];
    alignas(16) float nonIntra[64];

    Multipliers()
    {
        for (size_t place = 0; place < 64; ++place) {
            intra[place] = 1.0f / float(defaultIntraMatrix[place]);
            nonIntra[place] = 1.0f / 16;
        }
    }
};

const Multipliers multipliers;

const uint8_t* samplesOf(const CodingPicture& picture, const BlockPlace& place, int x, int y)
{
    return picture.sourceAt(place.plane, x, y) + int64_t(place.y) * picture.source[place.plane].step + place.x;
}

template <typename Samples>
auto* placeIn(Samples& residual, const BlockPlace& place)
{
    return residual.samples[place.plane] + place.y * (Residual::step(place.plane) / 2) + place.x;
}

}

BlockCoder::BlockCoder(const EncodeTables& tables, bool intraTableOne) : tables_(tables), intraTableOne_(intraTableOne)
{
}

void BlockCoder::setQuantiser(int quantiser)
{
    scale_ = quantiserScale(quantiser);
    worthOfBit_ = worthOfBitSquared(scale_);
}

// No saturation or wrap of a decoder is reached: the coefficients of samples lie within 1024 but for the mean, those of
// residuals within 1848 but for the mean, whose 2040 can come back as 2060 only where every sample is 0 or 255.

// The library rounds positive coefficients to the nearest level and negative ones toward zero: half a step more makes
// that the nearest too.
void BlockCoder::quantiseIntra(const int16_t* coefficients, int16_t* levels) const
{
    for (size_t place = 0; place < 64; ++place) {
        const int half = scale_ * defaultIntraMatrix[place] / 32;
        levels[place] = int16_t(coefficients[place] < 0 ? coefficients[place] - half : coefficients[place]);
    }
    int32_t count;
    ruxiQuantIntra_MPEG2_16s_C1I(levels, scale_, multipliers.intra, &count);
    levels[0] = int16_t((coefficients[0] + 4) >> 3);   // the mean of the samples, 0 to 255
}

void BlockCoder::quantiseResidual(const int16_t* coefficients, int16_t* levels) const
{
    std::memcpy(levels, coefficients, 64 * sizeof *levels);
    int32_t count = 0;
    ruxiQuant_MPEG2_16s_C1I(levels, scale_, multipliers.nonIntra, &count);
}

void BlockCoder::codeIntra(const CodingPicture& picture, int x, int y, const int32_t (&dcPredictor)[3],
                           CodedBlocks& blocks)
{
    const LevelThrift thrift(tables_.coefficients[intraTableOne_], defaultIntraMatrix.data(), scale_, worthOfBit_);
    int32_t predictor[3] = {dcPredictor[0], dcPredictor[1], dcPredictor[2]};
    alignas(16) int16_t coefficients[64];
    blocks.coded = (1u << blockCount) - 1;
    blocks.bits = 0;
    blocks.distortion = 0;
    for (int index = 0; index < blockCount; ++index) {
        const BlockPlace& place = places[index];
        int16_t* const levels = blocks.levels[index];
        ruxiDCT8x8Fwd_8u16s_C1R(samplesOf(picture, place, x, y), picture.source[place.plane].step, coefficients);
        quantiseIntra(coefficients, levels);
        thrift.apply(coefficients, levels);
        const int difference = levels[0] - predictor[place.plane];
        const int dcError = coefficients[0] - 8 * levels[0];
        predictor[place.plane] = levels[0];
        blocks.bits += tables_.dcLength(place.plane > 0, difference) + thrift.bits(levels);
        blocks.distortion += dcError * dcError + thrift.distortion(coefficients, levels);
    }
}

void BlockCoder::codeResidual(const Residual& residual, CodedBlocks& blocks)
{
    const LevelThrift thrift(tables_.coefficients[0], nullptr, scale_, worthOfBit_);
    alignas(16) int16_t coefficients[64];
    alignas(16) static const int16_t zeros[64] = {};
    blocks.coded = 0;
    blocks.bits = 0;
    blocks.distortion = blocks.distortionOfNone = 0;
    for (int index = 0; index < blockCount; ++index) {
        const BlockPlace& place = places[index];
        int16_t* const levels = blocks.levels[index];
        ruxiDCT8x8Fwd_16s_C1R(placeIn(residual, place), Residual::step(place.plane), coefficients);
        quantiseResidual(coefficients, levels);
        thrift.apply(coefficients, levels);
        const int64_t none = thrift.distortion(coefficients, zeros);
        const int64_t some = thrift.distortion(coefficients, levels);
        const int bits = thrift.bits(levels);
        const bool worthwhile = std::memcmp(levels, zeros, sizeof zeros) != 0 &&
                                costOf(some, bits, worthOfBit_) < costOf(none, 0, worthOfBit_);
        blocks.distortionOfNone += none;
        blocks.distortion += worthwhile ? some : none;
        if (!worthwhile) continue;
        blocks.coded |= 1u << index;
        blocks.bits += bits;
    }
}

void BlockCoder::reconstructIntra(const CodedBlocks& blocks, Frame& frame, int x, int y) const
{
    alignas(16) int16_t block[64];
    for (int index = 0; index < blockCount; ++index) {
        const BlockPlace& place = places[index];
        const Plane& plane = frame[place.plane];
        const int side = place.plane == 0 ? 16 : 8;
        std::memcpy(block, blocks.levels[index], sizeof block);
        block[0] = int16_t(block[0] * 8);
        ruxiQuantInvIntra_MPEG2_16s_C1I(block, scale_, defaultIntraMatrix.data());
        ruxiDCT8x8Inv_16s8u_C1R(
            block, plane.samples + int64_t(y * side + place.y) * plane.step + x * side + place.x, plane.step);
    }
}

void BlockCoder::reconstructResidual(const CodedBlocks& blocks, Residual& residual) const
{
    alignas(16) int16_t block[64];
    for (int index = 0; index < blockCount; ++index) {
        const BlockPlace& place = places[index];
        const int32_t step = Residual::step(place.plane);
        int16_t* const target = placeIn(residual, place);
        if (blocks.coded >> index & 1) {
            std::memcpy(block, blocks.levels[index], sizeof block);
            ruxiQuantInv_MPEG2_16s_C1I(block, scale_, nullptr);
            ruxiDCT8x8Inv_16s_C1R(block, target, step);
        } else {
            for (int row = 0; row < 8; ++row) std::memset(target + row * step / 2, 0, 8 * sizeof *target);
        }
    }
}
