// Variable-length codes and blocks read from a stream. What these rows give in GB/s is 10^9 coded coefficients a second
// (the end of block is none of them): an image of the size, with as many blocks as it holds.
#include <random>
#include <stdexcept>

#include "bench.h"
#include "mpeg2/code_lists.h"
#include "mpeg2/constants.h"
#include "ruxlib.h"
#include "ruxplay/code_tables.h"

namespace rux::bench {
namespace {

const CodeTables& tables()
{
    static const CodeTables built;
    return built;
}

struct Stream {
    std::vector<uint32_t> words;
    size_t blocks;
    size_t coefficients;
    size_t bits;
};

// Words that fill from bit 31 down.
class BitWriter {
public:
    void put(uint32_t bits, int32_t count)
    {
        for (int32_t i = count - 1; i >= 0; --i, ++position) {
            if (position % 32 == 0) words.push_back(0);
            words.back() |= (bits >> i & 1) << (31 - position % 32);
        }
    }
    void put(const char* bits)
    {
        for (; *bits; ++bits)
            if (*bits != ' ') put(*bits == '1', 1);
    }
    void finish(Stream& stream)
    {
        words.insert(words.end(), 2, 0);   // readers look ahead
        stream.words = std::move(words);
        stream.bits = position;
    }

private:
    std::vector<uint32_t> words;
    size_t position = 0;
};

// A run/level code is as probable as it is short, as the makers of the table meant it.
const RunLevelCode& randomCode(std::minstd_rand& random)
{
    static const RunLevelCode shortest = {"11", 0, 1};
    for (;;) {
        if (random() >> 8 & 1) return shortest;
        const auto& list = random() >> 8 & 1 ? dctCoefficientsZero : dctCoefficientsShared;
        const RunLevelCode& code = list[(random() >> 8) % list.size()];
        int32_t length = 0;
        for (const char* bit = code.bits; *bit; ++bit) length += *bit != ' ';
        if (length <= 4 || (random() >> 8) % (1u << (length - 4)) == 0) return code;
    }
}

void putCode(BitWriter& writer, const RunLevelCode& code, std::minstd_rand& random)
{
    writer.put(code.bits);
    writer.put(random() >> 8 & 1, 1);
}

constexpr int32_t meanCodes = 8;

// Blocks of table zero; an intra block begins with its DC, another with a first coefficient of run 0 and level 1 or -1.
Stream streamOf(Size size, bool intra)
{
    std::minstd_rand random(1);
    BitWriter writer;
    Stream stream = {{}, static_cast<size_t>(size.width / 8) * (size.height / 8), 0, 0};
    for (size_t i = 0; i < stream.blocks; ++i) {
        if (intra) {
            const auto& sizeCode = dctDcSizeLuminance[(random() >> 8) % 5];
            writer.put(sizeCode.bits);
            writer.put(random() >> 8, sizeCode.value);
        } else {
            writer.put("1");
            writer.put(random() >> 8 & 1, 1);
        }
        ++stream.coefficients;
        int32_t last = 0;
        for (uint32_t left = (random() >> 8) % (2 * meanCodes + 1); left > 0; --left) {
            const RunLevelCode& code = randomCode(random);
            if ((last += code.run + 1) > 63) break;
            putCode(writer, code, random);
            ++stream.coefficients;
        }
        writer.put("10");
    }
    writer.finish(stream);
    return stream;
}

// Codes without blocks: every one is a coefficient.
Stream streamOfCodes(Size size)
{
    std::minstd_rand random(1);
    BitWriter writer;
    Stream stream = {{}, 0, static_cast<size_t>(size.width) * size.height / meanCodes, 0};
    for (size_t i = 0; i < stream.coefficients; ++i) putCode(writer, randomCode(random), random);
    writer.finish(stream);
    return stream;
}

int16_t flatMatrix[64];
int16_t block[64];
int32_t result;
constexpr int16_t quantScale = 8;
constexpr int32_t dcShift = 3;

// `read` moves the position behind one block or code; what does not end where the stream does is not timed.
template <typename Read>
Work reading(Stream stream, size_t times, Read read)
{
    return {stream.coefficients, [=]() mutable {
                uint32_t* word = stream.words.data();
                int32_t offset = 31;
                int16_t predictor = 0;
                for (size_t i = 0; i < times; ++i) read(&word, &offset, &predictor);
                if (static_cast<size_t>(word - stream.words.data()) * 32 + 31 - offset != stream.bits)
                    throw std::runtime_error("the stream was not read to its end");
            }};
}

}

void addVideoStream(Cases& cases)
{
    for (int16_t& weight : flatMatrix) weight = 16;
    cases.push_back({"ruxiVCHuffmanDecodeOne_1u32s", [](Size size) {
                         Stream stream = streamOfCodes(size);
                         const size_t codes = stream.coefficients;
                         return reading(std::move(stream), codes, [](uint32_t** word, int32_t* offset, int16_t*) {
                             ruxiVCHuffmanDecodeOne_1u32s(word, offset, &result, tables().coefficients[0]);
                         });
                     },
                     "", nullptr});
    cases.push_back({"ruxiReconstructDCTBlockIntra_MPEG2_32s", [](Size size) {
                         Stream stream = streamOf(size, true);
                         const size_t blocks = stream.blocks;
                         return reading(std::move(stream), blocks, [](uint32_t** word, int32_t* offset, int16_t* dc) {
                             ruxiReconstructDCTBlockIntra_MPEG2_32s(
                                 word, offset, tables().dcSize[0], tables().coefficients[0], zigzagScan.data(),
                                 quantScale, flatMatrix, dc, dcShift, block, &result);
                         });
                     },
                     "", nullptr});
    cases.push_back({"ruxiReconstructDCTBlock_MPEG2_32s", [](Size size) {
                         Stream stream = streamOf(size, false);
                         const size_t blocks = stream.blocks;
                         return reading(std::move(stream), blocks, [](uint32_t** word, int32_t* offset, int16_t*) {
                             ruxiReconstructDCTBlock_MPEG2_32s(word, offset, tables().firstCoefficient,
                                                               tables().coefficients[0], zigzagScan.data(), quantScale,
                                                               flatMatrix, block, &result);
                         });
                     },
                     "", nullptr});
}

}
