// Packed 4:2:2 in SSE2 registers, 32 pixels at a time.
#include "lanes/pixel_words8.h"

#include "colour/split422_vector.h"   // over the words above

namespace rux::w7 {
namespace {

struct AnyAddress {
    static SaturatingWords8 load(const uint8_t* from) { return SaturatingWords8::load(from); }
    static void store(SaturatingWords8 words, uint8_t* to) { words.store(to); }
};

struct AlignedAddress {
    static SaturatingWords8 load(const uint8_t* from) { return SaturatingWords8::loadAligned(from); }
    static void store(SaturatingWords8 words, uint8_t* to)
    {
        _mm_store_si128(reinterpret_cast<__m128i*>(to), words.value);
    }
};

// Rows of 2 to 62 pixels, and what longer ones leave over, in blocks of 8 pixels.
inline size_t splitEights(const uint8_t* packed, SplitRow planes, size_t pair, size_t pairs)
{
    for (; pairs - pair >= 4; pair += 4) {
        const SaturatingWords8 words = SaturatingWords8::load(packed + pair * 4);
        const WordPair<SaturatingWords8> bytes = separateBytes(words, words);
        const WordPair<SaturatingWords8> chroma = separateBytes(bytes.high, bytes.high);
        storeHalf(bytes.low, planes.luma + pair * 2);
        store(planes.cb + pair, _mm_cvtsi128_si32(chroma.low.value));
        store(planes.cr + pair, _mm_cvtsi128_si32(chroma.high.value));
    }
    return pair;
}

inline size_t joinEights(JoinRow planes, uint8_t* packed, size_t pair, size_t pairs)
{
    for (; pairs - pair >= 4; pair += 4) {
        const SaturatingWords8 luma = loadHalf(planes.luma + pair * 2);
        const SaturatingWords8 cb = {_mm_cvtsi32_si128(load<int32_t>(planes.cb + pair))};
        const SaturatingWords8 cr = {_mm_cvtsi32_si128(load<int32_t>(planes.cr + pair))};
        interleaveLowBytes(luma, interleaveLowBytes(cb, cr)).store(packed + pair * 4);
    }
    return pair;
}

void splitRow(const uint8_t* packed, SplitRow planes, size_t pairs)
{
    const size_t blocks = isAligned(packed, 16) && isAligned(planes.luma, 16)
                              ? splitBlocks<SaturatingWords8, AlignedAddress>(packed, planes, pairs)
                              : splitBlocks<SaturatingWords8, AnyAddress>(packed, planes, pairs);
    splitPairs(packed, planes, splitEights(packed, planes, blocks, pairs), pairs);
}

void joinRow(JoinRow planes, uint8_t* packed, size_t pairs)
{
    const size_t blocks = isAligned(packed, 16) && isAligned(planes.luma, 16)
                              ? joinBlocks<SaturatingWords8, AlignedAddress>(planes, packed, pairs)
                              : joinBlocks<SaturatingWords8, AnyAddress>(planes, packed, pairs);
    joinPairs(planes, packed, joinEights(planes, packed, blocks, pairs), pairs);
}

}
}
