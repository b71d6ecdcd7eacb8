// Interleaving in tiles of eight frames.
#include <emmintrin.h>

#include "signal/vector_copy_w7.h"

#include "signal/interleave_blocks.h"

namespace rux::w7 {
namespace {

inline __m128i loadEight(const uint8_t* from)
{
    return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(from));
}

// The words of two rows by turns.
struct TwoOfEight {
    __m128i low;
    __m128i high;

    TwoOfEight(__m128i a, __m128i b) : low(_mm_unpacklo_epi16(a, b)), high(_mm_unpackhi_epi16(a, b)) {}
};

// Four rows a, b, c, d of eight words: rows[j] holds a b c d of columns 2j and 2j + 1.
struct FourOfEight {
    __m128i rows[4];

    FourOfEight(__m128i a, __m128i b, __m128i c, __m128i d)
    {
        const TwoOfEight ab(a, b);
        const TwoOfEight cd(c, d);
        rows[0] = _mm_unpacklo_epi32(ab.low, cd.low);
        rows[1] = _mm_unpackhi_epi32(ab.low, cd.low);
        rows[2] = _mm_unpacklo_epi32(ab.high, cd.high);
        rows[3] = _mm_unpackhi_epi32(ab.high, cd.high);
    }
};

// Four times four bytes.
inline void storeQuarters(uint8_t* to, size_t distance, __m128i value)
{
    store(to, _mm_cvtsi128_si32(value));
    store(to + distance, _mm_cvtsi128_si32(_mm_shuffle_epi32(value, _MM_SHUFFLE(1, 1, 1, 1))));
    store(to + 2 * distance, _mm_cvtsi128_si32(_mm_unpackhi_epi32(value, value)));
    store(to + 3 * distance, _mm_cvtsi128_si32(_mm_shuffle_epi32(value, _MM_SHUFFLE(3, 3, 3, 3))));
}

inline void storeEights(uint8_t* to, size_t distance, __m128i value)
{
    _mm_storel_epi64(reinterpret_cast<__m128i*>(to), value);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(to + distance), _mm_unpackhi_epi64(value, value));
}

template <size_t width>
inline void interleaveTile(const SourceChannels& src, size_t channel, size_t offset, uint8_t* dst, size_t frameBytes)
{
    const auto samples = [&](size_t c) { return loadSixteen(src[channel + c] + offset); };
    if constexpr (width == 2) {
        const TwoOfEight pairs(samples(0), samples(1));
        storeQuarters(dst, frameBytes, pairs.low);
        storeQuarters(dst + 4 * frameBytes, frameBytes, pairs.high);
    } else {
        const FourOfEight early(samples(0), samples(1), samples(2), samples(3));
        if constexpr (width == 4) {
            for (size_t j = 0; j < 4; ++j) storeEights(dst + 2 * j * frameBytes, frameBytes, early.rows[j]);
        } else {
            const FourOfEight late(samples(4), samples(5), samples(6), samples(7));
            for (size_t j = 0; j < 4; ++j) {
                uint8_t* const to = dst + 2 * j * frameBytes;
                storeSixteen(to, _mm_unpacklo_epi64(early.rows[j], late.rows[j]));
                storeSixteen(to + frameBytes, _mm_unpackhi_epi64(early.rows[j], late.rows[j]));
            }
        }
    }
}

// Four rows of two words each: the four of the first column, then those of the second.
inline __m128i columnsOfTwo(const uint8_t* src, size_t frameBytes)
{
    const auto frame = [&](size_t row) { return _mm_cvtsi32_si128(load<int32_t>(src + row * frameBytes)); };
    return _mm_unpacklo_epi32(_mm_unpacklo_epi16(frame(0), frame(1)), _mm_unpacklo_epi16(frame(2), frame(3)));
}

// Two channels, the first in the low halves of both vectors.
inline void storeColumns(const DestinationChannels& dst, size_t channel, size_t offset, __m128i early, __m128i late)
{
    storeSixteen(dst[channel] + offset, _mm_unpacklo_epi64(early, late));
    storeSixteen(dst[channel + 1] + offset, _mm_unpackhi_epi64(early, late));
}

template <size_t width>
inline void deinterleaveTile(const uint8_t* src, size_t frameBytes, const DestinationChannels& dst, size_t channel,
                             size_t offset)
{
    if constexpr (width == 2) {
        storeColumns(dst, channel, offset, columnsOfTwo(src, frameBytes),
                     columnsOfTwo(src + 4 * frameBytes, frameBytes));
    } else {
        const auto frame = [&](size_t row) {
            const uint8_t* const from = src + row * frameBytes;
            return width == 4 ? loadEight(from) : loadSixteen(from);
        };
        const FourOfEight early(frame(0), frame(1), frame(2), frame(3));
        const FourOfEight late(frame(4), frame(5), frame(6), frame(7));
        for (size_t j = 0; j < width / 2; ++j)
            storeColumns(dst, channel + 2 * j, offset, early.rows[j], late.rows[j]);
    }
}

inline void interleaveTwo(const uint8_t* first, const uint8_t* second, uint8_t* dst, size_t frames)
{
    for (; frames > 0; frames -= 8, first += 16, second += 16, dst += 32) {
        const TwoOfEight pairs(loadSixteen(first), loadSixteen(second));
        storeSixteen(dst, pairs.low);
        storeSixteen(dst + 16, pairs.high);
    }
}

// The halves of each 32 bits, widened with their sign: packing them back saturates nothing.
inline void deinterleaveTwo(const uint8_t* src, uint8_t* first, uint8_t* second, size_t frames)
{
    for (; frames > 0; frames -= 8, src += 32, first += 16, second += 16) {
        const __m128i early = loadSixteen(src);
        const __m128i late = loadSixteen(src + 16);
        storeSixteen(first, _mm_packs_epi32(_mm_srai_epi32(_mm_slli_epi32(early, 16), 16),
                                            _mm_srai_epi32(_mm_slli_epi32(late, 16), 16)));
        storeSixteen(second, _mm_packs_epi32(_mm_srai_epi32(early, 16), _mm_srai_epi32(late, 16)));
    }
}

void interleaveWhole(const SourceChannels& src, uint8_t* dst, size_t frames)
{
    interleaveBlocks(src, dst, frames);
}

void deinterleaveWhole(const uint8_t* src, const DestinationChannels& dst, size_t frames)
{
    deinterleaveBlocks(src, dst, frames);
}

}
}
