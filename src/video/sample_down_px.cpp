// Halving a plane in plain integers: as many words of 16 bits as fill a machine word.
#include "video/sample_down.h"

namespace rux::px {
namespace {

using Word = size_t;
constexpr int32_t wordBytes = sizeof(Word);
constexpr Word lanes = ~Word(0) / 0xFFFF;   // 1 in every 16 bits

// Neighbours of a row added, each sum in 16 bits.
inline Word sumOfPairs(const uint8_t* row)
{
    const Word bytes = load<Word>(row);
    return (bytes & lanes * 255) + (bytes >> 8 & lanes * 255);
}

void halveRows(const uint8_t* upper, const uint8_t* lower, uint8_t* dst, int32_t width)
{
    constexpr int32_t step = wordBytes / 2;
    for (; width >= step; width -= step) {
        Word means = (sumOfPairs(upper) + sumOfPairs(lower) + lanes * 3) >> 2 & lanes * 255;
        means |= means >> 8;
        if (wordBytes == 8) store(dst, static_cast<uint32_t>((means & 0xFFFF) | (means >> 8 >> 8 & 0xFFFF0000)));
        else store(dst, static_cast<uint16_t>(means));
        upper += wordBytes;
        lower += wordBytes;
        dst += step;
    }
    halveSamples(upper, lower, dst, width);
}

}
}
