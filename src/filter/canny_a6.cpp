// Canny edges in MMX registers, 4 pixels at a time.
#include "lanes/saturating_words4_a6.h"

#include "filter/canny_blocks.h"
#include "frame/mmx_state.h"

namespace rux::a6 {
namespace {

using Words = SaturatingWords4;

// |a|; -32768 stays.
inline Words absolute(Words a)
{
    return larger(a, wrappingDifference({_mm_setzero_si64()}, a));
}

inline bool anyLane(Words mask)
{
    return _mm_movemask_pi8(mask.value) != 0;
}

// A bit for each word whose mask is set.
inline uint32_t laneBits(Words mask)
{
    return static_cast<uint32_t>(_mm_movemask_pi8(_mm_packs_pi16(mask.value, _mm_setzero_si64())));
}

// All bits of a block that has a word set; this one has.
inline Words anyInBlock(Words)
{
    return Words::broadcast(-1);
}

// All bits of the words whose number is below the count, which every word holds.
inline Words lanesBelow(Words count)
{
    return isGreater(count, {_mm_setr_pi16(0, 1, 2, 3)});
}

// across * weight > down * 4096 as across * weight + down * -4096 > 0: the products are below 2^29.
inline Words weightedGreater(Words across, int16_t weight, Words down)
{
    const __m64 weights = _mm_setr_pi16(weight, -4096, weight, -4096);
    const __m64 zero = _mm_setzero_si64();
    const __m64 low = _mm_madd_pi16(_mm_unpacklo_pi16(across.value, down.value), weights);
    const __m64 high = _mm_madd_pi16(_mm_unpackhi_pi16(across.value, down.value), weights);
    return {_mm_packs_pi32(_mm_cmpgt_pi32(low, zero), _mm_cmpgt_pi32(high, zero))};
}

void storeEdges(const uint8_t* row, uint8_t* dst, size_t width)
{
    const __m64 accepted = _mm_set1_pi16(acceptedElement);
    size_t x = 0;
    for (; width - x >= 8; x += 8) {
        const __m64 low = _mm_cmpeq_pi16(load<__m64>(row + 2 * x), accepted);
        const __m64 high = _mm_cmpeq_pi16(load<__m64>(row + 2 * x + 8), accepted);
        store(dst + x, _mm_packs_pi16(low, high));
    }
    for (; x < width; ++x) dst[x] = load<int16_t>(row + 2 * x) == acceptedElement ? 255 : 0;
}

[[gnu::noinline]] void findEdges(const CannyImages& images, Thresholds thresholds)
{
    const MmxState state;
    BlockCanny<Words>(images, thresholds).run();
}

void cannyEdges(const CannyImages& images, float lowThresh, float highThresh)
{
    findEdges(images, {wrappedThreshold(lowThresh), wrappedThreshold(highThresh)});
}

}
}
