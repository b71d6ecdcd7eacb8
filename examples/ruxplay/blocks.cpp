#include <cstring>

#include "errors.h"
#include "slice.h"

namespace {

// Where a block lies in the macroblock: its plane, first column, first row and distance of rows. Blocks 0 to 3 are
// luma, then Cb and Cr in turn, each from the top.
struct BlockPlace {
    int plane;
    int x;
    int y;
    int rowDistance;
};

constexpr BlockPlace places420[2][8] = {
    {{0, 0, 0, 1}, {0, 8, 0, 1}, {0, 0, 8, 1}, {0, 8, 8, 1}, {1, 0, 0, 1}, {2, 0, 0, 1}},
    {{0, 0, 0, 2}, {0, 8, 0, 2}, {0, 0, 1, 2}, {0, 8, 1, 2}, {1, 0, 0, 1}, {2, 0, 0, 1}},   // field DCT
};
constexpr BlockPlace places422[2][8] = {
    {{0, 0, 0, 1}, {0, 8, 0, 1}, {0, 0, 8, 1}, {0, 8, 8, 1}, {1, 0, 0, 1}, {2, 0, 0, 1}, {1, 0, 8, 1}, {2, 0, 8, 1}},
    {{0, 0, 0, 2}, {0, 8, 0, 2}, {0, 0, 1, 2}, {0, 8, 1, 2}, {1, 0, 0, 2}, {2, 0, 0, 2}, {1, 0, 1, 2}, {2, 0, 1, 2}},
};

const BlockPlace* placesOf(const CodedPicture& picture, bool fieldDct)
{
    return (picture.chromaFormat == ChromaFormat::yuv420 ? places420 : places422)[fieldDct];
}

}

// On an illegal code one level of the library gives a status and another leaves the position as it was.
void SliceDecoder::requireProgress(ruxStatus status, const BitReader& before) const
{
    if (status != ruxStatusOk || (bits_.word == before.word && bits_.offset == before.offset))
        throw Damage("no legal coefficient");
}

void SliceDecoder::decodeIntraBlocks()
{
    const PictureHeader& header = picture_.header;
    const Scan& scan = header.alternateScan ? alternateScan : zigzagScan;
    const CodeTable& coefficients = picture_.codes.coefficients[header.intraTableOne];
    const BlockPlace* const places = placesOf(picture_, macroblock_.fieldDct);
    alignas(16) int16_t block[64];

    for (int index = 0; index < picture_.blockCount(); ++index) {
        const BlockPlace& place = places[index];
        const Matrix& matrix = place.plane == 0 ? picture_.matrices.intra : picture_.matrices.chromaIntra;
        const BitReader before = bits_;
        int32_t count;
        requireProgress(ruxiReconstructDCTBlockIntra_MPEG2_32s(
                            &bits_.word, &bits_.offset, picture_.codes.dcSize[place.plane > 0], coefficients,
                            scan.data(), quantiserScale_, matrix.data(), &dcPredictor_[place.plane],
                            3 - header.dcPrecision, block, &count),
                        before);
        const Plane& plane = (*picture_.frame)[place.plane];
        const bool chroma = place.plane > 0;
        const int x = macroblock_.x * (chroma ? 8 : 16) + place.x;
        const int y = macroblock_.y * (plane.height / picture_.macroblocksDown) + place.y;
        ruxiDCT8x8Inv_16s8u_C1R(block, plane.samples + int64_t(y) * plane.step + x, plane.step * place.rowDistance);
    }
}

// Returns whether there is a residual at all.
bool SliceDecoder::decodeResidual()
{
    if (macroblock_.codedBlocks == 0) return false;
    const Scan& scan = picture_.header.alternateScan ? alternateScan : zigzagScan;
    const BlockPlace* const places = placesOf(picture_, macroblock_.fieldDct);
    alignas(16) int16_t block[64];

    for (int index = 0; index < picture_.blockCount(); ++index) {
        const BlockPlace& place = places[index];
        const int32_t rowStep = Residual::step(place.plane);
        int16_t* const target = residual_.samples[place.plane] + place.y * rowStep / 2 + place.x;
        const int32_t step = rowStep * place.rowDistance;
        if (!(macroblock_.codedBlocks >> index & 1)) {
            for (int row = 0; row < 8; ++row) std::memset(target + row * step / 2, 0, 16);
            continue;
        }
        const Matrix& matrix = place.plane == 0 ? picture_.matrices.nonIntra : picture_.matrices.chromaNonIntra;
        const BitReader before = bits_;
        int32_t count;
        requireProgress(ruxiReconstructDCTBlock_MPEG2_32s(&bits_.word, &bits_.offset, picture_.codes.firstCoefficient,
                                                          picture_.codes.coefficients[0], scan.data(), quantiserScale_,
                                                          matrix.data(), block, &count),
                        before);
        ruxiDCT8x8Inv_16s_C1R(block, target, step);
    }
    return true;
}
