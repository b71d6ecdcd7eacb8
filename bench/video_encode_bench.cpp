// Block operations of an encoder, over all blocks of an image. Rows of ruxiPut*Block give in GB/s 10^9 coded
// coefficients a second, those of ruxiCreateRLEncodeTable the bytes of its source list.
#include <cstring>
#include <random>
#include <stdexcept>

#include "bench.h"
#include "mpeg2/code_source_lists.h"
#include "mpeg2/constants.h"
#include "ruxlib.h"
#include "video_blocks.h"
#include "video_encode_peers.h"

namespace rux::bench {
namespace {

int32_t result;

auto absoluteDifferences(ruxHalfPelMode mode)
{
    return [mode](auto... arguments) { ruxiSAD16x16_8u32s(arguments..., &result, mode); };
}

auto squares(ruxHalfPelMode mode)
{
    return [mode](auto... arguments) { ruxiSqrDiff16x16_8u32s(arguments..., mode, &result); };
}

// `call` takes a block of a picture, of each of two references, and of a residual, each with its step; a sample moves
// `bytesOfSample`. Some tell the row below from one byte of the step: it is the next row where images are 64 wide.
template <typename Call>
MakeWork comparing(Size block, size_t bytesOfSample, Call call)
{
    return [=](Size size) {
        const Image<uint8_t> source(size), forward(referenceSize(size)), backward(referenceSize(size));
        const Image<int16_t> residual(size);
        return Work{bytesOfSample * source.bytes(), [=] {
                        forBlocks(size, block, [&](int32_t x, int32_t y) {
                            call(source.data() + offset(source, x, y), source.step(),
                                 forward.data() + offset(forward, x + forwardVector, y), forward.step(),
                                 backward.data() + offset(backward, x + backwardVector, y), backward.step(),
                                 residual.data() + offset(residual, x, y), residual.step());
                        });
                    }};
    };
}

void addMeasures(Cases& cases)
{
    const std::string sad = "ruxiSAD16x16_8u32s", squared = "ruxiSqrDiff16x16_8u32s", both = "ruxiSqrDiff16x16B_8u32s";
    cases.push_back({sad + " full aligned", measuring(0, 0, absoluteDifferences(mcFullPel)), RUX_AVUTIL(0, 0, 2)});
    cases.push_back({sad + " full unaligned", measuring(3, forwardVector, absoluteDifferences(mcFullPel)),
                     RUX_AVUTIL(3, forwardVector, 0)});
    for (const Mode& mode : modes)
        if (mode.value == mcFullPel)
            cases.push_back({sad + mode.name, measuring(0, forwardVector, absoluteDifferences(mode.value)),
                             RUX_AVUTIL(0, forwardVector, 1)});
        else
            cases.push_back({sad + mode.name, measuring(0, forwardVector, absoluteDifferences(mode.value)), "",
                             nullptr});

    cases.push_back({squared + " full", measuring(0, forwardVector, squares(mcFullPel)),
                     RUX_LIBYUV_WORK(libyuvSquares(forwardVector))});
    cases.push_back({squared + " half both", measuring(0, forwardVector, squares(mcHalfBoth)), "", nullptr});
    for (const Mode& mode : modes)
        cases.push_back({both + mode.name,
                         comparing({16, 16}, 3,
                                     [mode](const uint8_t* source, int32_t sourceStep, const uint8_t* forward,
                                            int32_t forwardStep, const uint8_t* backward, int32_t backwardStep,
                                            int16_t*, int32_t) {
                                         ruxiSqrDiff16x16B_8u32s(source, sourceStep, forward, forwardStep, mode.value,
                                                                 backward, backwardStep, mode.value, &result);
                                     }),
                         "", nullptr});

    cases.push_back({"ruxiVariance16x16_8u32s", [](Size size) {
                         const Image<uint8_t> source(size);
                         return Work{source.bytes(), [=] {
                                         forBlocks(size, {16, 16}, [&](int32_t x, int32_t y) {
                                             ruxiVariance16x16_8u32s(source.data() + offset(source, x, y),
                                                                     source.step(), &result);
                                         });
                                     }};
                     },
                     "", nullptr});
}

template <typename Operation>
void addDifference(Cases& cases, const char* name, Size block, Operation operation)
{
    for (const Mode& mode : modes)
        cases.push_back({std::string(name) + mode.name,
                         comparing(block, 4,
                                     [=](const uint8_t* source, int32_t sourceStep, const uint8_t* reference,
                                         int32_t referenceStep, const uint8_t*, int32_t, int16_t* residual,
                                         int32_t residualStep) {
                                         operation(source, sourceStep, reference, referenceStep, residual,
                                                   residualStep, nullptr, 0, mode.value, 0);
                                     }),
                         "", nullptr});
}

template <typename Operation>
void addDifferenceFromTwo(Cases& cases, const char* name, Size block, Operation operation)
{
    for (const Mode& mode : modes)
        cases.push_back({std::string(name) + mode.name,
                         comparing(block, 5,
                                     [=](const uint8_t* source, int32_t sourceStep, const uint8_t* forward,
                                         int32_t forwardStep, const uint8_t* backward, int32_t backwardStep,
                                         int16_t* residual, int32_t residualStep) {
                                         operation(source, sourceStep, forward, forwardStep, mode.value, backward,
                                                   backwardStep, mode.value, residual, residualStep, 0);
                                     }),
                         "", nullptr});
}

// A table of run and level pairs, and what is written with it.
struct Codes {
    uint32_t* table = nullptr;
    std::vector<int32_t> list = coefficientSourceList(false);
    std::vector<RunLevelCode> pairs = coefficientCodes(false);
    CodeBits endOfBlock = codeBits(endOfBlockCodes[0]);
    std::vector<uint32_t> dcSize;

