// Accumulation in vectors of four.
#include <emmintrin.h>

#include "arith/accumulate_sse.h"

namespace rux::w7 {
namespace {

inline EightFloats convertEight(const uint8_t* from)
{
    const __m128i zero = _mm_setzero_si128();
    const __m128i words = _mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(from)), zero);
    return {_mm_cvtepi32_ps(_mm_unpacklo_epi16(words, zero)), _mm_cvtepi32_ps(_mm_unpackhi_epi16(words, zero))};
}

template <typename Weight>
void accumulateRow(Weight weight, const uint8_t* src, uint8_t* srcDst, size_t elements)
{
    accumulateElements(weight, src, srcDst, elements);
}

}
}
