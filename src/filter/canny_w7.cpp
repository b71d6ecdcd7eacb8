// Canny edges in SSE2 registers, two blocks of 4 pixels at a time.
#include "lanes/saturating_words8.h"

#include "filter/canny_blocks.h"
#include "frame/mmx_state.h"

namespace rux::w7 {
namespace {

using Words = SaturatingWords8;

// |a|; -32768 stays.
inline Words absolute(Words a)
{
    return larger(a, wrappingDifference({_mm_setzero_si128()}, a));
}

inline bool anyLane(Words mask)
{
    return _mm_movemask_epi8(mask.value) != 0;
}

// A bit for each word whose mask is set.
inline uint32_t laneBits(Words mask)
{
    return static_cast<uint32_t>(_mm_movemask_epi8(_mm_packs_epi16(mask.value, _mm_setzero_si128())));
}

// All bits of each block of 4 that has a word set: its bytes' sum, up to 2040, is not 0 then.
inline Words anyInBlock(Words mask)
{
    const __m128i zero = _mm_setzero_si128();
    const __m128i some = _mm_cmpgt_epi32(_mm_sad_epu8(mask.value, zero), zero);
    return {_mm_shuffle_epi32(some, _MM_SHUFFLE(2, 2, 0, 0))};
}

// All bits of the words whose number is below the count, which every word holds.
inline Words lanesBelow(Words count)
{
    return isGreater(count, {_mm_setr_epi16(0, 1, 2, 3, 4, 5, 6, 7)});
}

// across * weight > down * 4096 as across * weight + down * -4096 > 0: the products are below 2^29.
inline Words weightedGreater(Words across, int16_t weight, Words down)
{
    const __m128i weights = _mm_set1_epi32(static_cast<int>(-4096u << 16 | static_cast<uint16_t>(weight)));
    const __m128i zero = _mm_setzero_si128();
    const __m128i low = _mm_madd_epi16(_mm_unpacklo_epi16(across.value, down.value), weights);
    const __m128i high = _mm_madd_epi16(_mm_unpackhi_epi16(across.value, down.value), weights);
    return {_mm_packs_epi32(_mm_cmpgt_epi32(low, zero), _mm_cmpgt_epi32(high, zero))};
}

void storeEdges(const uint8_t* row, uint8_t* dst, size_t width)
{
    const __m128i accepted = _mm_set1_epi16(acceptedElement);
    const auto eight = [&](size_t x) { return _mm_cmpeq_epi16(Words::load(row + 2 * x).value, accepted); };
    size_t x = 0;
    for (; width - x >= 16; x += 16) Words{_mm_packs_epi16(eight(x), eight(x + 8))}.store(dst + x);
    for (; width - x >= 8; x += 8) {
        const __m128i edges = eight(x);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(dst + x), _mm_packs_epi16(edges, edges));
    }
    for (; x < width; ++x) dst[x] = load<int16_t>(row + 2 * x) == acceptedElement ? 255 : 0;
}

void cannyEdges(const CannyImages& images, float lowThresh, float highThresh)
{
    const MmxState state;   // nothing here changes it: the contract of both levels clears it
    BlockCanny<Words>(images, {wrappedThreshold(lowThresh), wrappedThreshold(highThresh)}).run();
}

}
}
