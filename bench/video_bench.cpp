// Block operations of video, over all blocks of an image: DCT, quantisation, motion compensation.
#include <cstring>

#include "bench.h"
#include "ruxlib.h"
#include "video_blocks.h"
#include "video_peers.h"

namespace rux::bench {
namespace {

constexpr Size dctBlock = {blockSide, blockSide};

// Each sample block of an image and its coefficients.
template <typename Sample, typename Call>
MakeWork transforming(Call call)
{
    return [=](Size size) {
        const Image<Sample> image(size);
        const Blocks blocks(size);
        return Work{image.bytes() + blocks.bytes(), [=] {
                        int16_t* block = blocks.block(0);
                        forBlocks(size, dctBlock, [&](int32_t x, int32_t y) {
                            call(image.data() + offset(image, x, y), image.step(), block);
                            block += blockElements;
                        });
                    }};
    };
}

void addDct(Cases& cases)
{
    cases.push_back({"ruxiDCT8x8Fwd_16s_C1R", transforming<int16_t>(ruxiDCT8x8Fwd_16s_C1R),
                     RUX_AVCODEC(avcodecForward)});
    cases.push_back({"ruxiDCT8x8Fwd_8u16s_C1R", transforming<uint8_t>(ruxiDCT8x8Fwd_8u16s_C1R),
                     RUX_AVCODEC(avcodecForwardOfBytes)});
    cases.push_back({"ruxiDCT8x8Inv_16s_C1R",
                     transforming<int16_t>([](int16_t* samples, int32_t step, const int16_t* block) {
                         ruxiDCT8x8Inv_16s_C1R(block, samples, step);
                     }),
                     RUX_AVCODEC(avcodecInverse)});
    cases.push_back({"ruxiDCT8x8Inv_16s8u_C1R",
                     transforming<uint8_t>([](uint8_t* samples, int32_t step, const int16_t* block) {
                         ruxiDCT8x8Inv_16s8u_C1R(block, samples, step);
                     }),
                     "", nullptr});
    cases.push_back({"ruxiDCT8x8InvLSClip_16s8u_C1R",
                     transforming<uint8_t>([](uint8_t* samples, int32_t step, const int16_t* block) {
                         ruxiDCT8x8InvLSClip_16s8u_C1R(block, samples, step, 128, 16, 235);
                     }),
                     "", nullptr});
}

// In place; a block is brought in each time, for quantising again would quantise zeros.
template <typename Call>
MakeWork quantising(Call call)
{
    return [=](Size size) {
        const Blocks source(size), destination(size);
        return Work{2 * source.bytes(), [=] {
                        for (size_t i = 0; i < source.count(); ++i) {
                            std::memcpy(destination.block(i), source.block(i), sizeof(int16_t) * blockElements);
                            call(destination.block(i));
                        }
                    }};
    };
}

constexpr int32_t quantScale = 8;

struct Matrices {
    alignas(16) int16_t weights[blockElements];
    alignas(16) float reciprocals[blockElements];

    Matrices()
    {
        for (int32_t k = 0; k < blockElements; ++k) {
            weights[k] = static_cast<int16_t>(16 + k / 2);
            reciprocals[k] = 1.0f / weights[k];
        }
    }
};

const Matrices matrices;
int32_t lastNonZero;

void addQuantisation(Cases& cases)
{
    cases.push_back({"ruxiQuantIntra_MPEG2_16s_C1I", quantising([](int16_t* block) {
                         ruxiQuantIntra_MPEG2_16s_C1I(block, quantScale, matrices.reciprocals, &lastNonZero);
                     }),
                     "", nullptr});
    cases.push_back({"ruxiQuant_MPEG2_16s_C1I", quantising([](int16_t* block) {
                         ruxiQuant_MPEG2_16s_C1I(block, quantScale, matrices.reciprocals, &lastNonZero);
                     }),
                     "", nullptr});
    cases.push_back({"ruxiQuantInvIntra_MPEG2_16s_C1I", quantising([](int16_t* block) {
                         ruxiQuantInvIntra_MPEG2_16s_C1I(block, quantScale, matrices.weights);
                     }),
                     "", nullptr});
    cases.push_back({"ruxiQuantInv_MPEG2_16s_C1I", quantising([](int16_t* block) {
                         ruxiQuantInv_MPEG2_16s_C1I(block, quantScale, matrices.weights);
                     }),
                     "", nullptr});
}

template <typename Call>
MakeWork predicting(Size block, Call call)
{
    return [=](Size size) {
        const Image<uint8_t> source(referenceSize(size)), destination(size);
        const Image<int16_t> residual(size);
        return Work{2 * destination.bytes() + residual.bytes(), [=] {
                        forBlocks(size, block, [&](int32_t x, int32_t y) {
                            call(source.data() + offset(source, x + forwardVector, y), source.step(),
                                 residual.data() + offset(residual, x, y), residual.step(),
                                 destination.data() + offset(destination, x, y), destination.step());
                        });
                    }};
    };
}

template <typename Call>
MakeWork predictingFromTwo(Size block, Call call)
{
    return [=](Size size) {
        const Image<uint8_t> forward(referenceSize(size)), backward(referenceSize(size)), destination(size);
        const Image<int16_t> residual(size);
        return Work{3 * destination.bytes() + residual.bytes(), [=] {
                        forBlocks(size, block, [&](int32_t x, int32_t y) {
                            call(forward.data() + offset(forward, x + forwardVector, y), forward.step(),
                                 backward.data() + offset(backward, x + backwardVector, y), backward.step(),
                                 residual.data() + offset(residual, x, y), residual.step(),
                                 destination.data() + offset(destination, x, y), destination.step());
                        });
                    }};
    };
}

template <typename Operation>
void addPrediction(Cases& cases, const char* name, Size block, Operation operation)
{
    for (const Mode& mode : modes)
        cases.push_back({std::string(name) + mode.name,
                         predicting(block, [=](auto... arguments) { operation(arguments..., mode.value, 0); }), "",
                         nullptr});
}

template <typename Operation>
void addPredictionFromTwo(Cases& cases, const char* name, Size block, Operation operation)
{
    for (const Mode& mode : modes)
        cases.push_back({std::string(name) + mode.name,
                         predictingFromTwo(block,
                                           [=](const uint8_t* forward, int32_t forwardStep, const uint8_t* backward,
                                               int32_t backwardStep, auto... rest) {
                                               operation(forward, forwardStep, mode.value, backward, backwardStep,
                                                         mode.value, rest..., 0);
                                           }),
                         "", nullptr});
}

}

void addVideo(Cases& cases)
{
    addDct(cases);
    addQuantisation(cases);
    addPrediction(cases, "ruxiMC16x16_8u_C1", {16, 16}, ruxiMC16x16_8u_C1);
    addPrediction(cases, "ruxiMC8x8_8u_C1", {8, 8}, ruxiMC8x8_8u_C1);
    addPredictionFromTwo(cases, "ruxiMC16x16B_8u_C1", {16, 16}, ruxiMC16x16B_8u_C1);
    addPredictionFromTwo(cases, "ruxiMC8x8B_8u_C1", {8, 8}, ruxiMC8x8B_8u_C1);
}

}