    Codes()
    {
        if (ruxiCreateRLEncodeTable(list.data(), &table) != ruxStatusOk)
            throw std::runtime_error("no table of runs and levels");
        dcSize.resize(2 * dctDcSizeLuminance.size());
        for (const Code& code : dctDcSizeLuminance) {
            const CodeBits bits = codeBits(code.bits);
            dcSize[2 * static_cast<size_t>(code.value)] = bits.value;
            dcSize[2 * static_cast<size_t>(code.value) + 1] = static_cast<uint32_t>(bits.length);
        }
    }
    ~Codes() { ruxsFree(table); }
    Codes(const Codes&) = delete;
};

const Codes& codes()
{
    static const Codes built;
    return built;
}

struct QuantisedBlocks {
    Image<int16_t> memory;
    size_t count;
    size_t coefficients = 0;
    std::shared_ptr<std::vector<uint32_t>> words;

    // A pair is as probable as its code is short; up to `most` of them behind the first coefficient.
    QuantisedBlocks(Size size, uint32_t most)
        : memory(size), count(memory.bytes() / sizeof(int16_t) / blockElements),
          words(std::make_shared<std::vector<uint32_t>>(count * blockElements))   // a code is shorter than a word
    {
        std::minstd_rand random(1);
        std::memset(memory.data(), 0, memory.bytes());
        for (size_t i = 0; i < count; ++i) {
            int16_t* const block = memory.data() + i * blockElements;
            block[0] = static_cast<int16_t>(1 + (random() >> 8) % 200);
            ++coefficients;
            int32_t place = 0;
            for (uint32_t left = (random() >> 8) % (most + 1); left > 0; --left) {
                const RunLevelCode& code = randomPair(random);
                if ((place += code.run + 1) >= blockElements) break;
                block[zigzagScan[static_cast<size_t>(place)]] =
                    static_cast<int16_t>(random() >> 8 & 1 ? code.level : -code.level);
                ++coefficients;
            }
        }
    }

private:
    static const RunLevelCode& randomPair(std::minstd_rand& random)
    {
        for (;;) {
            const RunLevelCode& code = codes().pairs[(random() >> 8) % codes().pairs.size()];
            if ((random() >> 8) % (1u << (codeBits(code.bits).length - 1)) < 2) return code;
        }
    }
};

constexpr uint32_t sparse = 6, dense = 60;

template <typename Put>
MakeWork writing(uint32_t most, Put put)
{
    return [=](Size size) {
        const QuantisedBlocks blocks(size, most);
        return Work{blocks.coefficients, [=] {
                        const Codes& given = codes();
                        uint32_t* word = blocks.words->data();
                        int32_t freeBits = 32, dcPredictor = 0;
                        const int16_t* block = blocks.memory.data();
                        for (size_t i = 0; i < blocks.count; ++i, block += blockElements)
                            put(given, &word, &freeBits, block, &dcPredictor);
                    }};
    };
}

void putIntra(const Codes& codes, uint32_t** word, int32_t* freeBits, const int16_t* block, int32_t* dcPredictor)
{
    ruxiPutIntraBlock(word, freeBits, block, dcPredictor, codes.dcSize.data(), codes.table, zigzagScan.data(),
                      static_cast<uint32_t>(codes.endOfBlock.length), static_cast<int32_t>(codes.endOfBlock.value),
                      blockElements);
}

void putNonIntra(const Codes& codes, uint32_t** word, int32_t* freeBits, const int16_t* block, int32_t*)
{
    ruxiPutNonIntraBlock(word, freeBits, block, codes.table, zigzagScan.data(),
                         static_cast<uint32_t>(codes.endOfBlock.length), static_cast<int32_t>(codes.endOfBlock.value),
                         blockElements);
}

void addWriting(Cases& cases)
{
    cases.push_back({"ruxiPutIntraBlock sparse", writing(sparse, putIntra), "", nullptr});
    cases.push_back({"ruxiPutIntraBlock dense", writing(dense, putIntra), "", nullptr});
    cases.push_back({"ruxiPutNonIntraBlock sparse", writing(sparse, putNonIntra), "", nullptr});
    cases.push_back({"ruxiPutNonIntraBlock dense", writing(dense, putNonIntra), "", nullptr});
    cases.push_back({"ruxiCreateRLEncodeTable", [](Size) {
                         return Work{codes().list.size() * sizeof(int32_t), [] {
                                         uint32_t* table = nullptr;
                                         ruxiCreateRLEncodeTable(codes().list.data(), &table);
                                         ruxsFree(table);
                                     }};
                     },
                     "", nullptr});
}

MakeWork halving()
{
    return [](Size size) {
        const Size half = {size.width / 2, size.height / 2};
        const Image<uint8_t> source(size), destination(half);
        return Work{source.bytes() + destination.bytes(), [=] {
                        ruxiSampleDownH2V2_JPEG_8u_C1R(source.data(), source.step(), {size.width, size.height},
                                                       destination.data(), destination.step(),
                                                       {half.width, half.height});
                    }};
    };
}

}

void addVideoEncode(Cases& cases)
{
    addMeasures(cases);
    addDifference(cases, "ruxiGetDiff16x16_8u16s_C1", {16, 16}, ruxiGetDiff16x16_8u16s_C1);
    addDifference(cases, "ruxiGetDiff8x8_8u16s_C1", {8, 8}, ruxiGetDiff8x8_8u16s_C1);
    addDifferenceFromTwo(cases, "ruxiGetDiff16x16B_8u16s_C1", {16, 16}, ruxiGetDiff16x16B_8u16s_C1);
    addDifferenceFromTwo(cases, "ruxiGetDiff8x8B_8u16s_C1", {8, 8}, ruxiGetDiff8x8B_8u16s_C1);
    addWriting(cases);
    cases.push_back({"ruxiSampleDownH2V2_JPEG_8u_C1R", halving(), RUX_LIBYUV_WORK(libyuvHalving)});
}

}
